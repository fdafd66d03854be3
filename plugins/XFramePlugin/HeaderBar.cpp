#include "HeaderBar.h"

#include "FrameStyle.h"
#include "PluginStatusText.h"
#include "common/CommonUtils.h"
#include "support/ElidedLabel.h"
#include "support/Look.h"
#include "support/Text.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int PictureSize = 48;
constexpr int CompactPictureSize = 32;
constexpr int LongestValue = 240;
constexpr int WidthWithFacts = 560; ///< a narrower header has only the modem

/// A quiet caption above a value.
QLayout* makeFact(const char* caption, QLabel* value)
{
    auto* column = new QVBoxLayout;
    auto* captionLabel = Look::quietLabel(QString());
    column->setSpacing(2);
    column->addWidget(captionLabel);
    column->addWidget(value);
    keepTranslated(captionLabel, [=] {
        captionLabel->setText(text(caption));
        value->setAccessibleName(captionLabel->text());
    });
    return column;
}

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
    button->setPopupMode(QToolButton::InstantPopup);
    button->setAutoRaise(true);
    return button;
}

QString modemState(const Modems& modems, bool wasRefused)
{
    if (modems.isEmpty())
        return text(wasRefused ? "IDS_HEADER_REFUSED_HINT" : "IDS_HEADER_WAITING");
    if (modems.size() > 1)
        return text("IDS_HEADER_LAST_USED");
    const QString port = modems.first().port;
    return port.isEmpty() ? text("IDS_HEADER_ATTACHED") : text("IDS_HEADER_ATTACHED_AT").arg(port);
}

QString modemName(const Modems& modems, bool wasRefused)
{
    if (modems.isEmpty())
        return text(wasRefused ? "IDS_HEADER_REFUSED" : "IDS_HEADER_NO_MODEM");
    return modems.size() == 1 ? modems.first().name : text("IDS_HEADER_MODEMS").arg(modems.size());
}

} // namespace

HeaderBar::HeaderBar(QWidget* parent)
    : QWidget(parent)
    , m_picture(new QLabel)
    , m_modem(makeValue(1.5, QFont::DemiBold))
    , m_modemState(makeValue(1.0, QFont::Normal))
    , m_operator(makeValue(1.1, QFont::DemiBold))
    , m_key(makeValue(1.1, QFont::DemiBold))
    , m_facts(makeFacts())
    , m_menuButton(makeMenuButton())
{
    auto* layout = new QHBoxLayout(this);
    layout->setSpacing(Look::Gap * 2);
    layout->addWidget(m_picture);
    layout->addLayout(makeModemColumn());
    layout->addStretch();
    layout->addWidget(m_facts);
    layout->addWidget(m_menuButton);
    keepTranslated(this, [this] { refresh(); });
}

QLayout* HeaderBar::makeModemColumn()
{
    auto* column = new QVBoxLayout;
    column->setSpacing(2);
    Look::makeQuiet(m_modemState);
    column->addWidget(m_modem);
    column->addWidget(m_modemState);
    keepTranslated(m_modem, [this] { m_modem->setAccessibleName(text("IDS_HEADER_MODEM")); });
    return column;
}

QWidget* HeaderBar::makeFacts()
{
    auto* facts = new QWidget;
    facts->setMinimumWidth(1); // a narrow window hides them
    auto* layout = new QHBoxLayout(facts);
    layout->setContentsMargins(0, 0, Look::Gap, 0);
    layout->setSpacing(Look::Margin + Look::Gap);
    layout->addLayout(makeFact("IDS_HEADER_OPERATOR", m_operator));
    layout->addLayout(makeFact("IDS_HEADER_CUSTOMISED_FOR", m_key));
    return facts;
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
}

int HeaderBar::pictureSize(bool isCompact)
{
    return isCompact ? CompactPictureSize : PictureSize;
}

void HeaderBar::setCompact(bool isCompact)
{
    const int size = pictureSize(isCompact);
    const int side = isCompact ? Look::Gap * 2 : Look::Margin;
    const int top = isCompact ? Look::Gap : Look::Gap * 2;
    if (!m_isTitle)
        m_picture->setPixmap(FrameStyle::picture().pixmap(size, size));
    layout()->setContentsMargins(m_isTitle ? Look::Gap : side, top, m_isTitle ? Look::Gap : side, top);
    m_isCompact = isCompact;
    showFacts();
}

void HeaderBar::showFacts()
{
    m_facts->setVisible(!m_isCompact && width() >= WidthWithFacts);
}

void HeaderBar::resizeEvent(QResizeEvent* event)
{
    showFacts();
    QWidget::resizeEvent(event);
}

void HeaderBar::refresh()
{
    const QString operatorName =
        CommonUtils::GetSettings(QLatin1String("customize"), QLatin1String("operator"));
    const auto& [modems, key, wasRefused] = m_situation;
    m_modem->setFullText(modemName(modems, wasRefused));
    m_modemState->setFullText(modemState(modems, wasRefused));
    m_operator->setFullText(operatorName.isEmpty() ? text("IDS_HEADER_NO_OPERATOR") : operatorName);
    m_key->setFullText(key.isEmpty() ? text("IDS_HEADER_NO_KEY") : describeKey(key));
}

void HeaderBar::paintEvent(QPaintEvent*)
{
    if (m_isTitle)
        return;
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    painter.fillRect(rect().adjusted(0, height() - 1, 0, 0), Look::lineColor(palette()));
}
