#pragma once

#include <QKeySequence>
#include <QString>

#include <functional>

class QWidget;

/// A string of this plugin in the current language, from its language files. Any thread. The result stays valid
/// when the plugin is unloaded.
/// @param id the identifier of the string
/// @return empty when the plugin has no such string; `skylume-lang check` reports missing strings
QString text(const char* id);

/// The name of the language files with the strings that all plugins share.
constexpr QLatin1String SharedTexts("PluginSupport");

/// A string that all plugins share, otherwise like text(). Any thread.
QString sharedText(const char* id);

/// The name of this plugin's language files, its SKYLUME_PLUGIN_NAME. Any thread.
QString thisPlugin();

/// The label of a menu entry or button, and its keyboard shortcut.
struct Caption
{
    QString text;
    QKeySequence shortcut; ///< empty when there is none
};

/// A string of this plugin, split into label and shortcut: "Call (Ctrl+D)". Any thread.
Caption caption(const char* id);

/// Gives an action or a button its label and shortcut. GUI thread.
template <typename Trigger>
void setCaption(Trigger* trigger, const char* id)
{
    const Caption parts = caption(id);
    trigger->setText(parts.text);
    trigger->setShortcut(parts.shortcut); // after the text, which may set a shortcut as well
}

/// Calls a function that sets strings: now, and whenever the language changes while the widget exists. Functions for the same
/// widget are called in the same order, and before those for its children, which they may delete. GUI thread.
///
///     keepTranslated(button, [button] { setCaption(button, "IDS_DIAL_CALL"); });
void keepTranslated(QWidget* widget, std::function<void()> setTexts);
