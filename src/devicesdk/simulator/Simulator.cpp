#include "simulator/Simulator.h"

#include "Log.h"
#include "files/IniDocument.h"
#include "qrvl.h"
#include "simulator/SimulatorFile.h"

#include <algorithm>

Simulator::Simulator(const QStringList& files)
    : m_file(files)
{
}

const Modems& Simulator::look()
{
    const auto content = m_file.look();
    if (!content)
        return m_modems;
    QStringList errors;
    if (content->status == FileAccess::Content::Unreadable)
        errors.append(QStringLiteral("it cannot be read"));
    Modems modems = SimulatorFile::read(IniDocument(content->bytes), errors);
    if (errors.isEmpty())
        adopt(std::move(modems));
    else
        qCWarning(logDeviceSdk, "Simulator file %s is ignored while %s", qUtf8Printable(m_file.path()),
                  qUtf8Printable(errors.first()));
    return m_modems;
}

void Simulator::adopt(Modems modems)
{
    for (Modem& modem : modems)
        modem.id = idOf(modem);
    m_modems = std::move(modems);
    const auto attached = std::count_if(m_modems.cbegin(), m_modems.cend(),
                                        [](const Modem& modem) { return modem.state == Modem::Attached; });
    if (attached > QRVL_MAX_DEVICES)
        qCWarning(logDeviceSdk, "Simulator file %s attaches %d modems; the first %d are available",
                  qUtf8Printable(m_file.path()), int(attached), QRVL_MAX_DEVICES);
}

quint32 Simulator::idOf(const Modem& modem)
{
    const QPair<QString, QString> identity(modem.name, modem.model);
    const auto known = m_ids.constFind(identity);
    return known != m_ids.cend() ? *known : *m_ids.insert(identity, quint32(m_ids.size()) + 1);
}
