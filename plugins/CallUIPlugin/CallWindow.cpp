#include "CallWindow.h"

#include "support/CloseGuard.h"
#include "support/Dialog.h"
#include "support/Look.h"
#include "support/Numbers.h"
#include "support/Text.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTime>
#include <QVBoxLayout>

namespace {

constexpr int AnswerAfter = 2500; // milliseconds
constexpr int CloseAfter = 2000;  // milliseconds
constexpr int Second = 1000;      // milliseconds
constexpr int PictureSize = 56;

QLabel* centred(QLabel* label)
{
    label->setAlignment(Qt::AlignCenter);
    return label;
}

QLabel* makePicture()
{
    auto* picture = new QLabel;
    picture->setPixmap(Look::tileIcon(Look::Sign::Call).pixmap(PictureSize, PictureSize));
    return picture;
}

} // namespace

CallWindow::CallWindow(const QString& number, _UI_EN_CALL_TYPE type, QWidget* parent)
    : ExtendDialog(parent, Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint, enWidgetFixed)
    , m_stateLabel(Look::quietLabel(QString()))
    , m_hangUp(makeHangUpButton())
{
    setWindowIcon(Look::tileIcon(Look::Sign::Call));
    setAttribute(Qt::WA_DeleteOnClose);
    m_nextState.setSingleShot(true);
    connect(&m_nextState, &QTimer::timeout, this, &CallWindow::proceed);
    connect(&m_everySecond, &QTimer::timeout, this, &CallWindow::showState);
    enter(State::Dialling);
    keepTranslated(this, [=] {
        setWindowTitle(text(type == UI_CALL_VIDEO ? "IDS_CALL_VIDEO" : "IDS_CALL_VOICE"));
        showState();
    });
    fillDialog(this, makeContent(number));
    m_hangUp->setFocus();
    new CloseGuard(
        {"IDS_CALL_LEAVE_TITLE", "IDS_CALL_LEAVE_TEXT", "IDS_CALL_LEAVE", "IDS_CALL_STAY"},
        [this] { return isGoingOn(); }, this);
}

QWidget* CallWindow::makeContent(const QString& number)
{
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(Look::Margin * 2, Look::Margin, Look::Margin * 2, Look::Margin);
    layout->setSpacing(Look::Gap);
    layout->addWidget(centred(makePicture()));
    layout->addSpacing(Look::Gap);
    layout->addWidget(centred(Look::label(number, 1.6, QFont::DemiBold)));
    layout->addWidget(centred(m_stateLabel));
    layout->addSpacing(Look::Gap * 2);
    layout->addWidget(m_hangUp);
    return content;
}

QPushButton* CallWindow::makeHangUpButton()
{
    auto* button = new QPushButton;
    button->setMinimumSize(180, 40);
    button->setAutoDefault(true); // the Return key presses it while it has the focus
    connect(button, &QPushButton::clicked, this, &CallWindow::hangUpOrClose);
    return button;
}

void CallWindow::enter(State state)
{
    m_state = state;
    m_everySecond.stop();
    m_nextState.stop();
    switch (state) {
    case State::Dialling:
        m_nextState.start(AnswerAfter);
        break;
    case State::InCall:
        m_since.start();
        m_everySecond.start(Second);
        break;
    case State::Ended:
        m_nextState.start(CloseAfter);
        break;
    }
    showState();
}

void CallWindow::proceed()
{
    if (m_state == State::Dialling)
        enter(State::InCall);
    else
        close();
}

QString CallWindow::stateText() const
{
    switch (m_state) {
    case State::Dialling:
        return text("IDS_CALL_DIALLING");
    case State::InCall: {
        const QTime duration = QTime(0, 0).addMSecs(int(m_since.elapsed()));
        return text("IDS_CALL_TALKING").arg(languageLocale().toString(duration, QStringLiteral("hh:mm:ss")));
    }
    case State::Ended:
        break;
    }
    return text(m_lostModem ? "IDS_CALL_NO_MODEM" : "IDS_CALL_ENDED");
}

void CallWindow::showState()
{
    setCaption(m_hangUp, isGoingOn() ? "IDS_CALL_HANG_UP" : "IDS_CALL_CLOSE");
    m_stateLabel->setText(stateText());
}

void CallWindow::modemRemoved()
{
    if (!isGoingOn())
        return;
    m_lostModem = true;
    enter(State::Ended);
}

void CallWindow::hangUpOrClose()
{
    if (isGoingOn())
        enter(State::Ended);
    else
        close();
}

void CallWindow::closeEvent(QCloseEvent* event)
{
    enter(State::Ended);
    ExtendDialog::closeEvent(event);
}

/// Escape is pressed too easily to end a call; it minimises the window instead.
void CallWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && isGoingOn() && GetTileBar())
        GetTileBar()->showSmall();
    else
        ExtendDialog::keyPressEvent(event);
}
