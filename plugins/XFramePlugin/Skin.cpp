#include "Skin.h"

#include "Change/Change.h"
#include "common/CommonUtils.h"

#include <QApplication>
#include <QDir>

namespace {

QString skinFolder()
{
    return CommonUtils::GetPluginLibraryPath() + QLatin1String("/skin/");
}

QString defaultSkinFile()
{
    const QString folder = skinFolder();
    const bool isMirrored = QGuiApplication::layoutDirection() == Qt::RightToLeft;
    return folder + QLatin1String(isMirrored ? "default/default_Arabic.qss" : "default.qss");
}

} // namespace

void applySkin()
{
    // Style sheets name pictures by this prefix. No string literal of this library: Qt keeps it after the unloading.
    QDir::setSearchPaths(QLatin1String("skin"), {skinFolder() + QLatin1String("default/images")});
    if (CommonUtils::IsMiniMode())
        Change::LoadQss(enStyleMini, true);
    else
        Change::ChangSkin(qApp, defaultSkinFile(), enStyleNormal, true);
}
