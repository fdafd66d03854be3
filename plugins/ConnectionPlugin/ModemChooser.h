#pragma once

#include "support/Modems.h"

#include <QToolButton>

/// Shows which of several modems is in use; its menu lets the user choose another one. Hidden with fewer than two.
class ModemChooser : public QToolButton
{
    Q_OBJECT

public:
    explicit ModemChooser(QWidget* parent = nullptr);

    void showModems(const Modems& modems, const Modem& inUse);

Q_SIGNALS:
    void chosen(const Modem& modem);

private:
    void fillMenu();

    Modems m_modems;
    Modem m_inUse;
};
