#include "ExtendDialog/ExtendDialog.h"

#include "ExtendDialog/DialogPlacement_p.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "Startup/Startup.h"
#include "common/CommonUtils.h"
#include "common/GuardedCall.h"
#include "common/Log.h"

#include <QCloseEvent>
#include <QFrame>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLayout>
#include <QPaintEvent>

namespace {

constexpr int TitleBarLeft = 3;
constexpr int FirstTitleBarHeight = 29;
constexpr QSize SmallestSize{100, 100};

Qt::WindowFlags withoutOwnFrame(Qt::WindowFlags flags)
{
    return flags & ~(Qt::FramelessWindowHint | Qt::CustomizeWindowHint);
}

} // namespace

ExtendDialog::ExtendDialog(QWidget* parent, Qt::WindowFlags flags, enWidgetType type)
    : m_enWidgetType(type)
{
    setParent(parent);
    getFrameValue();
    if (!m_bCusTitle || type == enWidgetSystemFrame) {
        m_bCusTitle = false;
        QDialog::setWindowFlags(withoutOwnFrame(flags) | Qt::Dialog);
        return;
    }
    m_pFrame = new QFrame(this);
    QDialog::setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::CustomizeWindowHint);
    setTtileBar(flags);
    m_pFrame->setObjectName(QStringLiteral("Core_ExtendDialogFrame"));
}

void ExtendDialog::getFrameValue()
{
    IMainFrameUIService* const mainFrame = Startup::GetMainFrameService();
    if (!mainFrame)
        return;
    guardedCall("UsesCustomFrame, GetTitleHeight, GetFrameWidth", QStringLiteral("main frame"), [&] {
        m_bCusTitle = mainFrame->UsesCustomFrame();
        if (!m_bCusTitle)
            return;
        m_iTitleHeight = mainFrame->GetTitleHeight();
        m_iFrameWidth = mainFrame->GetFrameWidth();
    });
}

void ExtendDialog::setTtileBar(Qt::WindowFlags flags)
{
    if (!m_pTitleBar)
        m_pTitleBar = new TitleBar(this, TitleBarLeft);
    if (flags & Qt::CustomizeWindowHint)
        m_pTitleBar->HideAllControl();
    else
        m_pTitleBar->ShowAllControl();
    m_pTitleBar->EnableMinimizeButton(flags & Qt::WindowMinimizeButtonHint);
    m_pTitleBar->EnableMaximizeButton(flags & Qt::WindowMaximizeButtonHint);
    m_pTitleBar->EnableCloseButton(flags & Qt::WindowCloseButtonHint);
    m_pTitleBar->EnableIcon(false);
    m_pTitleBar->setGeometry(TitleBarLeft, 0, width(), FirstTitleBarHeight);
    m_pTitleBar->show();
}

void ExtendDialog::setWindowFlags(Qt::WindowFlags flags)
{
    const bool isSystemFrame = m_enWidgetType == enWidgetSystemFrame;
    const bool staysOnTop = m_bCusTitle && (flags & Qt::WindowStaysOnTopHint);
    if (staysOnTop) {
        LOG_WARNING("%s, %s : Qt::WindowStaysOnTopHint set", LOG_FILE, LOG_FUNCTION);
        QDialog::setWindowFlags(windowFlags() | Qt::WindowStaysOnTopHint);
    } else if (m_bCusTitle && isSystemFrame) {
        setTtileBar(flags);
        return;
    }
    if (!m_bCusTitle && isSystemFrame) {
        QDialog::setWindowFlags(flags);
        return;
    }
    if (!(staysOnTop && isSystemFrame))
        flags = withoutOwnFrame(flags) | windowFlags();
    if (m_bCusTitle)
        setTtileBar(flags);
    else
        QDialog::setWindowFlags(flags);
}

void ExtendDialog::AddMainWidget(QWidget* widget)
{
    m_pMainWidget = widget;
    if (!widget)
        return;
    widget->setParent(this, Qt::FramelessWindowHint);
    widget->move(m_bCusTitle ? QPoint(m_iFrameWidth, m_iTitleHeight) : QPoint());
}

void ExtendDialog::setLayout(QLayout* layout)
{
    if (!layout)
        return;
    layout->setGeometry(QRect(QPoint(m_iFrameWidth, m_iTitleHeight),
                              QPoint(width() - 1 - m_iFrameWidth, height() - 1 - m_iFrameWidth)));
    if (m_bCusTitle) // keeps the layout there when it is activated again
        setContentsMargins(m_iFrameWidth, m_iTitleHeight, m_iFrameWidth, m_iFrameWidth);
    QDialog::setLayout(layout);
}

void ExtendDialog::setWindowTitle(QString const& title)
{
    if (m_bCusTitle && m_pTitleBar)
        m_pTitleBar->SetWindowTitle(title);
    QDialog::setWindowTitle(title);
}

