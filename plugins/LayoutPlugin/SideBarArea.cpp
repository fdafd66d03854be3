#include "SideBarArea.h"

#include "EntryDelegate.h"
#include "ExtendDialog/FaderWidget.h"
#include "support/Look.h"
#include "support/Text.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QResizeEvent>
#include <QScrollBar>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int SmallestSideBar = 196;
constexpr int LargestSideBar = 300;    ///< longer titles are cut off
constexpr int NarrowArea = 640;        ///< areas narrower than this have a narrow side bar
constexpr int KindRole = Qt::UserRole; ///< see kindOf()

/// What identifies a page when its plugin has been loaded again.
QString kindOf(const QWidget* page)
{
    return QString::fromLatin1(page->metaObject()->className());
}

QListWidget* makeSideBar()
{
    auto* sideBar = new QListWidget;
    sideBar->setItemDelegate(new EntryDelegate(sideBar));
    sideBar->setFixedWidth(SmallestSideBar);
    sideBar->setFrameShape(QFrame::NoFrame);
    sideBar->viewport()->setBackgroundRole(QPalette::Window);
    sideBar->setMouseTracking(true);
    sideBar->setUniformItemSizes(true);
    sideBar->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    keepTranslated(sideBar, [sideBar] { sideBar->setAccessibleName(text("IDS_LAYOUT_PAGES")); });
    return sideBar;
}

} // namespace

SideBarArea::SideBarArea(QWidget* parent)
    : QWidget(parent)
    , m_sideBar(makeSideBar())
    , m_pages(new QStackedWidget)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto* sideBarColumn = new QVBoxLayout;
    sideBarColumn->setContentsMargins(0, Look::Gap * 2, 0, 0);
    sideBarColumn->addWidget(m_sideBar);
    layout->addLayout(sideBarColumn);
    layout->addWidget(m_pages, 1);
    connect(m_sideBar, &QListWidget::currentRowChanged, m_pages, &QStackedWidget::setCurrentIndex);
    connect(m_pages, &QStackedWidget::currentChanged, this, &SideBarArea::fadeIn);
    // Also emitted when a page is deleted without having been removed.
    connect(m_pages, &QStackedWidget::widgetRemoved, this, &SideBarArea::removeEntry);
    setFocusProxy(m_sideBar);
    connect(m_sideBar, &QListWidget::currentRowChanged, this, &SideBarArea::forgetLost);
    connect(m_sideBar, &QListWidget::itemPressed, this, &SideBarArea::forgetLost);
    connect(m_sideBar, &QListWidget::itemClicked, this, &SideBarArea::enterPage);
    connect(m_sideBar, &QListWidget::itemActivated, this, &SideBarArea::enterPage);
    connect(m_sideBar->verticalScrollBar(), &QScrollBar::rangeChanged, this, &SideBarArea::fitSideBar);
    addShortcut(Qt::CTRL + Qt::Key_Tab, 1);
    addShortcut(Qt::CTRL + Qt::SHIFT + Qt::Key_Tab, -1);
}

void SideBarArea::addShortcut(const QKeySequence& keys, int step)
{
    connect(new QShortcut(keys, this), &QShortcut::activated, this, [this, step] { turnPage(step); });
}

void SideBarArea::turnPage(int step)
{
    const int count = m_sideBar->count();
    if (count == 0)
        return;
    m_sideBar->setCurrentRow((m_sideBar->currentRow() + step + count) % count);
    m_sideBar->setFocus();
    enterPage();
}

/// Moves the focus to the page's first field, if it has one.
void SideBarArea::enterPage()
{
    const QWidget* const page = m_pages->currentWidget();
    if (page && page->focusProxy())
        page->focusProxy()->setFocus();
}

/// A page that takes the place of another one appears gently, unless the style wants no animations.
void SideBarArea::fadeIn()
{
    const int duration = style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this);
    delete m_fader;
    if (!isVisible() || window()->isMinimized() || m_pages->count() < 2 || duration <= 0)
        return;
    m_fader = new FaderWidget(m_pages);
    m_fader->setAttribute(Qt::WA_DeleteOnClose);
    m_fader->setAttribute(Qt::WA_TransparentForMouseEvents); // the page can be used at once
    m_fader->start(palette().color(QPalette::Window), duration);
}

