#include "common/XmlFile.h"

#include "common/Log.h"

#include <QFile>
#include <QXmlStreamReader>

namespace {

void logReaderError(const QXmlStreamReader& reader, const QString& path, const XmlFile::Texts& texts)
{
    const QString line = QLatin1String(texts.error) + reader.errorString() + QLatin1String(" in file ") +
                         path + QLatin1String(" at line ") + QString::number(reader.lineNumber()) +
                         QLatin1String(texts.column) + QString::number(reader.columnNumber());
    LOG_DEBUG("%s", qUtf8Printable(line));
}

void readTokens(QXmlStreamReader& reader, const XmlFile::ElementReader& onStartElement)
{
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement())
            onStartElement(reader);
    }
}

} // namespace

bool XmlFile::read(const QString& path, const Texts& texts, const ElementReader& onStartElement)
{
    QFile file(path);
    if (!file.exists()) {
        LOG_DEBUG(texts.missing, qUtf8Printable(path));
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        LOG_DEBUG(texts.openFailed, qUtf8Printable(path));
        return false;
    }

    QXmlStreamReader reader(&file);
    readTokens(reader, onStartElement);
    if (reader.hasError() && Log::category().isDebugEnabled())
        logReaderError(reader, path, texts);
    LOG_DEBUG(texts.done, qUtf8Printable(path));
    return true;
}
