#pragma once

#include "backends/simulator/SimulatorFile.h"
#include "files/IniDocument.h"
#include "qrvl.h"

#include <QString>

/// The modem of a request, in the simulator's file.
class FileModem
{
public:
    FileModem(const QString& name, IniDocument& document)
        : m_name(name)
        , m_section(SimulatorFile::sectionOf(name))
        , m_document(document)
    {
    }

    const QString& name() const { return m_name; }
    QString value(const char* key, const QString& fallback = {}) const
    {
        const QString* const found = m_document.find(m_section, QLatin1String(key));
        return found && !found->isEmpty() ? *found : fallback;
    }
    int number(const char* key, int fallback) const { return value(key, QString::number(fallback)).toInt(); }
    void set(const char* key, const QString& value) { m_document.set(m_section, QLatin1String(key), value); }
    void set(const char* key, int value) { set(key, QString::number(value)); }

    QString sim() const
    {
        return value("sim", value("imsi").isEmpty() ? QStringLiteral("absent") : QStringLiteral("ready"));
    }
    IniDocument& document() const { return m_document; }

    /// Why nothing can be done that needs the SIM; QRVL_OK if it can.
    long simResult() const
    {
        const QString state = sim();
        if (state == QLatin1String("absent") || state == QLatin1String("error"))
            return QRVL_ERROR_NO_SIM;
        return state == QLatin1String("ready") ? QRVL_OK : QRVL_ERROR_LOCKED;
    }

private:
    QString m_name;
    QString m_section;
    IniDocument& m_document;
};
