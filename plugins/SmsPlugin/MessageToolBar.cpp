#include "MessageToolBar.h"

#include "IconButton.h"
#include "ToolBar/SearchLineEdit.h"
#include "ToolBar/ToolBarLogic.h"
#include "support/Text.h"

#include <QButtonGroup>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QShortcut>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr int NarrowestSearch = 120;

QList<ToolItem> readItems()
{
    QList<ToolItem> items;
    bool isGrouped = false;
    ToolBarLogic::GetXmlData(pluginFile(QStringLiteral("SmsToolBar.xml")), items, isGrouped, QString());
    return items;
}

} // namespace

MessageToolBar::MessageToolBar(QWidget* parent)
    : QWidget(parent)
    , m_items(readItems())
{
    setObjectName(ToolBarLogic::GetObjectName(thisPlugin()));
    ToolBarLogic::CreateToolBar(thisPlugin(), this, m_items, &m_group, &m_searchLayout, &m_searchEdit,
                                &m_searchIcon);
    layout()->setSizeConstraint(QLayout::SetDefaultConstraint); // so that it also fits into a narrow page
    m_searchEdit->setMinimumWidth(NarrowestSearch);
    connect(m_group, &QButtonGroup::idClicked, this, [this](int button) {
        if (Command(button) == Command::Search)
            openSearch();
        else
            Q_EMIT pressed(Command(button));
    });
    setUpSearch();
    keepTranslated(this, [this] { translate(); });
}

MessageToolBar::~MessageToolBar()
{
    delete m_searchEdit; // these have no parent if the box was never shown
    delete m_searchIcon;
    if (!m_searchLayout->parent())
        delete m_searchLayout;
}

void MessageToolBar::setUpSearch()
{
    connect(m_searchEdit, &QLineEdit::textChanged, this, &MessageToolBar::searchChanged);
    connect(m_searchEdit, &QLineEdit::returnPressed, this, &MessageToolBar::nextWanted);
    connect(m_searchEdit, &SearchLineEdit::controlN, this, &MessageToolBar::nextWanted);
    connect(m_searchEdit, &SearchLineEdit::controlF, this, &MessageToolBar::openSearch);
    auto* escape = new QShortcut(Qt::Key_Escape, m_searchEdit);
    escape->setContext(Qt::WidgetShortcut);
    connect(escape, &QShortcut::activated, this, &MessageToolBar::closeSearch);
}

bool MessageToolBar::isOutdated() const
{
    const QList<ToolItem> wanted = readItems();
    return !std::equal(m_items.begin(), m_items.end(), wanted.begin(), wanted.end(),
                       [](const ToolItem& left, const ToolItem& right) { return left.id == right.id; });
}

void MessageToolBar::enableFor(const CommandContext& context)
{
    for (const ToolItem& item : qAsConst(m_items)) {
        const bool isWanted = isPossible(Command(item.id), context);
        if (item.button->isEnabled() != isWanted)
            ToolBarLogic::EnableDisableItem(thisPlugin(), m_items, item.id, isWanted);
    }
}

void MessageToolBar::openSearch()
{
    if (m_searchLayout->parent()) { // showing it again would clear it
        m_searchEdit->setFocus();
        m_searchEdit->selectAll();
        return;
    }
    ToolBarLogic::ShowHideSearchBox(this, m_searchLayout, m_searchEdit, true);
}

void MessageToolBar::closeSearch()
{
    if (!m_searchLayout->parent())
        return;
    m_searchEdit->clear();
    ToolBarLogic::ShowHideSearchBox(this, m_searchLayout, m_searchEdit, false);
    Q_EMIT searchClosed();
}

void MessageToolBar::translate()
{
    for (const CommandInfo& info : CommandInfos) {
        if (auto* const button = qobject_cast<QToolButton*>(m_group->button(int(info.command))))
            nameButton(button, caption(info.id));
    }
    m_searchEdit->setPlaceholderText(text("IDS_SMS_SEARCH_HINT"));
    m_searchEdit->setAccessibleName(caption("IDS_MENU_SEARCH").text);
    m_searchEdit->setLayoutDirection(QGuiApplication::layoutDirection());
}

void MessageToolBar::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange && m_group)
        ToolBarLogic::ChangeToolBarIconDirection(thisPlugin(), m_items, isRightToLeft(), &m_searchIcon);
}
