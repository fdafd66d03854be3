#include "MessagesPage.h"

#include "MessageDelegate.h"
#include "MessageView.h"
#include "MessageWindow.h"
#include "common/CommonUtils.h"
#include "support/Text.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

constexpr int NarrowPage = 520; ///< below this width the message is under the list
constexpr int KeyRole = MessageDelegate::TextRole + 1;

QListWidget* makeList()
{
    auto* list = new QListWidget;
    list->setObjectName(QLatin1String("messageList"));
    list->setItemDelegate(new MessageDelegate(list));
    list->setFrameShape(QFrame::NoFrame);
    list->setMouseTracking(true);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setMinimumSize(200, 120);
    keepTranslated(list, [list] { list->setAccessibleName(text("IDS_SMS_TITLE")); });
    return list;
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
    connect(m_list, &QListWidget::itemActivated, this, &MessagesPage::openChosen);
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
    m_view = new MessageView;
    auto* message = new QVBoxLayout;
    message->addWidget(m_view, 1);
    message->addWidget(makeOpenButton(), 0, Qt::AlignTrailing);
    auto* panel = new Surface;
    m_columns = new QHBoxLayout(panel);
    m_columns->setContentsMargins(Look::Gap, Look::Gap, Look::Gap, Look::Gap);
    m_columns->addWidget(m_list, 2);
    m_columns->addLayout(message, 3);
    return panel;
}

QWidget* MessagesPage::makeOpenButton()
{
    auto* button = new QPushButton;
    button->setAutoDefault(true); // the Return key presses it while it has the focus
    connect(button, &QPushButton::clicked, this, &MessagesPage::openChosen);
    keepTranslated(button, [button] { setCaption(button, "IDS_SMS_OPEN"); });
    return button;
}

void MessagesPage::openChosen()
{
    if (m_messages.isEmpty())
        return;
    QWidget* const mainWindow = CommonUtils::GetMainWindow();
    MessageWindow::open(m_messages.value(m_list->currentRow()), mainWindow ? mainWindow : window(), this);
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
    m_view->setMessage(m_messages.value(m_list->currentRow()));
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
