#include "UserMessage.h"

#include <QCoreApplication>
#include <QString>

#include <windows.h>

namespace {

bool isUsable(HANDLE stream)
{
    return stream && stream != INVALID_HANDLE_VALUE && GetFileType(stream) != FILE_TYPE_UNKNOWN;
}

// A console takes UTF-16, whatever its code page; files and pipes get UTF-8.
bool write(HANDLE stream, const QString& text)
{
    DWORD written = 0;
    DWORD mode = 0;
    if (GetConsoleMode(stream, &mode))
        return WriteConsoleW(stream, text.utf16(), DWORD(text.size()), &written, nullptr);
    const QByteArray bytes = text.toUtf8();
    return WriteFile(stream, bytes.constData(), DWORD(bytes.size()), &written, nullptr);
}

// A program with windows is not attached to the console from which it was started.
bool writeToConsole(const QString& text)
{
    if (!AttachConsole(ATTACH_PARENT_PROCESS))
        return false;
    const HANDLE console =
        CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_EXISTING, 0, nullptr);
    const bool isWritten = isUsable(console) && write(console, text);
    if (isUsable(console))
        CloseHandle(console);
    FreeConsole();
    return isWritten;
}

bool print(DWORD stream, const QString& text)
{
    const HANDLE handle = GetStdHandle(stream);
    return (isUsable(handle) && write(handle, text)) || writeToConsole(text);
}

void show(DWORD stream, const QString& text, UINT icon)
{
    if (print(stream, text))
        return;
    const auto wide = [](const QString& string) {
        return reinterpret_cast<const wchar_t*>(string.utf16());
    };
    MessageBoxW(nullptr, wide(text), wide(QCoreApplication::applicationName()), MB_OK | icon);
}

} // namespace

void UserMessage::inform(const QString& text)
{
    show(STD_OUTPUT_HANDLE, text, MB_ICONINFORMATION);
}

void UserMessage::reportError(const QString& text)
{
    show(STD_ERROR_HANDLE, text, MB_ICONERROR);
}

void UserMessage::note(const QString& text)
{
    print(STD_ERROR_HANDLE, text);
}
