#include "PluginContainer/ConfigurationFile_p.h"

#include "common/Log.h"

#include <QFile>

namespace {

using Kind = ConfigurationFault::Kind;

} // namespace

void readConfigurationFile(const QString& path, const XmlFile::Texts& texts,
                           const XmlFile::ElementReader& onStartElement, ConfigurationFaultList& faults)
{
    QFile file(path);
    if (!XmlFile::open(file, texts)) {
        if (file.exists())
            faults.append({Kind::Unreadable, path, 0, 0, file.errorString()});
        else
            faults.append({Kind::Missing, path, 0, 0, {}});
        return;
    }
    QXmlStreamReader reader(&file);
    XmlFile::readElements(reader, onStartElement);
    XmlFile::logFault(reader, path, texts);
    if (reader.hasError())
        faults.append(
            {Kind::Malformed, path, reader.lineNumber(), reader.columnNumber(), reader.errorString()});
    LOG_DEBUG(texts.done, qUtf8Printable(path));
}