void SideBarArea::addPage(QWidget* page)
{
    m_pages->addWidget(page);
    auto* const added = new QListWidgetItem(page->windowIcon(), QString(), m_sideBar);
    added->setData(KindRole, kindOf(page));
    const auto setTitle = [this, page](const QString& title) {
        QListWidgetItem* entry = m_sideBar->item(m_pages->indexOf(page));
        entry->setText(title);
        entry->setToolTip(title);
        fitSideBar();
    };
    setTitle(page->windowTitle());
    connect(page, &QWidget::windowTitleChanged, this, setTitle);
    page->installEventFilter(this);
    showBadge(page);
    if (m_sideBar->count() == 1)
        selectRow(0);
    if (kindOf(page) == m_lost.kind) {
        selectRow(m_sideBar->count() - 1);
        returnFocus();
        m_lost = {};
    }
}

bool SideBarArea::eventFilter(QObject* page, QEvent* event)
{
    if (event->type() == QEvent::DynamicPropertyChange)
        showBadge(static_cast<QWidget*>(page));
    return false;
}

void SideBarArea::showBadge(QWidget* page)
{
    m_sideBar->item(m_pages->indexOf(page))->setData(EntryDelegate::BadgeRole, page->property("badge"));
}

/// Shows a page that the user has not chosen.
void SideBarArea::selectRow(int row)
{
    const Lost lost = m_lost;
    m_sideBar->setCurrentRow(row);
    m_lost = lost;
}

void SideBarArea::forgetLost()
{
    m_lost = {};
}

void SideBarArea::removePage(QWidget* page)
{
    if (m_pages->indexOf(page) < 0)
        return;
    page->disconnect(this);
    page->removeEventFilter(this);
    noteFocus(page);
    if (m_pages->currentWidget() == page)
        leavePage();
    m_pages->removeWidget(page);
    page->hide();
    page->setParent(nullptr);
}

/// The focus waits in the side bar for the page to come back. Otherwise it would go to any button of the window.
void SideBarArea::noteFocus(const QWidget* page)
{
    QWidget* const focus = window()->focusWidget();
    if (!focus || (focus != page && !page->isAncestorOf(focus)))
        return;
    m_lost.hadFocus = true;
    m_lost.focus = focus;
    m_sideBar->setFocus();
}

void SideBarArea::returnFocus()
{
    if (!m_lost.hadFocus || window()->focusWidget() != m_sideBar)
        return;
    if (m_lost.focus)
        m_lost.focus->setFocus();
    else
        enterPage();
}

void SideBarArea::showPage(QWidget* page)
{
    const int row = m_pages->indexOf(page);
    if (row < 0)
        return;
    m_sideBar->setCurrentRow(row);
    forgetLost();
}

/// In a hidden window, fading would never finish.
void SideBarArea::hideEvent(QHideEvent* event)
{
    delete m_fader;
    QWidget::hideEvent(event);
}

void SideBarArea::resizeEvent(QResizeEvent* event)
{
    fitSideBar();
    QWidget::resizeEvent(event);
}

/// Makes the side bar wide enough for its titles, or for the icons only, and for its scroll bar if there is one.
void SideBarArea::fitSideBar()
{
    int widest = SmallestSideBar;
    for (int row = 0; row < m_sideBar->count(); ++row)
        widest = std::max(widest, EntryDelegate::widthOf(m_sideBar->item(row)->text(), m_sideBar->font()));
    const int entries = width() < NarrowArea ? EntryDelegate::NarrowWidth : std::min(widest, LargestSideBar);
    const QScrollBar* const scrollBar = m_sideBar->verticalScrollBar();
    m_sideBar->setFixedWidth(entries + (scrollBar->maximum() > 0 ? scrollBar->sizeHint().width() : 0));
}

/// Shows the first page instead of the current one, which is removed. The list would first show a neighbour for a moment,
/// and whatever a page shows is taken to have been seen.
void SideBarArea::leavePage()
{
    const int row = m_sideBar->currentRow();
    // When several pages are removed in turn, the first current one is the page the user was looking at.
    if (m_lost.kind.isEmpty())
        m_lost.kind = m_sideBar->item(row)->data(KindRole).toString();
    if (m_sideBar->count() > 1)
        selectRow(row == 0 ? 1 : 0);
}

void SideBarArea::removeEntry(int index)
{
    if (m_sideBar->currentRow() == index)
        leavePage();
    const Lost lost = m_lost;
    delete m_sideBar->takeItem(index);
    m_lost = lost;
    m_pages->setCurrentIndex(m_sideBar->currentRow());
}
