#pragma once

#include <QString>
#include <QXmlStreamReader>

namespace XmlFile {

/// Reads the element that the reader is on, up to its end tag.
///
/// QXmlStreamReader::readElementText(IncludeChildElements) calls itself for every nested element, so deeply
/// nested input exhausts the stack. This function counts instead. Without that flag, readElementText() refuses
/// nested elements or omits their text.
/// @param onChild called with the reader on each nested start element; must not read on
/// @return the element's text including that of nested elements; what was read so far after a fault
template <typename OnChild>
QString readNestedText(QXmlStreamReader& reader, OnChild onChild)
{
    QString text;
    int depth = 1;
    while (depth > 0 && !reader.atEnd()) {
        reader.readNext();
        if (reader.isCharacters() || reader.isEntityReference()) {
            text += reader.text();
        } else if (reader.isEndElement()) {
            --depth;
        } else if (reader.isStartElement()) {
            ++depth;
            onChild(reader);
        }
    }
    return text;
}

} // namespace XmlFile
