#include "MessagesPage.h"

#include "Change/Change.h"
#include "MessageDelegate.h"
#include "MessageText.h"
#include "common/CommonUtils.h"
#include "support/ElidedLabel.h"
#include "support/Text.h"

#include <QDateTime>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QSignalBlocker>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace {

constexpr int NarrowPage = 520; ///< below this width the message is under the list
constexpr int KeyRole = MessageDelegate::TextRole + 1;

QString shownTime(const Message& message, QLocale::FormatType dateFormat)
{
    const QDateTime time = QDateTime::fromString(message.time, Qt::ISODate);
    const QLocale locale(Change::GetLangName());
    return time.isValid() ? locale.toString(time.date(), dateFormat) + QLatin1Char(' ') +
                                locale.toString(time.time(), QLocale::ShortFormat)
                          : QString();
}

QListWidget* makeList()
{
    auto* list = new QListWidget;
    list->setItemDelegate(new MessageDelegate(list));
    list->setFrameShape(QFrame::NoFrame);
    list->setMouseTracking(true);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setMinimumSize(200, 120);
    keepTranslated(list, [list] { list->setAccessibleName(text("IDS_SMS_TITLE")); });
    return list;
}

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

QListWidgetItem* makeItem(const Message& message)
{
    auto* item = new QListWidgetItem;
    item->setData(MessageDelegate::SenderRole, message.sender);
    item->setData(MessageDelegate::TimeRole, shownTime(message, QLocale::ShortFormat));
    item->setData(MessageDelegate::TextRole, message.text);
    item->setData(KeyRole, message.key);
    item->setData(Qt::AccessibleTextRole, QVariant(message.sender + QLatin1Char('\n') + message.text));
    return item;
}

} // namespace

MessagesPage::MessagesPage(QWidget* parent)
    : Page("IDS_SMS_TITLE", "IDS_SMS_LEAD", Look::Sign::Message, parent)
    , m_reader(new MessageReader(this))
    , m_note(Look::quietLabel(QString(), true))
    , m_panel(makePane())
{
    content()->addWidget(m_note);
    content()->addWidget(m_panel, 1);
    content()->addStretch();
    connect(m_reader, &QThread::finished, this, &MessagesPage::takeMessages);
    connect(m_list, &QListWidget::currentRowChanged, this, &MessagesPage::showChosen);
    keepTranslated(this, [this] { showMessages(); });
    readMessages();
}

void MessagesPage::devicesChanged()
{
    // There are also events for detections that have found nothing new.
    if (!(attachedModems() == m_modems))
        readMessages();
}

QWidget* MessagesPage::makePane()
{
    m_list = makeList();
    m_sender = new ElidedLabel;
    Look::setFont(m_sender, 1.0, QFont::DemiBold);
    m_time = Look::quietLabel(QString());
    m_text = makeText();
    auto* message = new QVBoxLayout;
    message->setContentsMargins(Look::Gap, Look::Gap, Look::Gap, Look::Gap);
    message->addWidget(m_sender);
    message->addWidget(m_time);
    message->addWidget(m_text, 1);
    auto* panel = new Surface;
    m_columns = new QHBoxLayout(panel);
    m_columns->setContentsMargins(Look::Gap, Look::Gap, Look::Gap, Look::Gap);
    m_columns->addWidget(m_list, 2);
    m_columns->addLayout(message, 3);
    return panel;
}

void MessagesPage::readMessages()
{
    m_modems = attachedModems();
    m_isOutdated = m_reader->isRunning();
    if (!m_isOutdated)
        m_reader->begin();
    showState();
}

void MessagesPage::takeMessages()
{
    if (m_reader->isRunning())
        return; // it has been started again and will emit finished() again
    m_messages = m_reader->messages();
    showMessages();
    if (m_isOutdated)
        readMessages();
}

void MessagesPage::showMessages()
{
    const QListWidgetItem* const before = m_list->currentItem();
    const QString key = before ? before->data(KeyRole).toString() : QString();
    const QSignalBlocker blocker(m_list);
    m_list->clear();
    int row = 0;
    for (const Message& message : qAsConst(m_messages)) {
        m_list->addItem(makeItem(message));
        if (message.key == key)
            row = m_list->count() - 1;
    }
    m_list->setCurrentRow(row);
    showChosen();
    showState();
}

void MessagesPage::showChosen()
{
    const Message message = m_messages.value(m_list->currentRow());
    m_sender->setFullText(message.sender);
    m_time->setText(shownTime(message, QLocale::LongFormat));
    const QString rich = richMessage(message.text);
    if (m_text->property("message") == rich)
        return; // the user may be reading it
    m_text->setHtml(rich);
    m_text->setProperty("message", rich);
}

void MessagesPage::showState()
{
    m_panel->setVisible(!m_messages.isEmpty());
    m_note->setVisible(m_messages.isEmpty());
    m_note->setText(text(m_reader->isRunning() ? "IDS_SMS_READING" : "IDS_SMS_NONE"));
}

void MessagesPage::resizeEvent(QResizeEvent* event)
{
    m_columns->setDirection(width() < NarrowPage ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    Page::resizeEvent(event);
}
