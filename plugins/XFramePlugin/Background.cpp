#include "Background.h"

#include "common/CommonUtils.h"

#include <QCoreApplication>

namespace {

constexpr QLatin1String Section("mainwindow");
constexpr QLatin1String WantedKey("closetotray");
constexpr QLatin1String ToldKey("closetotraytold");
constexpr QLatin1String IsSet("true");

} // namespace

bool Background::isWanted()
{
    return CommonUtils::GetSettings(Section, WantedKey) == IsSet;
}

void Background::setWanted(bool isWanted)
{
    CommonUtils::SetSettings(Section, WantedKey, isWanted ? IsSet : QLatin1String("false"));
}

bool Background::noteHidden()
{
    const bool wasTold = CommonUtils::GetSettings(Section, ToldKey) == IsSet;
    if (!wasTold)
        CommonUtils::SetSettings(Section, ToldKey, IsSet);
    return !wasTold;
}

bool Background::isStart()
{
    return QCoreApplication::arguments().contains(QLatin1String("--background"));
}
