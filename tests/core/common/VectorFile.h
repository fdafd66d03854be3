#pragma once

#include <QByteArray>
#include <QFile>
#include <QHash>
#include <QVector>

/// The cases of a file of published test vectors: lines "NAME = value" in paragraphs, under headings
/// "[SECTION]".
struct VectorFile
{
    struct Case
    {
        QByteArray section;
        QHash<QByteArray, QByteArray> values;

        QByteArray bytes(const char* name) const { return QByteArray::fromHex(values.value(name)); }
    };

    explicit VectorFile(const QString& path)
    {
        QFile file(QStringLiteral(CIPHER_VECTORS "/") + path);
        QByteArray section;
        bool isNew = true;
        for (bool isOpen = file.open(QIODevice::ReadOnly); isOpen && !file.atEnd();) {
            const QByteArray line = file.readLine().trimmed();
            const int equals = line.indexOf(" = ");
            if (line.startsWith('['))
                section = line;
            if (line.startsWith('#') || line.startsWith('[') || equals < 0) {
                isNew = true;
                continue;
            }
            if (isNew)
                cases.append(Case{section, {}});
            isNew = false;
            cases.last().values.insert(line.left(equals), line.mid(equals + 3));
        }
    }

    QVector<Case> cases;
};
