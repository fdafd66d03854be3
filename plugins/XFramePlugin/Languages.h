#pragma once

#include <QString>
#include <QVector>

/// A language the main window can be shown in.
struct Language
{
    QString code; ///< language and country, such as "en-us"
    QString name; ///< in the language itself, such as "Deutsch"
};

/// The languages for which the main window has a language file, sorted by name.
QVector<Language> availableLanguages();

/// A language's own name, such as "Deutsch" for "de-de"; the code itself for an unknown language.
QString nameOfLanguage(const QString& code);

/// Whether windows in this language are laid out from right to left.
Qt::LayoutDirection directionOfLanguage(const QString& code);
