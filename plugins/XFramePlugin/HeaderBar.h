#pragma once

#include "Situation.h"

#include <QWidget>

class ElidedLabel;
class ModemChooser;
class QLabel;
class QToolButton;

/// The top of the main window: the modem in use, and the button of the main menu.
class HeaderBar : public QWidget
{
    Q_OBJECT

public:
    /// Call setCompact() before it is shown.
    explicit HeaderBar(QWidget* parent = nullptr);

    /// Leaves picture and background to the title bar that the header has been put into.
    void becomeTitle();

    void showSituation(const Situation& situation);
    void setCompact(bool isCompact);

    /// The size of the picture of the current form, in pixels.
    static int pictureSize(bool isCompact);

    /// The button for the main menu, at the end of the header.
    QToolButton* menuButton() const { return m_menuButton; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLayout* makeModemColumn();
    void refresh();

    Situation m_situation;
    bool m_isTitle = false;
    QLabel* m_picture;
    ElidedLabel* m_modem; ///< replaced by the next one if there are several
    ModemChooser* m_chooser;
    ElidedLabel* m_modemState;
    QToolButton* m_menuButton;
};
