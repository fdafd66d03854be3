#include "platform/MediaControl_p.h"

#include "common/Log.h"
#include "platform/SoundPlayback_p.h"
#include "platform/WindowProcedure_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QObject>

#include <canberra.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <string_view>

using namespace Platform;

namespace {

/// An open sound file.
struct Device
{
    QByteArray path;
    WId window = 0;                          ///< receives the notification of the end
    std::unique_ptr<SoundPlayback> playback; ///< null while nothing is being played
};

/// All devices, by identifier. Identifiers are never used again, so a late report finds no other device.
struct Devices
{
    std::map<quint32, Device> open;
    quint32 lastId = 0;
    QObject mailbox; ///< on the GUI thread; playbacks report to it
};

/// Never deleted: playbacks may report until the process ends.
Devices& devices()
{
    static auto* const all = new Devices;
    return *all;
}

struct ErrorText
{
    quint32 error;
    std::u16string_view text;
};

constexpr ErrorText ErrorTexts[] = {
    {MediaInvalidDevice, u"This sound is not open."},
    {MediaBadCommand, u"Sounds do not know this command."},
    {MediaOutOfMemory, u"There is not enough memory to play the sound."},
    {MediaFileNotFound, u"The sound file does not exist or cannot be read."},
    {MediaInternal, u"The sound system reported an error."},
    {MediaInvalidFile, u"The file is damaged, or it is not a WAV or Ogg Vorbis file."},
    {MediaNotInstalled, u"No sound system is available."},
};

const ErrorText* find(quint32 error)
{
    const auto* const found = std::find_if(std::begin(ErrorTexts), std::end(ErrorTexts),
                                           [error](const ErrorText& entry) { return entry.error == error; });
    return found == std::end(ErrorTexts) ? nullptr : found;
}

/// The MCI error for a libcanberra error.
quint32 errorOf(int result)
{
    switch (result) {
    case CA_ERROR_OOM:
        return MediaOutOfMemory;
    case CA_ERROR_NOTFOUND:
    case CA_ERROR_ACCESS:
        return MediaFileNotFound;
    case CA_ERROR_CORRUPT:
    case CA_ERROR_TOOBIG:
    case CA_ERROR_NOTSUPPORTED:
        return MediaInvalidFile;
    case CA_ERROR_NODRIVER:
    case CA_ERROR_NOTAVAILABLE:
    case CA_ERROR_DISCONNECTED:
        return MediaNotInstalled;
    default:
        return MediaInternal;
    }
}

void logFailure(const Device& device, int result, const char* function)
{
    const quint32 error = errorOf(result);
    LOG_DEBUG("%s: %s: %s: err(%d) %s (%s)", LOG_FILE, function, device.path.constData(), int(error),
              qUtf8Printable(QString::fromUtf16(find(error)->text.data())), ca_strerror(result));
}

/// Whether a file begins like a format that libcanberra plays. libcanberra itself reports others only when playing.
/// @return an error, or 0
quint32 checkFile(const QString& path)
{
    constexpr int headerSize = 12;
    QFile file(path);
    const bool isRegular = QFileInfo(path).isFile(); // opening a pipe could block
    if (!isRegular || !file.open(QIODevice::ReadOnly))
        return MediaFileNotFound;
    const QByteArray header = file.read(headerSize);
    const bool isWave = header.startsWith("RIFF") && header.endsWith("WAVE");
    return isWave || header.startsWith("OggS") ? quint32(0) : MediaInvalidFile;
}

quint32 open(MediaOpenParameters& parameters)
{
    const QString path = QDir().absoluteFilePath(QString::fromUtf16(parameters.elementName));
    if (const quint32 error = checkFile(path))
        return error;
    parameters.deviceId = ++devices().lastId;
    devices().open[parameters.deviceId].path = QFile::encodeName(path);
    return 0;
}

/// Notifications arrive from the event loop, never during a command.
void notifyLater(WId window, MediaControl outcome, quint32 deviceId)
{
    const auto notify = [=] {
        sendMessage(window, MediaNotification, outcome, deviceId);
    };
    QMetaObject::invokeMethod(&devices().mailbox, notify, Qt::QueuedConnection);
}

/// The playback of a device has ended. It is ignored if the device has been closed in the meantime.
void takeEnd(quint32 deviceId, int result)
{
    const auto device = devices().open.find(deviceId);
    if (device == devices().open.end())
        return;
    if (result != CA_SUCCESS)
        logFailure(device->second, result, LOG_FUNCTION);
    device->second.playback.reset();
    const WId window = device->second.window;
    sendMessage(window, MediaNotification, result == CA_SUCCESS ? MediaSuccessful : MediaFailure, deviceId);
}

/// A sound that is being played continues; only the new command will report its end.
void play(quint32 deviceId, Device& device, WId window)
{
    if (device.playback)
        notifyLater(device.window, MediaSuperseded, deviceId);
    device.window = window;
    if (device.playback)
        return;
    const auto ended = [deviceId, mailbox = &devices().mailbox](int result) {
        QMetaObject::invokeMethod(
            mailbox, [=] { takeEnd(deviceId, result); }, Qt::QueuedConnection);
    };
    device.playback = std::make_unique<SoundPlayback>(device.path, ended);
}

} // namespace

quint32 Platform::sendMediaCommand(quint32 deviceId, quint32 command, quint32 flags, void* parameters)
{
    if (command == MediaOpen)
        return open(*static_cast<MediaOpenParameters*>(parameters));
    const auto device = devices().open.find(deviceId);
    if (device == devices().open.end())
        return MediaInvalidDevice;
    switch (command) {
    case MediaPlay:
        play(deviceId, device->second,
             flags & MediaNotify ? static_cast<MediaPlayParameters*>(parameters)->callback : 0);
        return 0;
    case MediaClose:
        if (device->second.playback)
            notifyLater(device->second.window, MediaAborted, deviceId);
        devices().open.erase(device);
        return 0;
    default:
        return MediaBadCommand;
    }
}

bool Platform::mediaErrorText(quint32 error, char16_t* text, quint32 capacity)
{
    const ErrorText* const found = find(error);
    if (!found || capacity == 0)
        return false;
    const std::size_t length = found->text.copy(text, capacity - 1);
    text[length] = u'\0';
    return true;
}
