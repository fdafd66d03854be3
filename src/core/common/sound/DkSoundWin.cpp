#include "common/DkSoundWin.h"

#include "common/Log.h"
#include "common/SafeMemory.h"
#include "platform/MediaControl_p.h"
#include "platform/WindowProcedure_p.h"

#include <QVector>

#include <algorithm>
#include <array>

QHash<unsigned int, DkSound*> DkSound::s_hashSounds;
void* DkSound::s_pPreviousProcedure = nullptr;

namespace {

enum Command { OpenCommand, PlayCommand, StopCommand, QueryCommand, CloseCommand };

constexpr quint32 OpenFlags = Platform::MediaWait | Platform::MediaOpenElement | 0x8;

unsigned int keyOf(WId window)
{
    return static_cast<unsigned int>(window);
}

template <typename Record>
void clear(Record& record, const char* function)
{
    if (!QRVL_memset(&record, sizeof record, 0, sizeof record))
        LOG_DEBUG("%s: %s: %s: %d: QRVL_memset fail ", LOG_TIME, LOG_FILE, function, __LINE__);
}

} // namespace

DkSound::DkSound(QString file)
    : m_strSoundFile(std::move(file))
{
    s_hashSounds.insert(keyOf(winId()), this);
    if (!s_pPreviousProcedure)
        s_pPreviousProcedure = Platform::windowProcedure(winId());
}

DkSound::~DkSound()
{
    Stop();
    if (m_bOpened)
        Close();
    s_hashSounds.remove(keyOf(winId()));
}

bool DkSound::Play()
{
    if (!m_bOpened)
        m_bOpened = sendString(OpenCommand);
    if (!m_bOpened)
        return false;
    Platform::setMessageHandler(winId(), &DkSound::handleMessage);
    return sendString(PlayCommand);
}

bool DkSound::Stop()
{
    if (!m_bOpened || !sendString(QueryCommand))
        return false;
    const bool result = sendString(StopCommand);
    if (m_bOpened)
        Close();
    return result;
}

bool DkSound::IsPlaying()
{
    return m_bOpened && sendString(QueryCommand);
}

void DkSound::SetSoundFile(QString const& file)
{
    m_strSoundFile = file;
}

void DkSound::Close()
{
    sendString(CloseCommand);
    m_bOpened = false;
}

void DkSound::Done()
{
    if (m_bOpened)
        Close();
    Q_EMIT finished();
}

bool DkSound::sendString(int command)
{
    switch (command) {
    case OpenCommand:
        return open(LOG_FUNCTION);
    case PlayCommand: {
        Platform::MediaPlayParameters play;
        clear(play, LOG_FUNCTION);
        play.callback = winId();
        return succeeded(
            Platform::sendMediaCommand(m_uDeviceId, Platform::MediaPlay, Platform::MediaNotify, &play),
            LOG_FUNCTION);
    }
    case CloseCommand: {
        const quint32 error = Platform::sendMediaCommand(m_uDeviceId, Platform::MediaClose, 0, nullptr);
        m_uDeviceId = 0;
        return succeeded(error, LOG_FUNCTION);
    }
    case StopCommand:
        return succeeded(0, LOG_FUNCTION);
    default:
        return m_uDeviceId != 0;
    }
}

bool DkSound::open(const char* function)
{
    Platform::MediaOpenParameters parameters;
    clear(parameters, function);
    parameters.callback = winId();
    parameters.elementName = reinterpret_cast<const char16_t*>(m_strSoundFile.utf16());
    LOG_DEBUG("%s: %s: hwnd = 0x%x", LOG_FILE, function, keyOf(winId()));
    const quint32 error = Platform::sendMediaCommand(0, Platform::MediaOpen, OpenFlags, &parameters);
    if (error == 0)
        m_uDeviceId = parameters.deviceId;
    return succeeded(error, function);
}

/// Logs the result of a command.
bool DkSound::succeeded(quint32 error, const char* function) const
{
    if (error == 0) {
        LOG_DEBUG("%s: %s: Play Return = %d ", LOG_FILE, function, 0);
        return true;
    }
    std::array<char16_t, 0x201> text; // 0x402 bytes
    clear(text, function);
    Platform::mediaErrorText(error, text.data(), 0x200);
    LOG_DEBUG("%s: %s: err(%d) mciSendCommand failed ", LOG_FILE, function, static_cast<int>(error));
    LOG_DEBUG("%s: %s: %s", LOG_FILE, function, qUtf8Printable(QString::fromUtf16(text.data())));
    return false;
}

qintptr DkSound::handleMessage(WId window, quint32 message, quintptr wParam, qintptr lParam)
{
    if (message == Platform::MediaNotification && wParam == Platform::MediaSuccessful)
        if (DkSound* const sound = s_hashSounds.value(keyOf(window)))
            sound->Done();
    return Platform::callWindowProcedure(s_pPreviousProcedure, window, message, wParam, lParam);
}
