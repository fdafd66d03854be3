#include "common/files/XmlFile_p.h"

#include "common/Log.h"

#include <QFile>

#include <algorithm>

bool XmlFile::open(QFile& file, const Texts& texts, QIODevice::OpenMode mode)
{
    if (!file.exists()) {
        LOG_DEBUG(texts.missing, qUtf8Printable(file.fileName()));
        return false;
    }
    if (!file.open(mode)) {
        LOG_DEBUG(texts.openFailed, qUtf8Printable(file.fileName()));
        return false;
    }
    return true;
}

bool XmlFile::moveTo(QXmlStreamReader& reader, QStringView name, QStringView endName)
{
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement && QStringView(reader.name()) == name)
            return true;
        if (token == QXmlStreamReader::EndElement && QStringView(reader.name()) == endName)
            return false;
    }
    return false;
}

void XmlFile::logFault(const QXmlStreamReader& reader, const QString& source, const Texts& texts)
{
    if (!reader.hasError() || !Log::category().isDebugEnabled())
        return;
    const QString line = QLatin1String(texts.error) + reader.errorString() + QLatin1String(" in file ") +
                         source + QLatin1String(" at line ") + QString::number(reader.lineNumber()) +
                         QLatin1String(texts.column) + QString::number(reader.columnNumber());
    LOG_DEBUG("%s", qUtf8Printable(line));
}

int XmlFile::foreseenEntries(qint64 fileSize, qint64 usualEntrySize)
{
    constexpr qint64 limit = 50000;
    return static_cast<int>(std::min(fileSize / usualEntrySize, limit));
}
