#pragma once

#include "support/Page.h"

class Account;
class DataUse;
class DayBars;
class QFileDialog;
class QPushButton;

/// The panel with what was transferred by day: one month of the tariff at a time, buttons for the months before and after
/// it, and the export of all days.
class DaysPanel : public Surface
{
    Q_OBJECT

public:
    /// @param dataUse must outlive the panel
    explicit DaysPanel(const DataUse& dataUse);

    /// Shows the days of the account in use as they are now. There must be such an account.
    void refresh();

private:
    QWidget* makeMonthLine();
    QPushButton* makeStep(const QString& sign, const char* name, int months);
    void step(int months);
    void showMonth(const Account& account);
    void askForFile();
    void writeTable(const QString& path, const QByteArray& table);

    const DataUse& m_dataUse;
    int m_monthsBack = 0;
    QPushButton* m_earlier;
    QPushButton* m_later;
    QLabel* m_month;
    DayBars* m_bars;
    QPushButton* m_export;
    QLabel* m_exported;
    QFileDialog* m_files = nullptr;
};
