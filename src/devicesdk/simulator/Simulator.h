#pragma once

#include "devices/Modem.h"
#include "files/FileWatch.h"
#include "files/KnownFile.h"

#include <QHash>
#include <QPair>
#include <QStringList>

/// Modems that exist only in a file, see SimulatorFile. Not thread-safe, except for wake().
class Simulator
{
public:
    using Clock = Counter::Clock;

    /// The first of the files that exists is used.
    explicit Simulator(const QStringList& files);

    /// The modems that the file describes now; none if there is no file. While the file is broken, perhaps
    /// because it is being edited, the modems stay as they were.
    const Modems& look();

    /// Blocks until the modems may have changed, wake() is called or it is `until`. Returns true in the first
    /// case.
    bool wait(Clock::time_point until) { return m_watch.wait(until); }
    void wake() { m_watch.wake(); }

private:
    void adopt(Modems modems);
    quint32 idOf(const Modem& modem);
    void startCounters(Modem& modem, Clock::time_point now) const;

    FileWatch m_watch; // first, so that no change after the first look is missed
    KnownFile m_file;
    Modems m_modems;
    QHash<QPair<QString, QString>, quint32> m_ids; // by name and model: another model is another modem
};
