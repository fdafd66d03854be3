#include "HistoryFile.h"

#include "common/Log.h"
#include "support/UserFiles.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace {

constexpr int MostBytes = 1 << 20; ///< a file has some 30 KB
constexpr int NameSize = 16;       ///< digits

QString nameFor(const QString& imsi)
{
    const QByteArray salted = "data use of " + imsi.toUtf8();
    const QByteArray digest = QCryptographicHash::hash(salted, QCryptographicHash::Sha256).toHex();
    return QString::fromLatin1(digest.left(NameSize)) + QLatin1String(".txt");
}

} // namespace

HistoryFile::HistoryFile(const QString& imsi)
    : m_path(userFilesFolder() + QLatin1String("/data-use/") + nameFor(imsi))
{
}

History HistoryFile::load()
{
    QFile file(m_path);
    if (!file.exists())
        return {};
    const bool isOpen = file.open(QIODevice::ReadOnly) && file.size() <= MostBytes;
    const QByteArray text = isOpen ? file.readAll() : QByteArray();
    m_isWritable = isOpen && file.error() == QFile::NoError;
    if (!m_isWritable) {
        complain("cannot be read", file.errorString());
        return {};
    }
    int badLines = 0;
    const History history = historyFrom(text, badLines);
    if (badLines > 0) {
        LOG_WARNING("%s: %s: %d lines are ignored", LOG_FUNCTION, qUtf8Printable(m_path), badLines);
        file.copy(m_path + QLatin1String(".damaged")); // unless there is one already
    }
    return history;
}

bool HistoryFile::save(const History& history)
{
    if (!m_isWritable)
        return false;
    QDir().mkpath(QFileInfo(m_path).path());
    const QByteArray text = textOf(history);
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        complain("cannot be written", file.errorString());
        return false;
    }
    m_hasComplained = false;
    return true;
}

void HistoryFile::complain(const char* problem, const QString& reason)
{
    if (!m_hasComplained)
        LOG_WARNING("%s: %s %s: %s", LOG_FUNCTION, qUtf8Printable(m_path), problem, qUtf8Printable(reason));
    m_hasComplained = true;
}
