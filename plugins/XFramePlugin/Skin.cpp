#include "Skin.h"

#include "Change/Change.h"
#include "common/CommonUtils.h"

#include <QApplication>

namespace {

QString defaultSkinFile()
{
    const QString folder = CommonUtils::GetPluginLibraryPath() + QLatin1String("/skin/");
    const bool isMirrored = QGuiApplication::layoutDirection() == Qt::RightToLeft;
    return folder + QLatin1String(isMirrored ? "default/default_Arabic.qss" : "default.qss");
}

} // namespace

void applySkin()
{
    if (CommonUtils::IsMiniMode())
        Change::LoadQss(enStyleMini, true);
    else
        Change::ChangSkin(qApp, defaultSkinFile(), enStyleNormal, true);
}
