#pragma once

#include <QIODevice>
#include <QString>

#include <functional>

class QFile;
class QXmlStreamReader;

/// The way every XML file of the installation is read: open or report, hand each start element to the
/// format's reader, log a fault with its place. What was read before a fault stays in force.
namespace XmlFile {

/// What a file format says in the log, by default what most say. The first two and the last take the path as
/// "%s".
struct Texts
{
    const char* missing = "File %s does not exist";
    const char* openFailed = "Failed to open file %s";
    const char* error = "Error: ";    ///< stands before the reader's error text
    const char* column = ", column "; ///< stands between line and column number
    const char* done = "";
};

/// Called with the reader on a start element. It may read on; reading goes on behind wherever it stops.
using ElementReader = std::function<void(QXmlStreamReader&)>;

/// Reads a file to its end or to its first fault.
/// @return whether the file could be opened
bool read(const QString& path, const Texts& texts, const ElementReader& onStartElement);

// ---- The steps of read(), for formats that say more or less in between

/// Opens a file for reading, or logs why that is not possible.
bool open(QFile& file, const Texts& texts, QIODevice::OpenMode mode = QIODevice::ReadOnly);

/// Reads on from wherever the reader is, to the next end tag `endName`, to the end or to the first fault.
/// @param endName null for the whole of the rest
void readElements(QXmlStreamReader& reader, const ElementReader& onStartElement, QStringView endName = {});

/// Logs the reader's fault, if it has one.
/// @param source what was read, for the log
void logFault(const QXmlStreamReader& reader, const QString& source, const Texts& texts);

} // namespace XmlFile
