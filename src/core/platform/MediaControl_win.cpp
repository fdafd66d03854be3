#include "platform/MediaControl_p.h"

#include <windows.h>

#include <mmsystem.h>

#include <cstddef>

using namespace Platform;

static_assert(sizeof(MediaOpenParameters) == sizeof(MCI_OPEN_PARMSW) &&
              offsetof(MediaOpenParameters, elementName) == offsetof(MCI_OPEN_PARMSW, lpstrElementName));
static_assert(sizeof(MediaPlayParameters) == sizeof(MCI_PLAY_PARMS));
static_assert(MediaOpen == MCI_OPEN && MediaClose == MCI_CLOSE && MediaPlay == MCI_PLAY);
static_assert(MediaNotify == MCI_NOTIFY && MediaWait == MCI_WAIT && MediaOpenElement == MCI_OPEN_ELEMENT);
static_assert(MediaNotification == MM_MCINOTIFY && MediaSuccessful == MCI_NOTIFY_SUCCESSFUL);
static_assert(MediaNotInstalled == MCIERR_DEVICE_NOT_INSTALLED);

quint32 Platform::sendMediaCommand(quint32 deviceId, quint32 command, quint32 flags, void* parameters)
{
    return mciSendCommandW(deviceId, command, flags, reinterpret_cast<DWORD_PTR>(parameters));
}

bool Platform::mediaErrorText(quint32 error, char16_t* text, quint32 capacity)
{
    return mciGetErrorStringW(error, reinterpret_cast<wchar_t*>(text), capacity);
}
