#include "Skin.h"

#include "Change/Change.h"
#include "DarkColours.h"
#include "common/CommonUtils.h"
#include "support/BoolSetting.h"

#include <QApplication>
#include <QDir>
#include <QToolTip>

#include <tuple>

namespace {

constexpr QLatin1String UsualSkin("default");
constexpr QLatin1String CompactSection("MiniSkin");
constexpr QLatin1String CompactKey("Name");
constexpr BoolSetting Dark{QLatin1String("mainwindow"), QLatin1String("dark")};

QString skinFolder()
{
    return CommonUtils::GetPluginLibraryPath() + QLatin1String("/skin/");
}

QString usualSkinFile()
{
    const bool isMirrored = QGuiApplication::layoutDirection() == Qt::RightToLeft;
    return skinFolder() + QLatin1String(isMirrored ? "default/default_Arabic.qss" : "default.qss");
}

/// As they were when a look was applied last.
QPalette& desktopColours()
{
    static QPalette colours;
    return colours;
}

void applyColours(const WindowLook& look)
{
    static const QPalette desktopToolTips = QToolTip::palette();
    QApplication::setPalette(QPalette()); // back to those of the desktop, which may have changed
    desktopColours() = QApplication::palette();
    if (look.isDark)
        QApplication::setPalette(darkColours());
    QToolTip::setPalette(look.isDark ? darkColours() : desktopToolTips);
}

} // namespace

bool operator==(const WindowLook& left, const WindowLook& right)
{
    const auto fields = [](const WindowLook& look) {
        return std::tie(look.skin, look.isCompact, look.isDark);
    };
    return fields(left) == fields(right);
}

QVector<WindowLook> allLooks()
{
    QVector<WindowLook> looks = {{UsualSkin, false, false}, {UsualSkin, false, true}};
    const QDir folder(skinFolder());
    for (const QFileInfo& file : folder.entryInfoList({QStringLiteral("*.qss")}, QDir::Files, QDir::Name))
        if (file.completeBaseName() != UsualSkin)
            looks.append({file.completeBaseName(), true, false});
    return looks;
}

WindowLook currentLook()
{
    if (CommonUtils::IsMiniMode())
        return {CommonUtils::GetSettings(CompactSection, CompactKey), true, false};
    return {UsualSkin, false, Dark.isSet()};
}

void storeLook(const WindowLook& look)
{
    if (look.isCompact)
        CommonUtils::SetSettings(CompactSection, CompactKey, look.skin);
    else
        Dark.set(look.isDark);
}

QPalette coloursOf(const WindowLook& look)
{
    return look.isDark ? darkColours() : desktopColours();
}

void applySkin()
{
    // Style sheets name pictures by this prefix. No string literal of this library: Qt keeps it after the unloading.
    QDir::setSearchPaths(QLatin1String("skin"), {skinFolder() + QLatin1String("default/images")});
    const WindowLook look = currentLook();
    applyColours(look);
    if (look.isCompact)
        Change::LoadQss(enStyleMini, true);
    else
        Change::ChangSkin(qApp, usualSkinFile(), enStyleNormal, true);
}
