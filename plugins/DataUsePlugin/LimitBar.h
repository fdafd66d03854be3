#pragma once

#include "DataLimit.h"

#include <QWidget>

/// A bar that shows how much of the limit is used up, with a mark where the warning comes.
class LimitBar : public QWidget
{
    Q_OBJECT

public:
    LimitBar();

    /// @param share, warnAt in per cent; more than 100 fills the bar
    void showShare(int share, int warnAt, LimitState state);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_share = 0;
    int m_warnAt = 0;
    LimitState m_state = LimitState::Below;
};
