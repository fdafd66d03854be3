#pragma once

#include <QLabel>

/// A label that begins where the window's lines begin, whatever script its own text is in: names and numbers
/// stay Latin in a window that is laid out from right to left. The text is plain.
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
