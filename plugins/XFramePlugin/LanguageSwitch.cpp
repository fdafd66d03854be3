#include "LanguageSwitch.h"

#include "Change/Change.h"
#include "common/CommonUtils.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QLibraryInfo>
#include <QLocale>

#include <algorithm>

static constexpr QLatin1String FilePrefix("XFramePlugin_");
static constexpr QLatin1String FileSuffix(".lang");

QVector<Language> availableLanguages()
{
    const QDir folder(CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/XFramePlugin"));
    QVector<Language> languages;
    for (const QString& file : folder.entryList({FilePrefix + QLatin1Char('*') + FileSuffix}, QDir::Files)) {
        const QString code = file.mid(FilePrefix.size()).chopped(FileSuffix.size());
        languages.append({code, nameOfLanguage(code)});
    }
    std::sort(languages.begin(), languages.end(), [](const Language& left, const Language& right) {
        return left.name.localeAwareCompare(right.name) < 0;
    });
    return languages;
}

QString nameOfLanguage(const QString& code)
{
    QString name = QLocale(code).nativeLanguageName();
    if (name.isEmpty())
        return code;
    name[0] = name[0].toUpper(); // some languages write it small, but not at the start of a line
    return name;
}

LanguageSwitch::LanguageSwitch()
{
    follow();
}

LanguageSwitch::~LanguageSwitch() = default;

void LanguageSwitch::use(const QString& code)
{
    Change::SetLangName(code);
    follow();
    QCoreApplication::postEvent(QCoreApplication::instance(), new QEvent(QEvent::LanguageChange));
}

void LanguageSwitch::follow()
{
    const QLocale locale(Change::GetLangName());
    const QString folder = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
    QCoreApplication::removeTranslator(&m_qtTexts);
    if (m_qtTexts.load(locale, QStringLiteral("qtbase"), QStringLiteral("_"), folder))
        QCoreApplication::installTranslator(&m_qtTexts);
    QGuiApplication::setLayoutDirection(locale.textDirection());
}
