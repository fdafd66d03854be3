#include "SupportReport.h"

#include "PluginContainer/PluginContainer.h"
#include "PluginStatusText.h"
#include "Startup/Startup.h"
#include "common/CommonUtils.h"
#include "common/RecentLog.h"
#include "support/Text.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QSysInfo>

#include <algorithm>
#include <iterator>

namespace {

QString versions()
{
    return QStringLiteral("%1 %2, Qt %3, %4, %5")
        .arg(QGuiApplication::applicationDisplayName(), QCoreApplication::applicationVersion(),
             QLatin1String(qVersion()), QSysInfo::prettyProductName(), QSysInfo::buildCpuArchitecture());
}

QString fact(const char* caption, const QString& value)
{
    return text(caption) + QLatin1String(": ") + value;
}

/// The details have several lines for a plugin that has failed.
QString describePlugin(const PluginStatus& plugin)
{
    const QString details = describeDetails(plugin).replace(QLatin1Char('\n'), QLatin1String("; "));
    return QStringLiteral("  %1: %2: %3").arg(plugin.name, describeState(plugin), details);
}

/// A log line without the end of each number that could identify the subscriber, as IMSIs and phone numbers do. The
/// first digits of an IMSI tell the network.
QString withoutSubscriber(QString line)
{
    return line.replace(QRegularExpression(QStringLiteral("([0-9]{6})[0-9]{4,}")), QStringLiteral("\\1..."));
}

} // namespace

QString supportReport(const QString& key)
{
    QStringList lines = {
        versions(),
        fact("IDS_INSTALLATION_FOLDER", QDir::toNativeSeparators(CommonUtils::GetPluginLibraryPath())),
        fact("IDS_INSTALLATION_OPERATOR", operatorInWords()),
        fact("IDS_INSTALLATION_CUSTOMISED_FOR", keyInWords(key))};
    if (const auto* container = dynamic_cast<PluginContainer*>(Startup::GetPluginContainer())) {
        const ConfigurationFaultList faults = container->GetConfigurationFaults();
        for (const ConfigurationFault& fault : faults)
            lines.append(describeFault(fault) + QLatin1String(": ") + fault.message);
        lines.append({QString(), text("IDS_PLUGINS_TITLE")});
        const PluginStatusList plugins = container->GetPluginStatus();
        for (const PluginStatus& plugin : plugins)
            lines.append(describePlugin(plugin));
    }
    lines.append({QString(), text("IDS_INSTALLATION_LOG")});
    const QStringList log = RecentLog::lines();
    std::transform(log.begin(), log.end(), std::back_inserter(lines), withoutSubscriber);
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
