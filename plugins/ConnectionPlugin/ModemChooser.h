#pragma once

#include "support/Modems.h"

#include <QWidget>

class QComboBox;
class QLabel;

/// Shows which of several modems is in use, and lets the user choose another one. Hidden with fewer than two.
class ModemChooser : public QWidget
{
    Q_OBJECT

public:
    explicit ModemChooser(QWidget* parent = nullptr);

    void showModems(const Modems& modems, const Modem& inUse);

Q_SIGNALS:
    void chosen(const Modem& modem);

private:
    Modems m_modems;
    QComboBox* m_list;
};
