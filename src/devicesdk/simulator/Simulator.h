#pragma once

#include "devices/Modem.h"
#include "files/WatchedFile.h"

#include <QHash>
#include <QPair>
#include <QStringList>

/// Modems that exist in a file only, see SimulatorFile. Not thread-safe.
class Simulator
{
public:
    /// The first of the files that exists counts.
    explicit Simulator(const QStringList& files);

    /// The modems as the file describes them now; none when there is no file. While the file is broken,
    /// perhaps because somebody is in the middle of writing it, these are the modems that it described
    /// before.
    const Modems& look();

private:
    void adopt(Modems modems);
    quint32 idOf(const Modem& modem);

    WatchedFile m_file;
    Modems m_modems;
    QHash<QPair<QString, QString>, quint32> m_ids; // by name and model: another model is another modem
};
