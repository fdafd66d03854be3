#pragma once

#include <QIODevice>
#include <QString>
#include <QXmlStreamReader>

#include <functional>

class QFile;

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
/// @param onStartElement is called like an ElementReader
/// @param endName        null for the whole of the rest
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
/// @param endName an end tag of this name ends the search; null for none
/// @return whether there is one
bool moveTo(QXmlStreamReader& reader, QStringView name, QStringView endName = {});

/// Logs the reader's fault, if it has one.
/// @param source what was read, for the log
void logFault(const QXmlStreamReader& reader, const QString& source, const Texts& texts);

/// How many entries a file probably has, so that the table that they go into grows once. There is a limit,
/// whatever the size.
/// @param usualEntrySize in bytes, as is the file's
int foreseenEntries(qint64 fileSize, qint64 usualEntrySize);

} // namespace XmlFile
