#include "NativeFrame.h"

void NativeFrame::attach(const QWidget&) {}

bool NativeFrame::handle(TitleBar&, void*, long*)
{
    return false;
}
