#pragma once

#include "devices/Modem.h"
#include "qrvl.h"

#include <QByteArray>

/// Copies modems into the fixed records of the C interface. Strings that are too long are cut between
/// characters.
namespace DeviceRecord {

/// Fills the whole list; unused bytes are zero. Modems that do not fit are left out.
void fillList(const Modems& modems, QRVL_AvailableDeviceList& list);

using Encoder = QByteArray (*)(const QString&);
QByteArray inUtf8(const QString& text);
QByteArray inLocalCodePage(const QString& text);

/// Fills all `size` bytes of `buffer` with the encoded text followed by at least one zero.
void fillText(const QString& text, Encoder encode, char* buffer, int size);

} // namespace DeviceRecord
