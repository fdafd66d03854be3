#include "MessageWatch.h"

#include "support/Modems.h"

MessageWatch::MessageWatch(QObject* parent)
    : BackgroundWork("new messages", parent)
{
    connect(this, &QThread::finished, this, &MessageWatch::takeResult);
}

MessageWatch::~MessageWatch()
{
    stop();
}

void MessageWatch::check(bool withTexts)
{
    m_withTexts = withTexts;
    m_isOutdated = isRunning();
    if (!m_isOutdated)
        begin();
}

void MessageWatch::work()
{
    QHash<quint32, QSet<QString>> all;
    const Modems modems = attachedModems();
    for (const Modem& modem : modems) {
        const QString list = modemValue(modem.id, QStringLiteral("messages"));
        if (list.isNull())
            continue; // the modem has not read its messages yet
        const QStringList identifiers = list.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const bool isFirstSeen = !m_known.contains(modem.id);
        for (const QString& identifier : identifiers) {
            if (isInterruptionRequested())
                return;
            if (!isFirstSeen && !m_known[modem.id].contains(identifier))
                m_new.append(m_withTexts ? read(modem.id, identifier) : NewMessage());
        }
        all.insert(modem.id, QSet<QString>(identifiers.begin(), identifiers.end()));
    }
    m_known = all;
}

NewMessage MessageWatch::read(quint32 modem, const QString& message) const
{
    const auto value = [&](const char* field) {
        return modemValue(modem, QStringLiteral("message.%1.%2").arg(message, QLatin1String(field)));
    };
    return {value("sender"), value("text")};
}

void MessageWatch::takeResult()
{
    if (isRunning())
        return; // it has been started again and will emit finished() again
    const NewMessages found = std::exchange(m_new, {});
    if (m_isOutdated)
        check(m_withTexts);
    if (!found.isEmpty())
        Q_EMIT arrived(found);
}
