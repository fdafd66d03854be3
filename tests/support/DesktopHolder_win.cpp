// Keeps Wine's desktop open until Wine is stopped.

#include <windows.h>

int main()
{
    GetDesktopWindow();
    Sleep(INFINITE);
}
