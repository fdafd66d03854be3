#include "MessageReader.h"

#include "support/Modems.h"

#include <algorithm>

MessageReader::MessageReader(QObject* parent)
    : BackgroundWork("messages", parent)
{
}

MessageReader::~MessageReader()
{
    stop();
}

void MessageReader::work()
{
    m_messages.clear();
    const Modems modems = attachedModems();
    for (const Modem& modem : modems) {
        if (!isInterruptionRequested()) // a modem may take seconds to answer
            readFrom(modem.id);
    }
    std::reverse(m_messages.begin(), m_messages.end());
    std::stable_sort(m_messages.begin(), m_messages.end(),
                     [](const Message& left, const Message& right) { return left.time > right.time; });
}

void MessageReader::readFrom(quint32 modem)
{
    const QStringList identifiers =
        modemValue(modem, QStringLiteral("messages")).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& identifier : identifiers) {
        if (isInterruptionRequested())
            return;
        const auto value = [&](const char* field) { // null if the message has been deleted in the meantime
            const QString key = QStringLiteral("message.%1.%2").arg(identifier, QLatin1String(field));
            return isInterruptionRequested() ? QString() : modemValue(modem, key);
        };
        const Message message{QStringLiteral("%1 %2").arg(modem).arg(identifier), value("sender"),
                              value("time"), value("text")};
        if (!message.text.isNull())
            m_messages.append(message);
    }
}
