#include "LanguageSwitch.h"

#include "Change/Change.h"
#include "common/CommonUtils.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QLibraryInfo>
#include <QLocale>

#include <algorithm>

namespace {

constexpr QLatin1String FilePrefix("XFramePlugin_");
constexpr QLatin1String FileSuffix(".lang");

} // namespace

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

void QtTranslator::load(const QString& code)
{
    const QLocale locale(code);
    const QString folder = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
    m_direction = locale.textDirection();
    static_cast<void>(QTranslator::load(locale, QStringLiteral("qtbase"), QStringLiteral("_"), folder));
}

QString QtTranslator::translate(const char* context, const char* source, const char* disambiguation,
                                int count) const
{
    if (qstrcmp(source, "QT_LAYOUT_DIRECTION") == 0)
        return QLatin1String(m_direction == Qt::RightToLeft ? "RTL" : "LTR");
    return QTranslator::translate(context, source, disambiguation, count);
}

LanguageSwitch::LanguageSwitch()
{
    follow();
    // There is nothing yet that would have to change.
    QCoreApplication::removePostedEvents(QCoreApplication::instance(), QEvent::LanguageChange);
}

void LanguageSwitch::use(const QString& code)
{
    Change::SetLangName(code);
    follow();
}

void LanguageSwitch::follow()
{
    QCoreApplication::removeTranslator(&m_qtTexts);
    m_qtTexts.load(Change::GetLangName());
    QCoreApplication::installTranslator(&m_qtTexts); // sends the change of language
    QGuiApplication::setLayoutDirection(m_qtTexts.direction());
}
