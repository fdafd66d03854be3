#include "Background.h"

#include "support/BoolSetting.h"

#include <QCoreApplication>

namespace {

constexpr QLatin1String Section("mainwindow");
constexpr BoolSetting Wanted{Section, QLatin1String("closetotray")};
constexpr BoolSetting Told{Section, QLatin1String("closetotraytold")};

} // namespace

bool Background::isWanted()
{
    return Wanted.isSet();
}

void Background::setWanted(bool isWanted)
{
    Wanted.set(isWanted);
}

bool Background::noteHidden()
{
    const bool wasTold = Told.isSet();
    if (!wasTold)
        Told.set(true);
    return !wasTold;
}

bool Background::isStart()
{
    return QCoreApplication::arguments().contains(QLatin1String("--background"));
}
