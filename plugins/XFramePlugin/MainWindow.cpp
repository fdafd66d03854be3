#include "MainWindow.h"

#include "Change/Change.h"
#include "FrameStyle.h"
#include "HeaderBar.h"
#include "LanguageSwitch.h"
#include "Menus.h"
#include "PluginsPage.h"
#include "ProblemLine.h"
#include "Skin.h"
#include "WindowFrame.h"
#include "WindowPlace.h"
#include "common/CommonUtils.h"
#include "common/ShowInFront.h"
#include "support/AccessibleRole.h"
#include "support/BoolSetting.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

namespace {

constexpr QLatin1String SettingsSection("mainwindow");
constexpr BoolSetting Compact{SettingsSection, QLatin1String("compact")};
constexpr BoolSetting Maximized{SettingsSection, QLatin1String("maximized")};

/// The differences between the normal and the compact window.
struct Form
{
    QLatin1String geometryKey;
    QSize smallest;
    QSize first;
};

constexpr Form UsualForm{QLatin1String("geometry"), {560, 360}, {960, 700}};
constexpr Form CompactForm{QLatin1String("compactgeometry"), {400, 420}, {460, 620}};

constexpr int LowWindow = 440; ///< lower ones have the small header

Qt::WindowFlags windowFlags(bool hasOwnFrame)
{
    if (!hasOwnFrame)
        return Qt::Window;
    return Qt::Window | Qt::FramelessWindowHint | Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint |
           Qt::WindowCloseButtonHint;
}

const Form& currentForm()
{
    return CommonUtils::IsMiniMode() ? CompactForm : UsualForm;
}

void readCompactSetting()
{
    if (Compact.isSet())
        CommonUtils::SetMiniModeFlag();
    else
        CommonUtils::ResetMiniModeFlag();
}

} // namespace

MainWindow::MainWindow(LanguageSwitch& language, QWidget* parent)
    : QWidget(parent, ::windowFlags(FrameStyle::isOwn()))
    , m_language(language)
    , m_header(new HeaderBar)
    , m_problems(new ProblemLine(this))
    , m_pluginsPage(new PluginsPage(nullptr))
{
    setAccessibleRole(this, QAccessible::Window);
    readCompactSetting();
    applySkin();
    setWindowTitle(QGuiApplication::applicationDisplayName());
    setWindowIcon(FrameStyle::picture());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    if (FrameStyle::isOwn())
        m_frame = new WindowFrame(this, layout, m_header);
    else
        layout->addWidget(m_header);
    layout->addWidget(m_problems);
    m_menus = new Menus(commands(), m_header->menuButton(), this);
    connect(m_menus, &Menus::trayClicked, this, &MainWindow::bringToFront);
    followBackground();
    adaptToForm();
}

MainWindow::~MainWindow()
{
    delete m_pluginsPage;
}

QWidget* MainWindow::pluginsPage() const
{
    return m_pluginsPage;
}

void MainWindow::setArea(QWidget* area)
{
    static_cast<QVBoxLayout*>(layout())->insertWidget(1, area, 1);
    area->setFocus(); // instead of the first button of the header
}

void MainWindow::setStatusBar(QWidget* statusBar)
{
    layout()->addWidget(statusBar);
}

void MainWindow::showSituation(const Situation& situation)
{
    m_situation = situation;
    m_header->showSituation(situation);
    m_menus->follow();
    showStatus();
    Q_EMIT situationChanged();
}

bool MainWindow::nativeEvent(const QByteArray& type, void* message, long* result)
{
    return (m_frame && m_frame->nativeEvent(message, result)) || QWidget::nativeEvent(type, message, result);
}

void MainWindow::showStatus()
{
    m_menus->showStatus();
    m_problems->refresh();
}

void MainWindow::bringToFront()
{
    showInFront(this);
}

void MainWindow::useLanguage(const QString& code)
{
    const Qt::LayoutDirection before = QGuiApplication::layoutDirection();
    m_language.use(code);
    if (QGuiApplication::layoutDirection() != before)
        applySkin();
}

void MainWindow::setCompact(bool isCompact)
{
    rememberPlace();
    Compact.set(isCompact);
    readCompactSetting();
    applySkin();
    adaptToForm();
    Q_EMIT compactChanged(isCompact);
}

void MainWindow::adaptToForm()
{
    adaptHeader();
    setMinimumSize(currentForm().smallest);
    restorePlace();
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    adaptHeader();
    QWidget::resizeEvent(event);
}

/// In a low window as in the compact one.
void MainWindow::adaptHeader()
{
    const bool isSmall = CommonUtils::IsMiniMode() || height() < LowWindow;
    if (m_hasSmallHeader == isSmall)
        return;
    m_hasSmallHeader = isSmall;
    m_header->setCompact(isSmall);
    if (m_frame)
        m_frame->setPictureSize(HeaderBar::pictureSize(isSmall));
}

void MainWindow::restorePlace()
{
    if (!WindowPlace::restore(*this, CommonUtils::GetSettings(SettingsSection, currentForm().geometryKey))) {
        const QRect available = screen()->availableGeometry();
        const QSize size = currentForm().first.boundedTo(available.size());
        setGeometry(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, available));
    }
    if (m_frame && !CommonUtils::IsMiniMode())
        m_frame->setMaximized(Maximized.isSet());
}

void MainWindow::rememberPlace()
{
    if (m_frame && !CommonUtils::IsMiniMode())
        Maximized.set(m_frame->isMaximized());
    if (m_frame)
        m_frame->setMaximized(false); // the place to remember is the one that the window returns to
    CommonUtils::SetSettings(SettingsSection, currentForm().geometryKey,
                             WindowPlace::describe(*this, m_frame != nullptr));
}
