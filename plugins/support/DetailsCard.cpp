#include "support/DetailsCard.h"

#include "support/Page.h"

#include <QVBoxLayout>

#include <algorithm>
#include <tuple>

namespace {

constexpr QChar Bullet(0x2022);
constexpr int Bullets = 8; ///< says nothing about the length of what they hide

} // namespace

bool operator==(const Detail& left, const Detail& right)
{
    return std::tie(left.caption, left.value, left.isPrivate) ==
           std::tie(right.caption, right.value, right.isPrivate);
}

DetailsCard::DetailsCard(QWidget* parent)
    : QWidget(parent)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    hide();
}

void DetailsCard::showDetails(const QString& title, const QVector<Detail>& details)
{
    QVector<Detail> known;
    std::copy_if(details.begin(), details.end(), std::back_inserter(known),
                 [](const Detail& detail) { return !detail.value.isEmpty(); });
    if (title == m_title && known == m_details)
        return; // the user may be selecting a value
    m_title = title;
    m_details = known;
    rebuild();
}

void DetailsCard::setRevealed(bool isRevealed)
{
    if (isRevealed == m_isRevealed)
        return;
    m_isRevealed = isRevealed;
    rebuild();
}

QString DetailsCard::plainText() const
{
    if (m_details.isEmpty())
        return {};
    QString text = m_title + QLatin1Char('\n');
    for (const Detail& detail : m_details)
        text += detail.caption + QStringLiteral(": ") + detail.value + QLatin1Char('\n');
    return text;
}

void DetailsCard::rebuild()
{
    delete m_card;
    m_card = new Card(m_title);
    for (const Detail& detail : qAsConst(m_details))
        m_card->addRow(detail.caption,
                       detail.isPrivate && !m_isRevealed ? QString(Bullets, Bullet) : detail.value);
    layout()->addWidget(m_card);
    m_card->show(); // now; the layout would do it later
    setVisible(!m_details.isEmpty());
}
