#include "HeaderBar.h"

#include "PluginStatusText.h"
#include "common/CommonUtils.h"
#include "support/Look.h"
#include "support/Text.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace {

namespace Texts {
constexpr auto NoModem = u"No modem";
constexpr auto SeveralModems = u"%1 modems";
constexpr auto Attached = u"Attached at %1";
constexpr auto AttachedSomewhere = u"Attached";
constexpr auto Waiting = u"Waiting for one to be plugged in";
constexpr auto TooMany = u"Customised for the one used last";
constexpr auto Modem = u"Modem";
constexpr auto Operator = u"Operator";
constexpr auto NoOperator = u"none";
constexpr auto Key = u"Customised for";
constexpr auto NoKey = u"no modem in particular";
} // namespace Texts

constexpr int PictureSize = 48;
constexpr int LongestValue = 240;

QLabel* makePicture()
{
    auto* picture = new QLabel;
    picture->setPixmap(Look::tileIcon(Look::Sign::Signal).pixmap(PictureSize, PictureSize));
    return picture;
}

/// A quiet caption above a value.
QLayout* makeFact(const char16_t* caption, QLabel* value)
{
    auto* column = new QVBoxLayout;
    column->setSpacing(2);
    column->addWidget(Look::quietLabel(text(caption)));
    column->addWidget(value);
    value->setAccessibleName(text(caption));
    return column;
}

void setValue(QLabel* label, const QString& value)
{
    // A device may give itself any name: a long one must not widen the window.
    const QString shown = label->fontMetrics().elidedText(value, Qt::ElideRight, LongestValue);
    label->setText(shown);
    label->setToolTip(shown == value ? QString() : value);
    label->setAccessibleDescription(value);
}

QString modemState(const Modems& modems)
{
    if (modems.isEmpty())
        return text(Texts::Waiting);
    if (modems.size() > 1)
        return text(Texts::TooMany);
    const QString port = modems.first().port;
    return port.isEmpty() ? text(Texts::AttachedSomewhere) : text(Texts::Attached).arg(port);
}

QString modemName(const Modems& modems)
{
    if (modems.isEmpty())
        return text(Texts::NoModem);
    return modems.size() == 1 ? modems.first().name : text(Texts::SeveralModems).arg(modems.size());
}

QString orElse(const QString& value, const char16_t* otherwise)
{
    return value.isEmpty() ? text(otherwise) : value;
}

} // namespace

HeaderBar::HeaderBar(QWidget* parent)
    : QWidget(parent)
    , m_modem(Look::label(QString(), 1.5, QFont::DemiBold))
    , m_modemState(Look::quietLabel(QString()))
    , m_operator(Look::label(QString(), 1.1, QFont::DemiBold))
    , m_key(Look::label(QString(), 1.1, QFont::DemiBold))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(Look::Margin, Look::Gap * 2, Look::Margin, Look::Gap * 2);
    layout->setSpacing(Look::Gap * 2);
    layout->addWidget(makePicture());
    layout->addLayout(makeModemColumn());
    layout->addStretch();
    layout->addLayout(makeFact(Texts::Operator, m_operator));
    layout->addSpacing(Look::Margin);
    layout->addLayout(makeFact(Texts::Key, m_key));
}

QLayout* HeaderBar::makeModemColumn()
{
    auto* column = new QVBoxLayout;
    column->setSpacing(2);
    column->addWidget(m_modem);
    column->addWidget(m_modemState);
    m_modem->setAccessibleName(text(Texts::Modem));
    return column;
}

void HeaderBar::showSituation(const Modems& modems, const QString& key)
{
    const QString operatorName =
        CommonUtils::GetSettings(QLatin1String("customize"), QLatin1String("operator"));
    setValue(m_modem, modemName(modems));
    setValue(m_modemState, modemState(modems));
    setValue(m_operator, orElse(operatorName, Texts::NoOperator));
    setValue(m_key, key.isEmpty() ? text(Texts::NoKey) : describeKey(key));
}

void HeaderBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    painter.fillRect(rect().adjusted(0, height() - 1, 0, 0), Look::lineColor(palette()));
}
