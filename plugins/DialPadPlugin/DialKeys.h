#pragma once

#include <QWidget>

/// The twelve keys of a telephone, with the letters below the digits. Holding the 0 enters a plus sign.
class DialKeys : public QWidget
{
    Q_OBJECT

public:
    explicit DialKeys(QWidget* parent = nullptr);

Q_SIGNALS:
    void entered(const QString& character);

private:
    QWidget* makeKey(const QString& character, const QString& letters);
};
