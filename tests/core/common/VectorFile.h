#pragma once

#include <QFile>
#include <QHash>
#include <QVector>

/// A case of published test vectors: values by name. The heading above it is the value of "[".
struct VectorCase : QHash<QString, QByteArray>
{
    QByteArray bytes(const char* name) const { return QByteArray::fromHex(value(name)); }
};

/// Reads the cases of a file: paragraphs of lines "NAME = value".
inline QVector<VectorCase> readVectors(const QString& path)
{
    QFile file(QStringLiteral(CIPHER_VECTORS "/") + path);
    QVector<VectorCase> cases;
    QByteArray heading;
    bool isNew = true;
    for (bool isOpen = file.open(QIODevice::ReadOnly); isOpen && !file.atEnd();) {
        const QList<QByteArray> words = file.readLine().simplified().split(' ');
        const bool isValue = words.value(1) == "=" && !words[0].startsWith('[');
        if (words[0].startsWith('['))
            heading = words[0];
        if (isValue && isNew)
            cases.append(VectorCase{{{"[", heading}}});
        if (isValue)
            cases.last().insert(words[0], words.value(2));
        isNew = !isValue;
    }
    return cases;
}
