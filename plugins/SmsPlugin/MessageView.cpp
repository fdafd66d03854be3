#include "MessageView.h"

#include "MessageBrowser.h"
#include "MessageText.h"
#include "Shown.h"
#include "support/ElidedLabel.h"
#include "support/Look.h"
#include "support/Text.h"

#include <QEvent>
#include <QLabel>
#include <QTextBrowser>
#include <QTextDocument>
#include <QVBoxLayout>

MessageView::MessageView(QWidget* parent)
    : QWidget(parent)
    , m_sender(new ElidedLabel)
    , m_time(Look::quietLabel(QString()))
    , m_text(new QTextBrowser)
{
    prepareBrowser(m_text);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    m_text->document()->setDocumentMargin(Look::Gap); // to the frame that shows the focus
    Look::setFont(m_sender, Look::NormalText, QFont::DemiBold);
    auto* head = new QVBoxLayout;
    head->setContentsMargins(Look::Gap, Look::Gap, Look::Gap, 0);
    head->addWidget(m_sender);
    head->addWidget(m_time);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Look::Gap, Look::Gap, Look::Gap, Look::Gap);
    layout->addLayout(head);
    layout->addWidget(m_text, 1);
}

void MessageView::showText()
{
    colorLinks(m_text);
    m_text->setHtml(m_shown);
}

void MessageView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        showText();
    QWidget::changeEvent(event);
}

void MessageView::setMessage(const Message& message)
{
    m_sender->setFullText(shownAddress(message.address));
    m_time->setText(shownFate(message));
    const QString rich = richMessage(message.text);
    if (m_shown == rich)
        return;
    m_shown = rich;
    showText();
}
