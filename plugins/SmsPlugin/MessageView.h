#pragma once

#include "MessageReader.h"

#include <QLocale>
#include <QWidget>

class ElidedLabel;
class QLabel;
class QTextBrowser;

/// The time of a message in the current language; empty when it has none.
QString shownTime(const Message& message, QLocale::FormatType dateFormat);

/// Sender, time and text of a message. Links in the text can be clicked.
class MessageView : public QWidget
{
    Q_OBJECT

public:
    explicit MessageView(QWidget* parent = nullptr);

    /// Shows another message; the same one is left as the user has scrolled it.
    void setMessage(const Message& message);

protected:
    void changeEvent(QEvent* event) override;

private:
    void showText();

    ElidedLabel* m_sender;
    QLabel* m_time;
    QTextBrowser* m_text;
    QString m_shown;
};
