#include "SeenMessages.h"

#include "common/CommonUtils.h"

#include <QCryptographicHash>
#include <QStringList>

namespace {

constexpr QLatin1String Section("messages");
constexpr int DigestSize = 8; // characters of 6 bits: no two of some thousand messages have the same

QString digest(const QString& text)
{
    const QByteArray hash = QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(hash.toBase64(QByteArray::Base64UrlEncoding).left(DigestSize));
}

QString digest(const Message& message)
{
    return digest(addressKey(message.address) + QLatin1Char('\n') + message.time);
}

} // namespace

SeenMessages::SeenMessages(const QString& imsi)
    : m_key(QLatin1String("seen.") + digest(imsi))
{
    const QStringList seen =
        CommonUtils::GetUserSettings(Section, m_key).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    m_seen = {seen.begin(), seen.end()};
}

bool SeenMessages::contains(const Message& message) const
{
    return m_seen.contains(digest(message));
}

void SeenMessages::add(const Message& message)
{
    const int before = m_seen.size();
    m_seen.insert(digest(message));
    m_isChanged |= m_seen.size() != before;
}

void SeenMessages::keepOnly(const Messages& existing)
{
    QSet<QString> digests;
    for (const Message& message : existing)
        digests.insert(digest(message));
    const int before = m_seen.size();
    m_seen &= digests;
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
