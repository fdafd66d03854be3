#include "LanguageMenu.h"

#include "Change/Change.h"
#include "Languages.h"

#include <QActionGroup>

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
    for (const Language& language : availableLanguages()) {
        QAction* choice = addAction(language.name);
        choice->setCheckable(true);
        choice->setChecked(language.code == current);
        choices->addAction(choice);
        connect(choice, &QAction::triggered, this, [this, code = language.code] { Q_EMIT chosen(code); });
    }
}
