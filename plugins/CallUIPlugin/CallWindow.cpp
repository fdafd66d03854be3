#include "CallWindow.h"

#include "support/CloseGuard.h"
#include "support/Dialog.h"
#include "support/Look.h"
#include "support/Modems.h"
#include "support/Numbers.h"
#include "support/Text.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int AnswerAfter = 2500; // milliseconds
constexpr int CloseAfter = 2000;  // milliseconds
constexpr int Second = 1000;      // milliseconds
constexpr int PictureSize = 56;
constexpr int Width = 300;
constexpr int StateLines = 3; ///< two for the longest reason, one for the duration

QLabel* centred(QLabel* label)
{
    label->setAlignment(Qt::AlignCenter);
    return label;
}

/// As high as the longest text needs, so that the window never changes its size.
QLabel* makeStateLabel()
{
    QLabel* const label = Look::quietLabel(QString(StateLines - 1, QLatin1Char('\n')), true);
    label->setMinimumHeight(label->heightForWidth(Width));
    label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    return label;
}

QLabel* makePicture()
{
    auto* picture = new QLabel;
    picture->setPixmap(Look::tileIcon(Look::Sign::Call).pixmap(PictureSize, PictureSize));
    return picture;
}

} // namespace

CallWindow::CallWindow(const QString& number, _UI_EN_CALL_TYPE type, quint32 modem, QWidget* parent)
    : ExtendDialog(parent, Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint, enWidgetFixed)
    , m_modem(modem)
    , m_hadNetwork(hasNetwork(modem))
    , m_stateLabel(makeStateLabel())
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
        {"IDS_CALL_LEAVE_TITLE", "IDS_CALL_LEAVE_TEXT", {"IDS_CALL_LEAVE", "IDS_CALL_STAY"}},
        [this] { return isGoingOn(); }, this);
}

QWidget* CallWindow::makeContent(const QString& number)
{
    auto* content = new QWidget;
    content->setMinimumWidth(Width);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(Look::Margin, Look::Margin, Look::Margin, Look::Margin);
    layout->setSpacing(Look::Gap);
    layout->addWidget(centred(makePicture()));
    layout->addSpacing(Look::Gap);
    layout->addWidget(centred(Look::label(number, Look::TitleText, QFont::DemiBold)));
    layout->addWidget(m_stateLabel);
    layout->addWidget(m_hangUp);
    return content;
}

QPushButton* CallWindow::makeHangUpButton()
{
    auto* button = new QPushButton;
    button->setMinimumSize(Look::LargeButtonSize);
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
        m_length = m_since.isValid() ? m_since.elapsed() : 0;
        if (m_end == CallEnd::HungUp)
            m_nextState.start(CloseAfter);
        break;
    }
    Look::setStyleProperty(m_hangUp, "call", isGoingOn() ? QStringLiteral("end") : QString()); // red or not
    showState();
}

void CallWindow::end(CallEnd reason)
{
    if (!isGoingOn())
        return;
    m_end = reason;
    enter(State::Ended);
}

void CallWindow::proceed()
{
    if (m_state == State::Ended) {
        close();
        return;
    }
    const CallEnd answer = m_hadNetwork ? simulatedEnd(m_modem) : CallEnd::NoNetwork;
    if (answer == CallEnd::HungUp)
        enter(State::InCall);
    else
        end(answer);
}

/// On a line of its own; empty if the call was not answered.
QString CallWindow::durationLine() const
{
    if (!m_since.isValid())
        return {};
    const qint64 length = isGoingOn() ? m_since.elapsed() : m_length;
    return QLatin1Char('\n') + durationText(length / Second, languageLocale());
}

QString CallWindow::stateText() const
{
    switch (m_state) {
    case State::Dialling:
        return text("IDS_CALL_DIALLING");
    case State::InCall:
        return text("IDS_CALL_TALKING") + durationLine();
    case State::Ended:
        break;
    }
    return wordsOf(m_end) + durationLine();
}

void CallWindow::showState()
{
    setCaption(m_hangUp, isGoingOn() ? "IDS_CALL_HANG_UP" : "IDS_CALL_CLOSE");
    m_stateLabel->setText(stateText());
}

void CallWindow::followModem()
{
    if (!isAttached(m_modem))
        end(CallEnd::NoModem);
    else if (m_hadNetwork && !hasNetwork(m_modem))
        end(CallEnd::NoNetwork);
}

void CallWindow::hangUpOrClose()
{
    if (isGoingOn())
        end(CallEnd::HungUp);
    else
        close();
}

void CallWindow::closeEvent(QCloseEvent* event)
{
    end(CallEnd::HungUp);
    ExtendDialog::closeEvent(event);
}

/// Escape is pressed too easily to end a call; it minimises the window instead, or does nothing in the desktop's frame.
void CallWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape || !isGoingOn())
        ExtendDialog::keyPressEvent(event);
    else if (GetTileBar())
        GetTileBar()->showSmall();
}
