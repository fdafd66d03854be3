#pragma once

#include "support/Modems.h"

#include <QWidget>

class QLabel;

/// The top of the main window: the attached modem, the operator customisation and the customisation key in
/// force.
class HeaderBar : public QWidget
{
    Q_OBJECT

public:
    explicit HeaderBar(QWidget* parent = nullptr);

    void showSituation(const Modems& modems, const QString& key);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLayout* makeModemColumn();

    QLabel* m_modem;
    QLabel* m_modemState;
    QLabel* m_operator;
    QLabel* m_key;
};
