#pragma once

#include "Server.h"

#include <QByteArray>
#include <QHash>
#include <QPair>
#include <QString>
#include <QTemporaryDir>

#include <csignal>

/// A PulseAudio server for the sounds of this process, without a sound card: its only output is a null sink. All
/// that is played is recorded from the sink's monitor. Event sounds are switched off, as the user of a desktop may
/// have done. Unix only.
class SoundServer
{
public:
    static constexpr int Rate = 22050; ///< samples per second of recordings and of waveFile()

    /// Points this process, and those that it starts, to the server, which does not run yet.
    SoundServer();

    /// Starts the server and the recording, and waits until both run.
    bool start();

    void kill() { m_server.crash(); }
    void freeze() { signalServer(SIGSTOP); } ///< it no longer answers
    void thaw() { signalServer(SIGCONT); }

    /// For how many seconds a tone was to be heard since the recording began.
    /// @param frequency in hertz
    double heard(int frequency);

    /// Forgets what was recorded until now.
    void forget();

    /// What the server reports about a kind of objects, such as "sink-inputs".
    QString list(const QString& kind) const;

private:
    void signalServer(int signal) const;

    QTemporaryDir m_folder;
    Server m_server;
    Server m_recorder;
    QByteArray m_recorded;

    /// By frequency: in how many windows of the recording a tone was looked for, and in how many it was found.
    QHash<int, QPair<int, int>> m_searches;
};

/// A sound file with one tone.
/// @param frequency in hertz
QByteArray waveFile(int frequency, int milliseconds);
