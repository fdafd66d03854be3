#pragma once

#include <QKeySequence>
#include <QString>

#include <functional>

class QWidget;

/// A visible text of this plugin in the current language, from its language files. GUI thread.
///
/// The QString owns its characters: one that pointed into the plugin's library, as a QStringLiteral does,
/// would point nowhere in another library that still holds it after unloading.
/// @param id the text's identifier
/// @return empty when the plugin has no such text; skylume-lang finds those
QString text(const char* id);

/// The name of this plugin. The library keeps the names that it is asked for, beyond the life of this one: do
/// not ask it with literals.
QString thisPlugin();

/// What stands on a menu entry or button, and the shortcut that triggers it.
struct Caption
{
    QString text;
    QKeySequence shortcut; ///< empty when there is none
};

/// A text of this plugin, split into words and shortcut.
Caption caption(const char* id);

/// Gives an action or button its text and shortcut.
template <typename Trigger>
void setCaption(Trigger* trigger, const char* id)
{
    const Caption parts = caption(id);
    trigger->setText(parts.text);
    trigger->setShortcut(parts.shortcut); // after the text, which may set one of its own
}

/// Runs a function that sets texts, now and whenever the language changes, as long as the widget exists.
void keepTranslated(QWidget* widget, std::function<void()> setTexts);
