#include "SplashText.h"

#include "Change/Change.h"
#include "Change/LanguageFiles.h"

#include <QFile>

namespace {

constexpr QLatin1String Plugin("XFramePlugin");

bool loadTexts(const QString& plugins, const QString& language)
{
    QFile file(LanguageFiles::path(plugins, Plugin, language));
    return file.open(QIODevice::ReadOnly | QIODevice::Text) && Change::readXmlFile(&file, Plugin);
}

} // namespace

SplashText SplashText::read(const QString& plugins)
{
    QString language = Change::GetSettingDefaultLang();
    if (language.isEmpty() || !loadTexts(plugins, language)) {
        language = LanguageFiles::Fallback;
        loadTexts(plugins, language);
    }
    const QString version = QStringLiteral(SKYLUME_VERSION);
    const QString versionText = Change::tr(QStringLiteral("IDS_SPLASH_VERSION"), Plugin);
    SplashText text;
    text.starting = Change::tr(QStringLiteral("IDS_SPLASH_STARTING"), Plugin);
    text.version = versionText.isEmpty() ? version : versionText.arg(version);
    text.direction = LanguageFiles::direction(language);
    return text;
}
