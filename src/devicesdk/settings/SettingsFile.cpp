#include "settings/SettingsFile.h"

#include "Log.h"
#include "files/IniDocument.h"

#include <QDateTime>
#include <QFileInfo>

using namespace std::chrono_literals;
using FileAccess::Content;

namespace {

constexpr auto LockPatience = 2s;

SettingsTable tableOf(const IniDocument& document)
{
    SettingsTable table;
    document.forEachEntry([&](const QString& section, const QString& key, const QString& value) {
        table.set(section, key, value);
    });
    return table;
}

QString writeProblem(const QString& reason)
{
    return QStringLiteral("cannot be written (%1); changes are kept in memory").arg(reason);
}

} // namespace

SettingsFile::SettingsFile(const QString& path)
    : m_path(path)
    , m_file(path.isEmpty() ? QStringList() : QStringList(path))
    , m_lock(path)
{
}

std::optional<SettingsTable> SettingsFile::look()
{
    const std::optional<Content> content = m_file.look();
    if (!content)
        return {};
    m_isReadable = content->status != Content::Unreadable;
    if (!m_isReadable) {
        warnOnce(QStringLiteral("cannot be read"));
        return {};
    }
    const IniDocument document(content->bytes);
    m_isBroken = !document.brokenLines().isEmpty();
    if (m_isBroken)
        qCWarning(logDeviceSdk, "Settings file %s: %d lines are broken, the first is line %d",
                  qUtf8Printable(m_path), document.brokenLines().size(), document.brokenLines().first());
    return tableOf(document);
}

std::optional<SettingsTable> SettingsFile::write(const SettingsChanges& changes)
{
    if (!m_lock.lock(LockPatience)) {
        warnOnce(writeProblem(m_lock.errorString()));
        return {};
    }
    const std::optional<IniDocument> document = writeLocked(changes);
    m_lock.unlock();
    if (!document)
        return {};
    if (!m_problem.isEmpty())
        qCWarning(logDeviceSdk, "Settings file %s can be written again", qUtf8Printable(m_path));
    m_problem.clear();
    m_isReadable = true;
    m_isBroken = false;
    return tableOf(*document);
}

std::optional<IniDocument> SettingsFile::writeLocked(const SettingsChanges& changes)
{
    const Content content = FileAccess::read(m_path);
    if (content.status == Content::Unreadable) {
        warnOnce(QStringLiteral("cannot be read"));
        return {};
    }
    IniDocument document(content.bytes);
    if (!document.brokenLines().isEmpty()) {
        if (!putAside(content.bytes))
            return {};
        document.dropBrokenLines();
    }
    for (const auto& [name, value] : changes)
        document.set(name.first, name.second, value);
    const QByteArray bytes = document.toBytes();
    QString error;
    if (bytes != content.bytes && !FileAccess::replace(m_path, bytes, error)) {
        warnOnce(writeProblem(error));
        return {};
    }
    m_file.remember(bytes);
    return document;
}

bool SettingsFile::putAside(const QByteArray& content)
{
    const QString time = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-hhmmss-zzz"));
    const QString copy = m_path + QStringLiteral(".corrupt-") + time;
    QString error;
    if (!FileAccess::replace(copy, content, error)) {
        warnOnce(writeProblem(error));
        return false;
    }
    qCWarning(logDeviceSdk,
              "Settings file %s was damaged; it was kept as %s, its readable entries stay in use",
              qUtf8Printable(m_path), qUtf8Printable(copy));
    return true;
}

void SettingsFile::warnOnce(const QString& problem)
{
    if (m_problem.isEmpty())
        qCWarning(logDeviceSdk, "Settings file %s %s", qUtf8Printable(m_path), qUtf8Printable(problem));
    m_problem = problem;
}
