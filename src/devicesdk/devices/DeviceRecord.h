#pragma once

#include "devices/Modem.h"
#include "qrvl.h"

#include <QByteArray>

/// Copies modems into the fixed records of the C interface. Texts that are too long are cut at a character's
/// border.
namespace DeviceRecord {

/// Fills the whole list; bytes that hold nothing are zero. Modems beyond the record's places are left out.
void fillList(const Modems& modems, QRVL_AvailableDeviceList& list);

using Encoder = QByteArray (*)(const QString&);
QByteArray inUtf8(const QString& text);
QByteArray inLocalCodePage(const QString& text);

/// Fills the `size` bytes of `buffer` with the encoded text and zeros, at least one.
void fillText(const QString& text, Encoder encode, char* buffer, int size);

} // namespace DeviceRecord
