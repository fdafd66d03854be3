#pragma once

#include <QIODevice>
#include <QString>
#include <QXmlStreamReader>

#include <functional>

class QFile;

/// Reads the XML files of the installation: opens a file, passes each start element to the format's reader and
/// logs a fault with its position. What was read before a fault is kept.
namespace XmlFile {

/// A format's log texts; the defaults suit most formats. In `missing`, `openFailed` and `done` the path replaces
/// "%s".
struct Texts
{
    const char* missing = "File %s does not exist";
    const char* openFailed = "Failed to open file %s";
    const char* error = "Error: ";    ///< precedes the reader's error text
    const char* column = ", column "; ///< separates line and column number
    const char* done = "";
};

/// Called with the reader on a start element. It may read on; reading continues from where it stops.
using ElementReader = std::function<void(QXmlStreamReader&)>;

/// Opens a file for reading, or logs whether it is missing or cannot be opened.
bool open(QFile& file, const Texts& texts, QIODevice::OpenMode mode = QIODevice::ReadOnly);

/// Reads from the current position to the next end tag `endName`, to the end or to the first fault.
/// @param onStartElement called like an ElementReader
/// @param endName        null to read to the end
template <typename OnStartElement>
void readElements(QXmlStreamReader& reader, OnStartElement onStartElement, QStringView endName = {})
{
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement)
            onStartElement(reader);
        else if (token == QXmlStreamReader::EndElement && QStringView(reader.name()) == endName)
            return;
    }
}

/// Moves to the next start element `name`.
/// @param endName an end tag of this name ends the search; null to search to the end
/// @return whether there is such an element
bool moveTo(QXmlStreamReader& reader, QStringView name, QStringView endName = {});

/// Logs the reader's fault, if it has one.
/// @param source the name of what was read
void logFault(const QXmlStreamReader& reader, const QString& source, const Texts& texts);

/// Estimates a file's number of entries, for reserving room in a table. The result is limited, so that a huge
/// file does not reserve huge memory.
/// @param usualEntrySize in bytes
int foreseenEntries(qint64 fileSize, qint64 usualEntrySize);

} // namespace XmlFile
