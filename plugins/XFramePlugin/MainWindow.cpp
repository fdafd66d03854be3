#include "MainWindow.h"

#include "HeaderBar.h"
#include "PluginsPage.h"
#include "common/CommonUtils.h"
#include "support/Look.h"

#include <QAction>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

namespace {

constexpr QLatin1String SettingsSection("mainwindow");
constexpr QLatin1String GeometryKey("geometry");
constexpr QSize SmallestSize(760, 520);
constexpr QSize FirstSize(960, 640);

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_header(new HeaderBar)
    , m_pluginsPage(new PluginsPage(nullptr))
{
    setWindowTitle(QGuiApplication::applicationDisplayName());
    setWindowIcon(Look::tileIcon(Look::Sign::Signal));
    setMinimumSize(SmallestSize);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_header);

    auto* quit = new QAction(this);
    quit->setShortcut(QKeySequence::Quit);
    connect(quit, &QAction::triggered, this, &QWidget::close);
    addAction(quit);
    restorePlace();
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
    static_cast<QVBoxLayout*>(layout())->addWidget(area, 1);
}

void MainWindow::showSituation(const Modems& modems, const QString& key)
{
    m_header->showSituation(modems, key);
    if (m_pluginsPage)
        m_pluginsPage->refresh();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    rememberPlace();
    QWidget::closeEvent(event);
}

void MainWindow::restorePlace()
{
    const QString geometry = CommonUtils::GetSettings(SettingsSection, GeometryKey);
    if (restoreGeometry(QByteArray::fromBase64(geometry.toLatin1())))
        return;
    const QRect available = screen()->availableGeometry();
    const QSize size = FirstSize.boundedTo(available.size());
    setGeometry(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, available));
}

void MainWindow::rememberPlace() const
{
    const QString geometry = QString::fromLatin1(saveGeometry().toBase64());
    CommonUtils::SetSettings(SettingsSection, GeometryKey, geometry);
}
