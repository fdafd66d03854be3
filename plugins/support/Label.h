#pragma once

#include <QLabel>

/// A label for plain text that is aligned with the window: to the right in a window that is laid out from
/// right to left, even if the text itself is Latin, as names and numbers are.
class Label : public QLabel
{
    Q_OBJECT

public:
    explicit Label(QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void align();
};
