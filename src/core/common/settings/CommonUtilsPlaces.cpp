#include "common/CommonUtils.h"

#include "common/Log.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QUrl>

#include <algorithm>
#include <array>

QString CommonUtils::GetPluginLibraryPath()
{
    const QString path = QCoreApplication::applicationDirPath();
    LOG_DEBUG("%s: %s: %s: other os plugin folder is %s", LOG_TIME, LOG_FILE, LOG_FUNCTION,
              qUtf8Printable(path));
    return path;
}

bool CommonUtils::OpenUrl(QString target)
{
    static constexpr std::array<QLatin1String, 3> localFileEndings{
        QLatin1String("pdf"), QLatin1String("html"), QLatin1String("htm")};
    const bool isLocalFile = std::any_of(localFileEndings.begin(), localFileEndings.end(),
                                         [&target](QLatin1String ending) { return target.endsWith(ending); });
    const QUrl url = isLocalFile ? QUrl::fromLocalFile(target) : QUrl(target);
    LOG_DEBUG("the url is : %s", qUtf8Printable(url.toString()));
    return QDesktopServices::openUrl(url);
}
