// The parts of a title bar.
#include "TitleBar/TitleBar.h"

#include "Change/Change.h"
#include "TitleBar/SystemMenu_p.h"
#include "TitleBar/TitleButton_p.h"
#include "common/CommonUtils.h"
#include "common/Log.h"
#include "common/settings/Setting_p.h"
#include "platform/SystemMenu_p.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QTimer>
#include <QToolButton>

namespace {

constexpr int IconSize = 16;
constexpr int Spacing = 2;
constexpr QSize SmallestTitle{30, 15};

QLabel* makeLabel(QWidget* parent, const char* name, QSize smallest)
{
    auto* label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setFocusPolicy(Qt::NoFocus);
    label->setMinimumSize(smallest);
    label->setTextFormat(Qt::PlainText);
    return label;
}

void setShown(QWidget* part, bool isVisible)
{
    if (part)
        part->setVisible(isVisible);
}

} // namespace

TitleBar::TitleBar(QWidget* parent, int)
    : QFrame(parent)
    , m_bMaximizeEnabled(Settings::EnableMaxButton.value() == QLatin1String("true"))
    , m_pSystemMenu(new SystemMenu(this))
{
    makeParts();
    layOutParts();
    connectButtons();
}

void TitleBar::makeParts()
{
    m_pButtonMinimize = new TitleButton(TitleButton::Minimize, this);
    m_pButtonMaximize = new TitleButton(TitleButton::Maximize, this);
    m_pButtonRestore = new TitleButton(TitleButton::Restore, this);
    m_pButtonClose = new TitleButton(TitleButton::Close, this);
    m_pLabelIcon = makeLabel(this, "Core_LabelTitleIcon", {0, IconSize});
    setCusTitleBarIcon({}, IconSize, IconSize);
    m_pLabelTitle = makeLabel(this, "Core_LabelTitle", SmallestTitle);
    m_pLabelTitle->setText(Change::tr(QStringLiteral("IDS_XFRAME_TITLE"), QStringLiteral("XFramePlugin")));
}

void TitleBar::layOutParts()
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(1, 0, 5, 0);
    layout->setSpacing(0);
    layout->addWidget(m_pLabelIcon);
    layout->addSpacing(Spacing);
    layout->addWidget(m_pLabelTitle);
    layout->addStretch();
    layout->addWidget(m_pButtonMinimize);
    layout->addWidget(m_pButtonMaximize);
    layout->addSpacing(Spacing);
    layout->addWidget(m_pButtonRestore);
    layout->addWidget(m_pButtonClose);
    m_pButtonMaximize->setVisible(m_bMaximizeEnabled);
    m_pButtonRestore->hide();
}

void TitleBar::connectButtons()
{
    if (parentWidget())
        connect(m_pButtonClose, &QToolButton::clicked, parentWidget(), &QWidget::close);
    connect(m_pButtonMinimize, &QToolButton::clicked, this, &TitleBar::showSmall);
    connect(m_pButtonMaximize, &QToolButton::clicked, this, &TitleBar::showMax);
    connect(m_pButtonRestore, &QToolButton::clicked, this, &TitleBar::showRestore);
    // A press on the icon that closes the menu must not open it again.
    connect(m_pSystemMenu, &SystemMenu::closed, this, [this] {
        m_bMenuShown = isIconPressed(mapFromGlobal(QCursor::pos()));
        // Not every platform passes that press on. Then the next one opens the menu.
        QTimer::singleShot(Platform::MenuPressDelayMs, this, [this] { m_bMenuShown = false; });
    });
}

void TitleBar::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        for (TitleButton* const button : findChildren<TitleButton*>(QString(), Qt::FindDirectChildrenOnly))
            button->translate();
    }
    QFrame::changeEvent(event);
}

void TitleBar::SetWindowTitle(QString const& title)
{
    if (!m_pLabelTitle) {
        LOG_DEBUG("%s, %s : title label is null", LOG_FILE, LOG_FUNCTION);
        return;
    }
    m_pLabelTitle->setText(title);
}

void TitleBar::setCusTitleBarIcon(QString path, int w, int h)
{
    if (path.isEmpty())
        path = CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/XFramePlugin/Startup");
    const QPixmap picture(path);
    if (!m_pLabelIcon || picture.isNull() || w <= 0 || h <= 0) {
        if (m_pLabelIcon)
            m_pLabelIcon->clear();
        return;
    }
    const qreal density = devicePixelRatioF();
    QPixmap scaled = picture.scaled(QSize(w, h) * density, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(density);
    m_pLabelIcon->setPixmap(scaled);
}

void TitleBar::HideAllControl()
{
    for (QWidget* const part : std::initializer_list<QWidget*>{
             m_pLabelIcon, m_pButtonMinimize, m_pButtonMaximize, m_pButtonRestore, m_pButtonClose})
        setShown(part, false);
    m_bMinimizeShown = false;
}

void TitleBar::ShowAllControl()
{
    setShown(m_pLabelIcon, true);
    setShown(m_pButtonRestore, m_bMaximized || m_bInTile);
    EnableMinimizeButton(true);
    EnableMaximizeButton(!m_bMaximized || m_bInTile);
    EnableCloseButton(true);
}

void TitleBar::EnableIcon(bool isVisible)
{
    setShown(m_pLabelIcon, isVisible);
}

void TitleBar::EnableMaximizeButton(bool isVisible)
{
    setShown(m_pButtonMaximize, isVisible && m_bMaximizeEnabled);
}

void TitleBar::EnableMinimizeButton(bool isVisible)
{
    m_bMinimizeShown = isVisible;
    setShown(m_pButtonMinimize, isVisible && !m_bInTile);
}

void TitleBar::EnableCloseButton(bool isVisible)
{
    setShown(m_pButtonClose, isVisible);
}

void TitleBar::GrayoutCloseButton(bool isEnabled)
{
    if (m_pButtonClose)
        m_pButtonClose->setEnabled(isEnabled);
}

bool TitleBar::IsCloseButtonEnable() const
{
    return m_pButtonClose && m_pButtonClose->isEnabled();
}
