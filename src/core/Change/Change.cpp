// The texts of all plugins and their language.
#include "Change/Change.h"

#include "Change/CurrentLanguage_p.h"
#include "Change/Shortcut_p.h"
#include "Change/TextTable_p.h"
#include "common/CommonUtils.h"
#include "common/Log.h"
#include "common/settings/DeviceSettings_p.h"
#include "common/settings/Setting_p.h"

#include <qrvl.h>

#include <QKeySequence>
#include <QMutex>

#include <mutex>

QMutex g_mutex;
QHash<QString, QHash<QString, QString>> Change::m_languageHash;

namespace {

/// Replaces the time in some lines of the start. It is fixed and part of the log's interface.
constexpr const char* FixedTime = "10:24:16";

/// QBasicMutex locks inline, which makes a look-up a fifth faster.
using TextLocker = std::lock_guard<QBasicMutex>;

/// A text from the table. If it is missing or empty, it is looked up again after loading. Hold the lock.
template <typename Load>
QString findText(const QString& id, const QString& plugin, const Load& load)
{
    QString text = TextTable::find(id, plugin);
    LOG_DEBUG("%s: %s: langid = %s, trans = %s, plugin=%s", LOG_FILE, "tr", qUtf8Printable(id),
              qUtf8Printable(text), qUtf8Printable(plugin));
    if (text.isEmpty()) {
        TextTable::addMissing(id, plugin); // so that a change of language loads this plugin, too
        load(plugin);
        text = TextTable::find(id, plugin);
    }
    return text;
}

} // namespace

QString Change::tr(QString const& id, QString const& plugin)
{
    const TextLocker locker(g_mutex);
    return findText(id, plugin, &LoadLangFile);
}

bool Change::tr(QString const& id, QString const& plugin, QString& text, QKeySequence& key)
{
    const TextLocker locker(g_mutex);
    const QString whole = TextTable::find(id, plugin);
    const int position = CurrentLanguage::hasShortcuts() ? FindControlKeyInLangString(whole) : -1;
    text = whole;
    key = QKeySequence();
    if (position < 1)
        return false;
    const Shortcut::Keys keys = Shortcut::parse(whole.mid(position));
    text = keys.isKnown ? whole.left(position) : keys.text;
    if (keys.isKnown)
        key = QKeySequence(keys.code);
    return keys.isKnown;
}

QString Change::Stratup_tr(QString const& id, QString const& plugin)
{
    LOG_DEBUG("%s : %s : %s : Enter", FixedTime, LOG_FILE, LOG_FUNCTION);
    QString text;
    {
        const TextLocker locker(g_mutex);
        text = findText(id, plugin, &StartupLoadLangFile);
    }
    LOG_DEBUG("%s : %s : %s : Exit", FixedTime, LOG_FILE, LOG_FUNCTION);
    return text;
}

int Change::FindControlKeyInLangString(QString const& text)
{
    return Shortcut::find(text, CurrentLanguage::name());
}

void Change::StartupLoadLangFile(QString const& plugin)
{
    LOG_DEBUG("%s : %s : %s : Enter", FixedTime, LOG_FILE, LOG_FUNCTION);
    GetSettingDefaultLang();
    LoadLangFile(plugin);
    LOG_DEBUG("%s : %s : %s : Exit", FixedTime, LOG_FILE, LOG_FUNCTION);
}

void Change::SetLangName(QString const& name)
{
    const TextLocker locker(g_mutex);
    CurrentLanguage::setName(name);
    const QStringList plugins = m_languageHash.keys();
    for (const QString& plugin : plugins)
        LoadLangFile(plugin);
    Settings::ActiveLanguage.store(QLatin1Char('_') + name);
    CurrentLanguage::readShortcutSwitch();
}

QString Change::GetLangName()
{
    return CurrentLanguage::name();
}

QString Change::GetSettingDefaultLang()
{
    CurrentLanguage::readShortcutSwitch();
    QString stored;
    DeviceSettings::read(QRVL_GetSettings, Settings::ActiveLanguage, stored);
    const QString name = stored.mid(1); // without the leading underscore
    CurrentLanguage::setName(name);
    return name;
}

void Change::SetSettingDefaultLang(QString const&) {}
