#include "platform/MediaControl_p.h"

#include <string_view>

quint32 Platform::sendMediaCommand(quint32, quint32, quint32, void*)
{
    return MediaNotInstalled;
}

bool Platform::mediaErrorText(quint32 error, char16_t* text, quint32 capacity)
{
    static constexpr std::u16string_view description = u"This system has no media control interface.";
    if (error != MediaNotInstalled || capacity == 0)
        return false;
    const std::size_t length = description.copy(text, capacity - 1);
    text[length] = u'\0';
    return true;
}
