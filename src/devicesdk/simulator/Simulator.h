#pragma once

#include "devices/Modem.h"
#include "files/WatchedFile.h"

#include <QHash>
#include <QPair>
#include <QStringList>

#include <chrono>

/// Modems that exist in a file only, see SimulatorFile. Not thread-safe.
class Simulator
{
public:
    /// The first of the files that exists counts.
    explicit Simulator(const QStringList& files);

    /// The modems as the file describes them now; none when there is no file. While the file is broken,
    /// perhaps because somebody is in the middle of writing it, these are the modems that it described
    /// before. What attached modems transfer grows once a second.
    const Modems& look();

private:
    using Clock = std::chrono::steady_clock;

    void readFile();
    void adopt(Modems modems);
    quint32 idOf(const Modem& modem);
    void resumeTransfers();
    void transfer();
    void transfer(Modem& modem, quint64 seconds);

    WatchedFile m_file;
    Modems m_modems;
    QHash<QPair<QString, QString>, quint32> m_ids; // by name and model: another model is another modem
    QHash<quint32, ModemValues> m_transferred;  // by modem: bytes to add to the file's, since it was attached
    Clock::time_point m_counted = Clock::now(); // until when those are counted
};
