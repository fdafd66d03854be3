#include "SeenMessages.h"

#include "common/CommonUtils.h"

#include <QCryptographicHash>
#include <QStringList>

namespace {

constexpr QLatin1String Section("messages");
constexpr int DigestSize = 8; // characters of 6 bits: collisions are unlikely among thousands of messages
constexpr int MostForgotten = 100; // digests of deleted messages

QString digest(const QString& text)
{
    const QByteArray hash = QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(hash.toBase64(QByteArray::Base64UrlEncoding).left(DigestSize));
}

} // namespace

SeenMessages::SeenMessages(const QString& imsi)
    : m_key(QLatin1String("seen.") + digest(imsi))
{
    const QStringList seen =
        CommonUtils::GetUserSettings(Section, m_key).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    m_seen = {seen.begin(), seen.end()};
}

QString SeenMessages::markOf(const Message& message)
{
    // Without a time, the text tells messages of a sender apart.
    const QString& what = message.time.isEmpty() ? message.text : message.time;
    return digest(addressKey(message.address) + QLatin1Char('\n') + what);
}

void SeenMessages::add(const Message& message)
{
    const int before = m_seen.size();
    m_seen.insert(message.mark);
    m_isChanged |= m_seen.size() != before;
}

void SeenMessages::keepOnly(const Messages& existing)
{
    if (m_seen.size() <= existing.size() + MostForgotten)
        return;
    QSet<QString> marks;
    for (const Message& message : existing)
        marks.insert(message.mark);
    const int before = m_seen.size();
    m_seen &= marks;
    m_isChanged |= m_seen.size() != before;
}

void SeenMessages::save()
{
    if (!m_isChanged)
        return;
    QStringList seen = m_seen.values();
    seen.sort(); // the same set is the same value
    CommonUtils::SetSettings(Section, m_key, seen.join(QLatin1Char(' ')));
    m_isChanged = false;
}
