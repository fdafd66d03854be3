#include "HeaderBar.h"

#include "FrameStyle.h"
#include "ModemChooser.h"
#include "support/ElidedLabel.h"
#include "support/Look.h"
#include "support/Numbers.h"
#include "support/Text.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int PictureSize = 48;
constexpr int CompactPictureSize = 32;
constexpr int LongestValue = 400;

ElidedLabel* makeValue(qreal scale, QFont::Weight weight)
{
    auto* label = new ElidedLabel;
    label->setMaximumWidth(LongestValue); // modems can have names of any length
    Look::setFont(label, scale, weight);
    return label;
}

QToolButton* makeMenuButton()
{
    auto* button = new QToolButton;
    button->setObjectName(QLatin1String("mainMenu")); // for style sheets
    button->setText(QString(QChar(0x2261)));          // three bars
    Look::setFont(button, Look::TitleText);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setAutoRaise(true);
    return button;
}

/// The header without a modem that can be used.
struct Words
{
    const char* name;
    const char* state;
};

Words wordsWithoutModem(const QString& unusable)
{
    if (unusable == QLatin1String("rejected"))
        return {"IDS_HEADER_REFUSED", "IDS_HEADER_REFUSED_HINT"};
    if (!unusable.isEmpty())
        return {"IDS_HEADER_FAILED", "IDS_HEADER_FAILED_HINT"};
    return {"IDS_HEADER_NO_MODEM", "IDS_HEADER_WAITING"};
}

QString modemState(const Situation& situation)
{
    const Modems& modems = situation.modems;
    if (modems.isEmpty())
        return text(wordsWithoutModem(situation.unusable).state);
    if (modems.size() > 1)
        return text("IDS_HEADER_IN_USE").arg(numberText(modems.size()));
    const QString port = modems.first().port;
    return port.isEmpty() ? text("IDS_HEADER_ATTACHED") : text("IDS_HEADER_ATTACHED_AT").arg(port);
}

QString modemName(const Situation& situation)
{
    if (situation.modems.isEmpty())
        return text(wordsWithoutModem(situation.unusable).name);
    return situation.modems.first().name;
}

} // namespace

HeaderBar::HeaderBar(QWidget* parent)
    : QWidget(parent)
    , m_picture(new QLabel)
    , m_modem(makeValue(Look::TitleText, QFont::DemiBold))
    , m_chooser(new ModemChooser)
    , m_modemState(makeValue(Look::NormalText, QFont::Normal))
    , m_menuButton(makeMenuButton())
{
    auto* layout = new QHBoxLayout(this);
    layout->setSpacing(Look::Gap * 2);
    layout->addWidget(m_picture);
    layout->addLayout(makeModemColumn());
    layout->addStretch();
    layout->addWidget(m_menuButton);
    keepTranslated(this, [this] { refresh(); });
}

QLayout* HeaderBar::makeModemColumn()
{
    auto* column = new QVBoxLayout;
    column->setSpacing(0);
    constexpr int margin = ModemChooser::FrameWidth; // so that the header keeps its height
    m_modem->setContentsMargins(0, margin, 0, margin);
    Look::makeQuiet(m_modemState);
    column->addWidget(m_modem);
    column->addWidget(m_chooser);
    column->addWidget(m_modemState);
    keepTranslated(m_modem, [this] { m_modem->setAccessibleName(text("IDS_HEADER_MODEM")); });
    return column;
}

void HeaderBar::showSituation(const Situation& situation)
{
    m_situation = situation;
    refresh();
}

void HeaderBar::becomeTitle()
{
    m_isTitle = true;
    m_picture->hide();
    static_cast<QHBoxLayout*>(layout())->insertSpacing(0, Look::Gap); // mirrored, unlike margins
}

int HeaderBar::pictureSize(bool isCompact)
{
    return isCompact ? CompactPictureSize : PictureSize;
}

void HeaderBar::setCompact(bool isCompact)
{
    const int size = pictureSize(isCompact);
    const int side = m_isTitle ? 0 : isCompact ? Look::Gap * 2 : Look::Margin;
    const int top = isCompact ? Look::Gap : Look::Gap * 2;
    if (!m_isTitle)
        m_picture->setPixmap(FrameStyle::picture().pixmap(size, size));
    layout()->setContentsMargins(side, top, side, top);
    layout()->setSpacing(isCompact ? Look::Gap / 2 : Look::Gap * 2);
    const int narrow = m_menuButton->fontMetrics().height() + Look::Gap; // more room for names
    m_menuButton->setMaximumWidth(isCompact ? narrow : QWIDGETSIZE_MAX);
}

void HeaderBar::refresh()
{
    const Modems& modems = m_situation.modems;
    m_modem->setFullText(modemName(m_situation));
    m_modem->setVisible(modems.size() < 2);
    m_chooser->setVisible(modems.size() > 1);
    if (modems.size() > 1)
        m_chooser->showModems(modems);
    m_modemState->setFullText(modemState(m_situation));
}

void HeaderBar::paintEvent(QPaintEvent*)
{
    if (m_isTitle)
        return;
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    painter.fillRect(rect().adjusted(0, height() - 1, 0, 0), Look::lineColor(palette()));
}
