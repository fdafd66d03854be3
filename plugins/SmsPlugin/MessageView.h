#pragma once

#include "Message.h"

#include <QWidget>

class ElidedLabel;
class QLabel;
class QTextBrowser;

/// Sender, time and text of a message. Links in the text can be clicked.
class MessageView : public QWidget
{
    Q_OBJECT

public:
    explicit MessageView(QWidget* parent = nullptr);

    /// Shows a message. If its text is shown already, the scroll position is kept.
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
