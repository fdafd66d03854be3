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

/// Qt's own texts in one language. Also answers Qt's question for the direction of the language.
class QtTexts : public QTranslator
{
public:
    explicit QtTexts(const QString& code);

    bool isEmpty() const override { return false; } // it always knows the direction
    QString translate(const char* context, const char* source, const char* disambiguation,
                      int count) const override;

private:
    const bool m_isRightToLeft;
};

QtTexts::QtTexts(const QString& code)
    : m_isRightToLeft(LanguageFiles::direction(code) == Qt::RightToLeft)
{
    const QString folders[] = {CommonUtils::GetPluginLibraryPath() + QLatin1String("/translations"),
                               QLibraryInfo::location(QLibraryInfo::TranslationsPath)};
    std::any_of(std::begin(folders), std::end(folders), [&](const QString& folder) {
        return load(QLocale(code), QStringLiteral("qtbase"), QStringLiteral("_"), folder);
    });
}

QString QtTexts::translate(const char* context, const char* source, const char* disambiguation,
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
    auto texts = std::make_unique<QtTexts>(code);
    // The new translator is installed before the old one is removed: without any, Qt would lay out the
    // windows from left to right for a moment.
    QCoreApplication::installTranslator(texts.get());
    m_qtTexts = std::move(texts);
    QGuiApplication::setLayoutDirection(LanguageFiles::direction(code));
}
