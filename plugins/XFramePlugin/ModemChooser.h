#pragma once

#include "support/Modems.h"

#include <QToolButton>

/// The name of the modem in use, as a menu of all attached modems: choosing one has the application use it, see
/// support/ModemInUse.h. If there is too little room, the end of the name is left out. As high
/// as a label with a margin of FrameWidth. GUI thread only.
class ModemChooser : public QToolButton
{
    Q_OBJECT

public:
    static constexpr int FrameWidth = 1; ///< in pixels

    explicit ModemChooser(QWidget* parent = nullptr);

    /// @param modems at least one
    void showModems(const Modems& modems);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void fillMenu();
    void use(const Modem& modem);

    Modems m_modems;
    Modem m_inUse;
};
