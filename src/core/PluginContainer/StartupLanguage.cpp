// The first-run mark and the start-up language.
#include "PluginContainer/PluginContainer.h"

#include "PluginContainer/LanguageChoice_p.h"
#include "PluginContainer/PluginContainer_p.h"
#include "common/CommonUtils.h"
#include "common/Log.h"
#include "common/files/XmlFile_p.h"
#include "common/settings/DeviceSettings_p.h"
#include "common/settings/Setting_p.h"
#include "platform/LanguageId_p.h"

#include <qrvl.h>

#include <QFile>
#include <QLocale>
#include <QSettings>
#include <QXmlStreamReader>

namespace {

/// Reads the item that the reader is on.
LanguageInfoEx readLanguage(QXmlStreamReader& item)
{
    const QXmlStreamAttributes attributes = item.attributes();
    const auto text = [&attributes](const char* name) {
        return attributes.value(QLatin1String(name)).toString();
    };
    const QString shortName = QLatin1Char('_') + item.readElementText();
    return {text("id"), text("lang"), shortName, text("maccode"), text("linuxcode")};
}

constexpr QLatin1String HasRun("true");

} // namespace

bool PluginContainer::isFirstTimeStart()
{
    LOG_DEBUG("%s: %s: %s: enter", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    if (Settings::FirstRunMark.value() != HasRun) {
        LOG_DEBUG("%s: %s: %s: first time startup", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        return true;
    }
    LOG_DEBUG("%s: %s: %s: not first time startup", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    return false;
}

void PluginContainer::setRunningMark()
{
    Settings::FirstRunMark.store(HasRun);
}

void PluginContainer::setStartupLanguage()
{
    LOG_DEBUG("%s: %s: %s: enter", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    const QString adapter = GetAdapterLang();
    if (adapter.isEmpty())
        return;
    if (Settings::AdapterType.value() == adapter)
        return; // unchanged since the last start: keep what the user chose since
    if (isFirstTimeStart())
        setRunningMark();
    else
        Settings::ActiveLanguage.store(adapter);
    Settings::AdapterType.store(adapter);
}

QString PluginContainer::GetAdapterLang()
{
    QString wish;
    DeviceSettings::read(QRVL_GetIniSettings, Settings::AdapterType, wish);
    const QStringList parts = wish.split(QLatin1Char('|'));
    const bool followsSystem = parts.contains(QStringLiteral("system"));
    if (!followsSystem && !parts.contains(QStringLiteral("area")))
        return {};
    d->followsUserLocale = !followsSystem;
    QStringList installed;
    getLanguageList(installed);
    return installed.isEmpty() ? QString() : decideDefaultLanguage(installed);
}

bool PluginContainer::getLanguageList(QStringList& list)
{
    LOG_DEBUG("%s: %s: %s: enter", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    const QString path = CommonUtils::GetPluginLibraryPath() + QLatin1String("/SysConfig.dat");
    LOG_DEBUG("%s: %s: %s: sysconfig.dat path=%s", LOG_TIME, LOG_FILE, LOG_FUNCTION, qUtf8Printable(path));
    QSettings file(path, QSettings::IniFormat);
    file.setIniCodec("UTF-8");
    if (file.status() != QSettings::NoError) {
        LOG_DEBUG("%s: %s: %s: load sysconfig.dat failed,", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        return false;
    }
    file.beginGroup(QStringLiteral("language"));
    const QStringList keys = file.childKeys();
    for (int i = 0; i < keys.size(); ++i) {
        list.insert(i, file.value(keys.at(i), 0).toString());
        LOG_DEBUG("%s: %s: %s: languages %d = %s", LOG_TIME, LOG_FILE, LOG_FUNCTION, i,
                  qUtf8Printable(list.at(i)));
    }
    return true;
}

bool PluginContainer::GetCurLanguageInfo(QList<LanguageInfoEx>& records)
{
    QFile file(CommonUtils::GetPluginLibraryPath() + QLatin1String("/LangAreaForShort.xml"));
    if (!XmlFile::open(file, XmlFile::Texts(), QIODevice::ReadOnly | QIODevice::Text))
        return false;
    QXmlStreamReader reader(&file);
    XmlFile::readElements(reader, [&records](QXmlStreamReader& element) {
        if (element.name() != QLatin1String("item"))
            return;
        const LanguageInfoEx language = readLanguage(element);
        if (!element.hasError()) // an item with a fault is skipped
            records.append(language);
    });
    if (reader.hasError())
        LOG_DEBUG("%s: %s: Read Error: n", LOG_FILE, LOG_FUNCTION);
    XmlFile::logFault(reader, file.fileName(), XmlFile::Texts());
    LOG_DEBUG("%s : %s: %s: Exit", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    return true;
}

QString PluginContainer::GetCurrentSystemLang()
{
    return QString::number(d->followsUserLocale ? Platform::userLanguageId() : Platform::systemLanguageId());
}

QString PluginContainer::decideDefaultLanguage(QStringList const& list)
{
    LOG_DEBUG("%s: %s: %s: enter", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    QList<LanguageInfoEx> records;
    if (!GetCurLanguageInfo(records) || records.isEmpty() || list.isEmpty())
        return LanguageChoice::fallback();
    const QString id = GetCurrentSystemLang();
    LOG_DEBUG("%s: %s: %s: cur language is %s", LOG_TIME, LOG_FILE, LOG_FUNCTION, qUtf8Printable(id));
    return getDefaultLan(LanguageChoice::candidates(records, list, id, LOG_FUNCTION), list, records);
}

QString PluginContainer::getDefaultLan(QHash<QString, QString> candidates, QStringList const& list,
                                       QList<LanguageInfoEx>& records)
{
    const QString first = list.value(0);
    LOG_DEBUG("%s: %s: %s: first language is: %s", LOG_TIME, LOG_FILE, LOG_FUNCTION, qUtf8Printable(first));
    if (candidates.isEmpty())
        return getShortLan(first, records);
    QString language = *candidates.constBegin();
    if (candidates.size() > 1) {
        const QString region = QLocale::system().name().toLower();
        LOG_DEBUG("%s: %s: %s: strCurRegion is %s", LOG_TIME, LOG_FILE, LOG_FUNCTION, qUtf8Printable(region));
        language = LanguageChoice::ofCountry(candidates, region);
    }
    LOG_DEBUG("%s: %s: %s: return lan is %s", LOG_TIME, LOG_FILE, LOG_FUNCTION, qUtf8Printable(language));
    return language;
}

QString PluginContainer::getShortLan(QString const& name, QList<LanguageInfoEx>& records)
{
    LOG_DEBUG("%s: %s: %s: long language name is: %s", LOG_TIME, LOG_FILE, LOG_FUNCTION,
              qUtf8Printable(name));
    const QString shortName = LanguageChoice::shortName(name, records);
    LOG_DEBUG("%s: %s: %s: short language name is: %s", LOG_TIME, LOG_FILE, LOG_FUNCTION,
              qUtf8Printable(shortName));
    return shortName;
}
