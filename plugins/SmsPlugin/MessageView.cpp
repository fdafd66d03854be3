#include "MessageView.h"

#include "Change/Change.h"
#include "MessageText.h"
#include "common/CommonUtils.h"
#include "support/ElidedLabel.h"
#include "support/Look.h"
#include "support/Text.h"

#include <QDateTime>
#include <QEvent>
#include <QLabel>
#include <QTextBrowser>
#include <QTextDocument>
#include <QUrl>
#include <QVBoxLayout>

namespace {

QTextBrowser* makeText()
{
    auto* browser = new QTextBrowser;
    browser->setOpenLinks(false);
    browser->setFrameShape(QFrame::NoFrame);
    browser->document()->setDocumentMargin(0);
    keepTranslated(browser, [browser] { browser->setAccessibleName(text("IDS_SMS_MESSAGE")); });
    QObject::connect(browser, &QTextBrowser::anchorClicked, browser, [](const QUrl& target) {
        CommonUtils::OpenUrl(urlToOpen(target.toString(QUrl::FullyEncoded)));
    });
    return browser;
}

} // namespace

QString shownTime(const Message& message, QLocale::FormatType dateFormat)
{
    const QDateTime time = QDateTime::fromString(message.time, Qt::ISODate);
    const QLocale locale(Change::GetLangName());
    return time.isValid() ? locale.toString(time.date(), dateFormat) + QLatin1Char(' ') +
                                locale.toString(time.time(), QLocale::ShortFormat)
                          : QString();
}

MessageView::MessageView(QWidget* parent)
    : QWidget(parent)
    , m_sender(new ElidedLabel)
    , m_time(Look::quietLabel(QString()))
    , m_text(makeText())
{
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    Look::setFont(m_sender, 1.0, QFont::DemiBold);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Look::Gap, Look::Gap, Look::Gap, Look::Gap);
    layout->addWidget(m_sender);
    layout->addWidget(m_time);
    layout->addWidget(m_text, 1);
}

/// Rich text takes the colour of links from the desktop, which does not suit every skin.
void MessageView::showText()
{
    const QColor link = Look::toneColor(Look::Tone::Info, m_text->palette());
    m_text->document()->setDefaultStyleSheet(QStringLiteral("a { color: %1 }").arg(link.name()));
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
    m_sender->setFullText(message.sender);
    m_time->setText(shownTime(message, QLocale::LongFormat));
    const QString rich = richMessage(message.text);
    if (m_shown == rich)
        return;
    m_shown = rich;
    showText();
}
