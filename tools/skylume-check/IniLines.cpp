#include "IniLines.h"

#include "files/IniText.h"

#include <QFile>

#include <algorithm>

namespace {

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Text as the device service reads it.
QString textOf(const QByteArray& bytes)
{
    QString text;
    const std::string_view view(bytes.constData(), std::size_t(bytes.size()));
    IniText::read(IniText::trimmed(view), text);
    return text;
}

} // namespace

IniLines::IniLines(const QString& path)
    : m_path(path)
    , m_document(contentOf(path))
{
    QString section;
    qint64 number = 0;
    for (const QByteArray& untrimmed : m_document.toBytes().split('\n')) {
        const QByteArray line = untrimmed.trimmed();
        ++number;
        const int separator = line.indexOf('=');
        if (line.startsWith('[') && line.endsWith(']')) {
            section = textOf(line.mid(1).chopped(1));
            m_lines.append({section, {}, {}, number});
        } else if (separator > 0 && !line.startsWith('#') && !line.startsWith(';')) {
            m_lines.append({section, textOf(line.left(separator)), textOf(line.mid(separator + 1)), number});
        }
    }
}

IniLine IniLines::value(const QString& section, const QString& key) const
{
    const auto found = std::find_if(m_lines.crbegin(), m_lines.crend(), [&](const IniLine& line) {
        return line.section == section && line.key == key;
    });
    return found == m_lines.crend() ? IniLine() : *found;
}
