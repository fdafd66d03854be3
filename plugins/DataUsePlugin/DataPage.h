#pragma once

#include "DataLimit.h"
#include "support/Page.h"

class Account;
class DataUse;
class DaysPanel;
class ElidedLabel;
class LimitBar;
class QBoxLayout;
class QPushButton;
class SpeedGraph;
class Swatch;

/// What the SIM card in use transfers: in the last minutes, since connecting, this month and by day.
class DataPage : public Page
{
    Q_OBJECT

public:
    /// @param dataUse must outlive the page
    DataPage(DataUse& dataUse, QWidget* parent);
    ~DataPage() override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Cell
    {
        QWidget* widget;
        ElidedLabel* value;
    };

    static Cell makeCell(const char* caption);
    QWidget* makeSpeeds();
    QWidget* makeConnection();
    QWidget* makePeriod();

    void refresh();
    void showSpeeds(const Account& account);
    void showConnection(const Account& account);
    void showPeriod(const Account& account);
    void showTitle(LimitState state, int share);

    DataUse& m_dataUse;
    QWidget* m_panels; ///< hidden while there is nothing to show
    QLabel* m_nothing; ///< shown then
    DaysPanel* m_days;
    SpeedGraph* m_graph;
    ElidedLabel* m_receiving;
    ElidedLabel* m_sending;
    Cell m_received;
    Cell m_sent;
    Cell m_duration;
    QLabel* m_periodDays;
    QLabel* m_usage;
    LimitBar* m_bar;
    Swatch* m_warning; ///< beside the advice
    QLabel* m_advice;
    QBoxLayout* m_hint;      ///< the advice and its button
    QPushButton* m_setLimit; ///< shown while there is no limit
};
