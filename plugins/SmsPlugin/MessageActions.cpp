// What the commands of the page do.
#include "ComposeWindow.h"
#include "ConversationList.h"
#include "MessageToolBar.h"
#include "MessageWindow.h"
#include "MessagesPage.h"
#include "ThreadView.h"
#include "common/CommonUtils.h"
#include "support/Dialog.h"
#include "support/ResultWords.h"
#include "support/Text.h"
#include "support/XmlMenu.h"

#include <qrvl.h>

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QMenu>
#include <QTextCursor>

namespace {

bool hasSearchSeparator()
{
    return CommonUtils::GetSettings(QStringLiteral("messages"), QStringLiteral("searchseparator")) !=
           QLatin1String("false");
}

/// The modem that holds a message, as far as the message says.
Modem modemOf(const Message& message)
{
    Modem modem;
    modem.id = message.modem;
    modem.imsi = message.imsi;
    return modem;
}

/// Deletes the windows of a class, because their code is about to be unloaded.
template <typename Window>
void deleteWindows(const QWidget& parent)
{
    qDeleteAll(parent.findChildren<Window*>(QString(), Qt::FindDirectChildrenOnly));
}

} // namespace

MessagesPage::~MessagesPage()
{
    m_list->selectionModel()->disconnect(this); // its model goes before it
    delete m_question;
    if (!m_windowParent)
        return;
    deleteWindows<ComposeWindow>(*m_windowParent);
    deleteWindows<MessageWindow>(*m_windowParent);
}

const Message* MessagesPage::currentMessage() const
{
    const auto& messages = m_feed.model()->messages();
    const auto found = messages.constFind(m_thread->current());
    return found == messages.constEnd() ? nullptr : &*found;
}

CommandContext MessagesPage::context() const
{
    const Message* const current = currentMessage();
    const int row = m_list->currentIndex().row();
    const QString shown = row < 0 ? QString() : m_filter.conversation(row).address;
    return {current, current ? current->address : shown, m_feed.model()->unread() > 0 && !m_feed.isReading()};
}

void MessagesPage::run(Command command)
{
    const Message* const current = currentMessage();
    if (!isPossible(command, context()))
        return;
    Message message = current ? *current : Message(); // a command may change the model
    message.address = context().address;
    m_failure.clear();
    switch (command) {
    case Command::Open:
        openWindow(message);
        break;
    case Command::Write:
        write(QString(), Modem());
        break;
    case Command::Reply:
        write(message.address, modemOf(message));
        break;
    case Command::Call:
        call(message, UI_CALL_VOICE);
        break;
    case Command::VideoCall:
        call(message, UI_CALL_VIDEO);
        break;
    case Command::Delete:
        remove(message);
        break;
    case Command::Search:
        m_toolBar->openSearch();
        break;
    case Command::Copy:
        copy(message);
        break;
    case Command::MarkAllRead:
        m_feed.markAllRead();
        break;
    }
    showState();
}

QWidget* MessagesPage::windowParent()
{
    if (!m_windowParent)
        m_windowParent = CommonUtils::GetMainWindow() ? CommonUtils::GetMainWindow() : window();
    return m_windowParent;
}

void MessagesPage::openWindow(const Message& message)
{
    MessageWindow::open(message, windowParent());
}

void MessagesPage::write(const QString& recipient, const Modem& sender)
{
    ComposeWindow::open(recipient, sender, &m_drafts, m_events, windowParent());
}

void MessagesPage::call(const Message& message, _UI_EN_CALL_TYPE type)
{
    if (!CommonUtils::MakeCall(message.address, type))
        m_failure = text("IDS_SMS_NO_CALL");
}

/// Copies the whole message, unless the user has selected a part of the conversation and is still there.
void MessagesPage::copy(const Message& message)
{
    if (m_thread->textCursor().hasSelection() && !m_list->hasFocus())
        m_thread->copy();
    else
        QGuiApplication::clipboard()->setText(message.text);
}

void MessagesPage::remove(const Message& message)
{
    constexpr int deleteIt = 0;
    const auto onAnswer = [this, message](int answer) {
        if (answer == deleteIt)
            requestDeletion(message);
    };
    m_questioned = message.key;
    m_question = ask({"IDS_SMS_DELETE_TITLE", "IDS_SMS_DELETE_TEXT", {"IDS_SMS_DELETE_YES", "IDS_SMS_STAY"}},
                     windowParent(), this, onAnswer);
}

void MessagesPage::requestDeletion(const Message& message)
{
    m_requests.start(
        [&](quint32* request) {
            return QRVL_DevSrv_DeleteMessage(message.modem, utf16(message.identifier), request);
        },
        this,
        [this](const RequestEnd& end) {
            if (end.result == QRVL_OK || end.result == QRVL_ERROR_NOT_FOUND)
                return; // an event reports that it has gone
            const ResultWords words = resultWords(end.result);
            m_failure = text("IDS_SMS_DELETE_FAILED").arg(words.title, words.hint);
            showState();
        });
}

void MessagesPage::showMenu(const QPoint& place)
{
    MenuCommands commands;
    for (const CommandInfo& info : CommandInfos) {
        const Command command = info.command;
        commands.insert(QString::fromLatin1(info.menuName), [this, command](QAction* action, const QString&) {
            action->setEnabled(isPossible(command, context()));
            connect(action, &QAction::triggered, this, [this, command] { run(command); });
        });
    }
    delete m_menu;
    CommonUtils::SetSMSSeperatorConfigValue(hasSearchSeparator());
    // Read each time, because the operator's changes come and go with the modem.
    m_menu = new XmlMenu(QStringLiteral("MessageMenu.xml"), QStringLiteral("MessageMenu"), commands, this);
    if (QMenu* const menu = m_menu->menu())
        menu->popup(place);
}
