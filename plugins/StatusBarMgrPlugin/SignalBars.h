#pragma once

#include <QWidget>

/// The strength of a signal as four bars. GUI thread only.
class SignalBars : public QWidget
{
    Q_OBJECT

public:
    explicit SignalBars(QWidget* parent = nullptr);

    /// @param percent 0 to 100; 0 leaves all bars dim
    void setStrength(int percent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_lit = 0;
};
