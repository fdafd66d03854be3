#include "ConversationPanes.h"

#include "IconButton.h"
#include "ToolBar/ToolBarLogic.h"
#include "support/ElidedLabel.h"
#include "support/Text.h"

#include <QApplication>
#include <QEvent>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr QSize BackSize{30, 30};
constexpr int LeastHeight = 60; ///< of the list and of a conversation

QToolButton* makeBackButton()
{
    auto* back = new QToolButton;
    back->setObjectName(QStringLiteral("ToolBar")); // for style sheets
    back->setAutoRaise(true);
    back->setFixedSize(BackSize);
    return back;
}

} // namespace

ConversationPanes::ConversationPanes(QWidget* list, QWidget* thread, QWidget* parent)
    : Surface(parent)
    , m_list(list)
    , m_thread(thread)
    , m_back(makeBackButton())
    , m_title(new ElidedLabel)
    , m_conversation(makeConversation())
{
    for (QWidget* view : {m_list, m_thread}) {
        view->setMinimumHeight(LeastHeight);
        // Else the page, some of whose texts are wrapped, would scroll where the views have less than they prefer.
        view->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    }
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(Look::Gap, Look::Gap, Look::Gap, Look::Gap);
    row->setSpacing(Look::Gap);
    row->addWidget(m_list, 2);
    row->addWidget(m_conversation, 3);
    connect(m_back, &QToolButton::clicked, this, &ConversationPanes::showList);
    m_back->installEventFilter(this);
    // Only here: elsewhere in the window Escape has other meanings.
    auto* escape = new QShortcut(Qt::Key_Escape, m_conversation);
    escape->setContext(Qt::WidgetWithChildrenShortcut);
    connect(escape, &QShortcut::activated, this, &ConversationPanes::showList);
    keepTranslated(this, [this] { translate(); });
    arrange();
}

QWidget* ConversationPanes::makeConversation()
{
    Look::setFont(m_title, Look::HeadingText, QFont::DemiBold);
    auto* conversation = new QWidget;
    auto* heading = new QHBoxLayout;
    heading->addWidget(m_back);
    heading->addWidget(m_title);
    heading->addStretch();
    auto* column = new QVBoxLayout(conversation);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(heading);
    column->addWidget(m_thread, 1);
    return conversation;
}

void ConversationPanes::setTitle(const QString& title)
{
    m_title->setFullText(title);
}

void ConversationPanes::setNarrow(bool isNarrow)
{
    if (m_isNarrow == isNarrow)
        return;
    m_isNarrow = isNarrow;
    if (m_thread->hasFocus() || m_list->hasFocus())
        m_isOpen = m_thread->hasFocus();
    arrange();
}

void ConversationPanes::setOpen(bool isOpen)
{
    if (m_isOpen == isOpen)
        return;
    m_isOpen = isOpen;
    arrange();
}

/// What has the focus is hidden last: else the focus would go elsewhere first.
void ConversationPanes::arrange()
{
    QWidget* const view = showsList() ? m_list : m_thread;
    const QWidget* const focus = QApplication::focusWidget();
    const bool losesFocus = focus && isAncestorOf(focus) && (m_isNarrow || focus == m_back);
    setFocusProxy(view);
    for (QWidget* pane : {m_list, m_conversation}) {
        if (pane->isAncestorOf(view) || pane == view)
            pane->show();
    }
    if (losesFocus)
        view->setFocus();
    m_list->setVisible(showsList());
    m_conversation->setVisible(showsThread());
    m_back->setVisible(m_isNarrow);
    Q_EMIT switched();
}

/// Acts on the button's keys at once: Qt would show the button pressed first.
bool ConversationPanes::eventFilter(QObject*, QEvent* event)
{
    if (event->type() != QEvent::Shortcut)
        return false;
    showList();
    return true;
}

void ConversationPanes::translate()
{
    nameButton(m_back, {text("IDS_SMS_BACK"), QKeySequence(int(Qt::ALT) + Qt::Key_Left)});
    ToolBarLogic::setIcon(m_back, true,
                          pluginFile(QStringLiteral("icons/back.png"))); // mirrored if necessary
}
