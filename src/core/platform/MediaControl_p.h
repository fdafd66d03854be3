#pragma once

#include "skylume_global.h"

/// The media control interface (MCI), which plays sounds on Windows. Other systems have none: every command
/// fails with MediaNotInstalled there.
namespace Platform {

/// Commands for a media device, flags of their parameters, and what comes back.
enum MediaControl : quint32 {
    MediaOpen = 0x803,         ///< with MediaOpenParameters; opens a device
    MediaClose = 0x804,        ///< without parameters
    MediaPlay = 0x806,         ///< with MediaPlayParameters
    MediaNotify = 0x1,         ///< flag: send MediaNotification to the callback window at the end
    MediaWait = 0x2,           ///< flag: return when the command is done
    MediaOpenElement = 0x200,  ///< flag: elementName is set
    MediaNotification = 0x3B9, ///< window message; its wParam says how the command ended
    MediaSuccessful = 1,       ///< that wParam when the sound was played to its end
    MediaNotInstalled = 306,   ///< error: there is no such device
};

/// The interface's own record for MediaOpen; set all of it to zero first. Texts are UTF-16 and
/// zero-terminated.
struct MediaOpenParameters
{
    quintptr callback; ///< native window for the notification
    quint32 deviceId;  ///< set by the call; means nothing when that failed
    const char16_t* deviceType;
    const char16_t* elementName; ///< path of the sound file
    const char16_t* alias;
};

/// The interface's own record for MediaPlay.
struct MediaPlayParameters
{
    quintptr callback; ///< native window for the notification
    quint32 from;
    quint32 to;
};

/// Sends a command to a media device.
/// @param deviceId   0 for MediaOpen, else what that returned
/// @param command    one of the commands above
/// @param flags      flags above, or those of the interface's own documentation
/// @param parameters record that belongs to the command; null for MediaClose
/// @return 0, or the interface's error number for mediaErrorText().
/// A device belongs to the thread that opened it: GUI thread. Without MediaWait the call returns at once.
SKYLUME_EXPORT quint32 sendMediaCommand(quint32 deviceId, quint32 command, quint32 flags, void* parameters);

/// Describes an error of sendMediaCommand() in the user's language.
/// @param text     receives the UTF-16 text, zero-terminated, cut when it is too long
/// @param capacity room in characters, the zero included
/// @return false when the number is unknown; the text is then undefined. Any thread.
SKYLUME_EXPORT bool mediaErrorText(quint32 error, char16_t* text, quint32 capacity);

} // namespace Platform
