#include "StatePanel.h"

#include "support/ResultWords.h"
#include "support/Text.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QResizeEvent>
#include <QVBoxLayout>
#include <QWindow>

namespace {

constexpr int NarrowPanel = 460; ///< narrower ones save height
constexpr int PictureSize = 56;
constexpr int SmallPictureSize = 48;
constexpr int LongestLine = 600; ///< of the sentence, in pixels

struct Button
{
    Action action;
    const char* label;
    bool isPrimary; ///< what most users want next, so that it is drawn in colour
};

constexpr Button Buttons[] = {
    {Action::Connect, "IDS_CONN_CONNECT", true},
    {Action::Cancel, "IDS_CONN_CANCEL", false},
    {Action::Disconnect, "IDS_CONN_DISCONNECT", false},
    {Action::EnterPin, "IDS_CONN_ENTER_PIN", true},
    {Action::EnterPuk, "IDS_CONN_ENTER_PUK", true},
    {Action::ChooseNetwork, "IDS_CONN_CHOOSE_NETWORK", false},
    {Action::AllowRoaming, "IDS_CONN_ALLOW_ROAMING", false},
    {Action::Help, "IDS_CONN_HELP", false},
};

QLabel* centred(QLabel* label)
{
    label->setAlignment(Qt::AlignCenter);
    return label;
}

QPushButton* makeButton()
{
    auto* button = new QPushButton;
    button->setMinimumSize(Look::LargeButtonSize);
    Look::setFont(button, Look::HeadingText, QFont::DemiBold);
    return button;
}

/// Makes the lines of a longer sentence equally long: no single word remains for the last one.
int lineWidth(const QLabel& sentence)
{
    const int whole = sentence.fontMetrics().horizontalAdvance(sentence.text());
    return qMin(LongestLine, whole / (whole / LongestLine + 1) + Look::Margin * 2);
}

} // namespace

StatePanel::StatePanel(QWidget* parent)
    : Surface(parent)
    , m_head(new QBoxLayout(QBoxLayout::TopToBottom))
    , m_picture(centred(new QLabel))
    , m_title(centred(Look::label(QString(), Look::StateText, QFont::DemiBold)))
    , m_sentence(centred(Look::quietLabel(QString(), true)))
    , m_button(makeButton())
{
    m_title->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Look::Margin, Look::Gap * 2, Look::Margin, Look::Gap * 2);
    layout->setSpacing(Look::Gap);
    layout->addStretch();
    m_head->setSpacing(Look::Gap);
    m_head->addWidget(m_picture);
    m_head->addWidget(m_title);
    layout->addLayout(m_head);
    auto* line = new QHBoxLayout; // lets the sentence be as wide as it may
    line->addWidget(m_sentence, 1);
    layout->addLayout(line);
    layout->addSpacing(Look::Gap / 2);
    layout->addWidget(m_button, 0, Qt::AlignHCenter);
    layout->addStretch();
    m_button->installEventFilter(this);
    connect(m_button, &QPushButton::clicked, this, [this] { Q_EMIT pressed(m_action); });
}

void StatePanel::showMeaning(const Meaning& meaning, const QString& sentence)
{
    const ResultWords words = meaning.failure ? resultWords(meaning.failure) : ResultWords();
    if (m_sign != meaning.sign) { // drawing it takes longer than the rest
        m_sign = meaning.sign;
        showPicture();
    }
    m_title->setText(meaning.title ? text(meaning.title) : words.title);
    if (sentence.isEmpty())
        m_sentence->setText(meaning.sentence ? text(meaning.sentence) : words.hint);
    else
        m_sentence->setText(sentence);
    m_sentence->setMaximumWidth(lineWidth(*m_sentence));
    setAccessibleName(m_title->text());
    setAccessibleDescription(m_sentence->text());
    m_button->setAccessibleDescription(m_sentence->text());
    showButton(meaning);
}

void StatePanel::showPicture()
{
    const int size = m_isTight ? SmallPictureSize : PictureSize;
    m_picture->setPixmap(Look::tileIcon(m_sign).pixmap(window()->windowHandle(), {size, size}));
}

void StatePanel::resizeEvent(QResizeEvent* event)
{
    Surface::resizeEvent(event);
    adapt();
}

void StatePanel::setLow(bool isLow)
{
    if (isLow == m_isLow)
        return;
    m_isLow = isLow;
    m_head->setDirection(isLow ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    constexpr qreal change = Look::TitleText / Look::StateText;
    Look::setFont(m_title, isLow ? change : 1 / change, QFont::DemiBold);
    layout()->setSpacing(isLow ? Look::Gap / 2 : Look::Gap);
    layout()->setAlignment(m_head, isLow ? Qt::AlignHCenter : Qt::Alignment());
    adapt();
}

void StatePanel::adapt()
{
    const bool isTight = m_isLow || width() < NarrowPanel;
    if (isTight == m_isTight)
        return;
    m_isTight = isTight;
    const int margin = isTight ? Look::Gap : Look::Gap * 2;
    layout()->setContentsMargins(Look::Margin, margin, Look::Margin, margin);
    showPicture();
}

bool StatePanel::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::KeyPress)
        return static_cast<QKeyEvent*>(event)->isAutoRepeat();
    return event->type() == QEvent::MouseButtonDblClick;
}

void StatePanel::showButton(const Meaning& meaning)
{
    m_action = meaning.action;
    for (const Button& button : Buttons) {
        if (button.action != meaning.action)
            continue;
        setCaption(m_button, button.label);
        Look::setStyleProperty(m_button, "primary", button.isPrimary);
    }
    m_button->setEnabled(meaning.isPossible);
    const bool isOffered = meaning.action != Action::None;
    if (!isOffered && m_button->hasFocus())
        focusPreviousChild(); // from where the Tab key leads back; Qt would choose the next one, perhaps the menu
    m_button->setVisible(isOffered);
}
