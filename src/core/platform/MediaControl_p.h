#pragma once

#include "skylume_global.h"

/// The media control interface (MCI), which plays sounds on Windows. Elsewhere the same commands play WAV and
/// Ogg Vorbis files through libcanberra; they return the same error numbers and send the same notifications, which
/// arrive through WindowProcedure_p.h.
namespace Platform {

/// Commands, flags, and results.
enum MediaControl : quint32 {
    MediaOpen = 0x803,         ///< opens a device; takes MediaOpenParameters
    MediaClose = 0x804,        ///< takes no parameters
    MediaPlay = 0x806,         ///< takes MediaPlayParameters
    MediaNotify = 0x1,         ///< flag: send MediaNotification to the callback window when the command ends
    MediaWait = 0x2,           ///< flag: return only when the command has ended
    MediaOpenElement = 0x200,  ///< flag: elementName is set
    MediaNotification = 0x3B9, ///< window message; its wParam is the outcome of the command
    MediaSuccessful = 1,       ///< outcome: the sound was played to its end
    MediaSuperseded = 2,       ///< outcome: another MediaPlay will report the end
    MediaAborted = 4,          ///< outcome: the device was closed
    MediaFailure = 8,          ///< outcome: the sound could not be played
    MediaInvalidDevice = 257,  ///< error: no such device is open
    MediaBadCommand = 261,     ///< error: unknown command
    MediaOutOfMemory = 264,    ///< error
    MediaFileNotFound = 275,   ///< error: the file does not exist or cannot be read
    MediaInternal = 277,       ///< error of the sound system
    MediaInvalidFile = 296,    ///< error: not a sound file, or a damaged one
    MediaNotInstalled = 306,   ///< error: no such device; there is no sound system
};

/// Parameters of MediaOpen, laid out as MCI_OPEN_PARMSW. Zero-initialise it. Strings are zero-terminated UTF-16.
struct MediaOpenParameters
{
    quintptr callback; ///< native window for the notification
    quint32 deviceId;  ///< set by the call if it succeeds
    const char16_t* deviceType;
    const char16_t* elementName; ///< path of the sound file
    const char16_t* alias;
};

/// Parameters of MediaPlay, laid out as MCI_PLAY_PARMS.
struct MediaPlayParameters
{
    quintptr callback; ///< native window for the notification
    quint32 from;
    quint32 to;
};

/// Sends a command to a media device. Call it on the GUI thread: a device belongs to the thread that opened it.
/// Without MediaWait the call returns immediately. A sound system that is missing or does not answer is then
/// reported by the notification MediaFailure only.
/// @param deviceId   0 for MediaOpen, otherwise the deviceId that MediaOpen returned
/// @param command    one of the commands above
/// @param flags      flags above, or others that MCI defines
/// @param parameters parameters of the command; null for MediaClose
/// @return 0, or an MCI error number; see mediaErrorText()
SKYLUME_EXPORT quint32 sendMediaCommand(quint32 deviceId, quint32 command, quint32 flags, void* parameters);

/// Describes an error of sendMediaCommand(), on Windows in the user's language. May be called from any thread.
/// @param text     receives a zero-terminated UTF-16 string, truncated if necessary; undefined on failure
/// @param capacity size of the buffer in characters, including the terminating zero
/// @return false for an unknown error number
SKYLUME_EXPORT bool mediaErrorText(quint32 error, char16_t* text, quint32 capacity);

} // namespace Platform
