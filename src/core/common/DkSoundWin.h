#pragma once

#include "skylume_global.h"

#include <QHash>
#include <QString>
#include <QWidget>

/// Plays a sound file and reports its end. On Windows the system's media control interface plays it, elsewhere
/// libcanberra. The widget is never shown; its native window receives the report. If the system has no sound,
/// Play() may still return true, and the sound stays open until Stop() or Close(). GUI thread only.
class SKYLUME_EXPORT DkSound : public QWidget
{
    Q_OBJECT

public:
    /// @param file path of the sound file; it is opened by Play(). WAV files can be played on every system. On
    ///             Windows use backslashes.
    explicit DkSound(QString file);

    /// Stops the sound.
    ~DkSound() override;

    /// Plays the file from its beginning, or continues it if it is open.
    /// @return false if it cannot be opened or played, which is logged
    bool Play();

    /// Stops the sound by closing the file; finished() is not emitted.
    /// @return false if the file is not open
    bool Stop();

    /// Whether the file is open: from Play() to its end, Stop() or Close().
    bool IsPlaying();

    /// Changes the file. It takes effect when Play() opens it the next time.
    void SetSoundFile(QString const& file);

    /// Closes the file.
    void Close();

    /// Closes the file and emits finished(). Called when the sound has been played to its end.
    void Done();

Q_SIGNALS:
    /// The sound has been played to its end.
    void finished();

private:
    Q_DISABLE_COPY_MOVE(DkSound)

    bool sendString(int command);
    bool open(const char* function);
    bool succeeded(quint32 error, const char* function) const;

    static qintptr handleMessage(WId window, quint32 message, quintptr wParam, qintptr lParam);

    quint32 m_uDeviceId = 0; ///< 0 while no device is open
    QString m_strSoundFile;
    bool m_bOpened = false;

    static QHash<unsigned int, DkSound*> s_hashSounds; ///< by native window
    static void* s_pPreviousProcedure;                 ///< of the windows, before handleMessage()
};
