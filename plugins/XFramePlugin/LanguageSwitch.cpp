#include "LanguageSwitch.h"

#include "Change/Change.h"
#include "Change/LanguageFiles.h"
#include "common/CommonUtils.h"

#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <algorithm>

namespace {

/// Qt's own strings in one language. Qt also asks its translators for the direction of the language.
class QtStrings : public QTranslator
{
public:
    explicit QtStrings(const QString& code);

    bool isEmpty() const override { return false; } // it always knows the direction
    QString translate(const char* context, const char* source, const char* disambiguation,
                      int count) const override;

private:
    const bool m_isRightToLeft;
};

QtStrings::QtStrings(const QString& code)
    : m_isRightToLeft(LanguageFiles::direction(code) == Qt::RightToLeft)
{
    const QString folders[] = {CommonUtils::GetPluginLibraryPath() + QLatin1String("/translations"),
                               QLibraryInfo::location(QLibraryInfo::TranslationsPath)};
    std::any_of(std::begin(folders), std::end(folders), [&](const QString& folder) {
        return load(QLocale(code), QStringLiteral("qtbase"), QStringLiteral("_"), folder);
    });
}

QString QtStrings::translate(const char* context, const char* source, const char* disambiguation,
                             int count) const
{
    if (qstrcmp(source, "QT_LAYOUT_DIRECTION") == 0)
        return QLatin1String(m_isRightToLeft ? "RTL" : "LTR");
    return QTranslator::translate(context, source, disambiguation, count);
}

} // namespace

LanguageSwitch::LanguageSwitch()
{
    follow();
}

LanguageSwitch::~LanguageSwitch() = default;

void LanguageSwitch::use(const QString& code)
{
    Change::SetLangName(code);
    follow();
}

void LanguageSwitch::follow()
{
    const QString code = Change::GetLangName();
    auto strings = std::make_unique<QtStrings>(code);
    // Without a translator Qt would lay out the windows from left to right for a moment, so the new one is
    // installed before the old one is removed.
    QCoreApplication::installTranslator(strings.get());
    m_qtStrings = std::move(strings);
    QGuiApplication::setLayoutDirection(LanguageFiles::direction(code));
}