void ExtendDialog::EnableCloseButton(bool isEnabled)
{
    if (!m_pTitleBar)
        return;
    m_bCloseEnabled = isEnabled;
    m_pTitleBar->GrayoutCloseButton(isEnabled);
    if (isEnabled)
        LOG_DEBUG("%s, %s : releaseKeyboard() called", LOG_FILE, LOG_FUNCTION);
    else
        LOG_DEBUG("%s, %s : grabKeyboard() call", LOG_FILE, LOG_FUNCTION);
}

void ExtendDialog::changeSize(QSize widgetSize)
{
    resize(framed(widgetSize));
}

QSize ExtendDialog::minimumSizeHint() const
{
    if (!m_pMainWidget)
        return QDialog::minimumSizeHint();
    return framed(m_pMainWidget->minimumSizeHint().expandedTo(m_pMainWidget->minimumSize()));
}

QSize ExtendDialog::framed(const QSize& content) const
{
    return m_bCusTitle ? content + QSize(2 * m_iFrameWidth, m_iFrameWidth + m_iTitleHeight) : content;
}

void ExtendDialog::getCornerRegion(QRegion& left, QRegion& right) const
{
    cornerRegions(width(), left, right);
}

void ExtendDialog::cornerRegions(int width, QRegion& left, QRegion& right)
{
    const DialogPlacement::Corners corners = DialogPlacement::corners(width);
    left = corners.left;
    right = corners.right;
}

void ExtendDialog::resizeEvent(QResizeEvent* event)
{
    const QSize size = event ? event->size() : this->size();
    if (!m_bCusTitle) {
        if (m_pMainWidget)
            m_pMainWidget->resize(size);
        return;
    }
    if (m_pFrame)
        m_pFrame->resize(size);
    if (m_pTitleBar)
        m_pTitleBar->resize(size.width() - TitleBarLeft, m_iTitleHeight);
    if (m_pMainWidget)
        m_pMainWidget->resize(size.width() - 2 * m_iFrameWidth,
                              size.height() - m_iFrameWidth - m_iTitleHeight);
    if (m_bCentreOnResize)
        CommonUtils::MoveCentre(this);
}

void ExtendDialog::showEvent(QShowEvent* event)
{
    LOG_DEBUG("%s, %s : entered", LOG_FILE, LOG_FUNCTION);
    if (event && m_enWidgetType == enWidgetMessage)
        CommonUtils::MoveCentre(this);
    if (m_pMainWidget)
        fitToMainWidget();
    if (!m_bCloseEnabled && QWidget::keyboardGrabber() != this)
        LOG_DEBUG("%s, %s : grabKeyBoard() called", LOG_FILE, LOG_FUNCTION);
    QDialog::showEvent(event);
}

void ExtendDialog::fitToMainWidget()
{
    if (m_bCusTitle)
        return;
    if (m_enWidgetType == enWidgetFixed || m_enWidgetType == enWidgetMessage)
        setFixedSize(m_pMainWidget->size());
    if (maximumSize() != minimumSize())
        setMinimumSize(SmallestSize);
}

void ExtendDialog::keyPressEvent(QKeyEvent* event)
{
    LOG_DEBUG("%s, %s : entered", LOG_FILE, LOG_FUNCTION);
    if (!event)
        return;
    if (m_pTitleBar && !m_bCloseEnabled) {
        LOG_DEBUG("key press %d", event->key());
        if (event->key() == Qt::Key_Escape) {
            LOG_DEBUG("%s, %s : Escape key pressed", LOG_FILE, LOG_FUNCTION);
            return;
        }
    }
    QDialog::keyPressEvent(event);
}

void ExtendDialog::closeEvent(QCloseEvent* event)
{
    LOG_DEBUG("%s, %s : entered", LOG_FILE, LOG_FUNCTION);
    if (!event)
        return;
    if (!m_bCloseEnabled && QGuiApplication::keyboardModifiers() == Qt::AltModifier) { // Alt+F4
        LOG_DEBUG("%s, %s : close event ignored", LOG_FILE, LOG_FUNCTION);
        event->ignore();
        return;
    }
    if (m_bCloseEnabled && m_pTitleBar && m_pTitleBar->IsMinimized() && !m_pTitleBar->getMinimizeBehavior())
        m_pTitleBar->ReleaseOccupy();
    LOG_DEBUG("%s, %s : releaseKeyboard() call", LOG_FILE, LOG_FUNCTION);
    LOG_DEBUG("%s, %s : emit dlgCloseEvent ()", LOG_FILE, LOG_FUNCTION);
    Q_EMIT dlgCloseEvent();
}

void ExtendDialog::hideEvent(QHideEvent* event)
{
    LOG_DEBUG("%s, %s : entered", LOG_FILE, LOG_FUNCTION);
    LOG_DEBUG("%s, %s : releaseKeyboard() called", LOG_FILE, LOG_FUNCTION);
    QDialog::hideEvent(event);
}

void ExtendDialog::paintEvent(QPaintEvent* event)
{
    QDialog::paintEvent(event);
    if (!m_bCusTitle || CommonUtils::IsMiniMode())
        return;
    QRegion left;
    QRegion right;
    getCornerRegion(left, right);
    setMask(QRegion(rect()) - left - right);
}
