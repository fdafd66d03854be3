#pragma once

#include "support/Modems.h"

#include <QWidget>

class QComboBox;
class QLabel;

/// The modem that sends a message, as a list of the attached ones; hidden while there is nothing to choose. The modem never
/// changes without the user: when its SIM is gone, another has to be chosen. GUI thread only.
class SenderChooser : public QWidget
{
    Q_OBJECT

public:
    /// @param wanted chosen at first, if it is attached; without an id, the modem in use is
    explicit SenderChooser(const Modem& wanted, QWidget* parent = nullptr);

    /// The id of the chosen modem; 0 if it is not attached.
    quint32 modem() const;

    /// Why no modem is chosen, in the current language; empty if one is.
    QString problem() const;

    /// Looks for modems that were attached or removed.
    void follow();

Q_SIGNALS:
    /// The user has chosen a modem.
    void chosen();

private:
    void choose(int index);

    Modem m_wanted; ///< without an id until a modem is attached
    Modems m_modems;
    QLabel* m_caption;
    QComboBox* m_list;
};
