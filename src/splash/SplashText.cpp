#include "SplashText.h"

#include "Change/Change.h"

#include <QFile>
#include <QLocale>

namespace {

constexpr QLatin1String Plugin("XFramePlugin");
constexpr QLatin1String FallbackLanguage("en-us");

bool loadTexts(const QString& plugins, const QString& language)
{
    QFile file(plugins + QStringLiteral("/%1/%1_%2.lang").arg(Plugin, language));
    return file.open(QIODevice::ReadOnly | QIODevice::Text) && Change::readXmlFile(&file, Plugin);
}

} // namespace

SplashText SplashText::read(const QString& plugins)
{
    QString language = Change::GetSettingDefaultLang();
    if (language.isEmpty() || !loadTexts(plugins, language)) {
        language = FallbackLanguage;
        loadTexts(plugins, language);
    }
    const QString version = QStringLiteral(SKYLUME_VERSION);
    const QString versionText = Change::tr(QStringLiteral("IDS_SPLASH_VERSION"), Plugin);
    SplashText text;
    text.starting = Change::tr(QStringLiteral("IDS_SPLASH_STARTING"), Plugin);
    text.version = versionText.isEmpty() ? version : versionText.arg(version);
    text.direction = QLocale(language).textDirection();
    return text;
}
