#include "LanguageMenu.h"

#include "Change/Change.h"
#include "Change/LanguageFiles.h"
#include "common/CommonUtils.h"
#include "support/Text.h"

#include <QActionGroup>

#include <algorithm>

QStringList availableLanguages()
{
    QStringList codes = LanguageFiles::languages(
        CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins"), thisPlugin());
    std::sort(codes.begin(), codes.end(), [](const QString& left, const QString& right) {
        return LanguageFiles::ownName(left).localeAwareCompare(LanguageFiles::ownName(right)) < 0;
    });
    return codes;
}

LanguageMenu::LanguageMenu(QWidget* parent)
    : QMenu(parent)
{
    // Every time, because language files may have been added or removed.
    connect(this, &QMenu::aboutToShow, this, &LanguageMenu::fill);
}

void LanguageMenu::fill()
{
    clear();
    auto* choices = new QActionGroup(this);
    connect(this, &QMenu::aboutToHide, choices, &QObject::deleteLater);
    const QString current = Change::GetLangName();
    for (const QString& code : availableLanguages()) {
        QAction* choice = addAction(LanguageFiles::ownName(code));
        choice->setCheckable(true);
        choice->setChecked(code == current);
        choices->addAction(choice);
        connect(choice, &QAction::triggered, this, [this, code] { Q_EMIT chosen(code); });
    }
}
