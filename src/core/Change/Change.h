#pragma once

#include "skylume_global.h"

#include <QHash>
#include <QString>

class QApplication;
class QIODevice;
class QKeySequence;
class QMutex;

/// Guards Change::m_languageHash. It is not recursive: a thread that holds it must not call an operation that
/// is documented to take it.
extern SKYLUME_EXPORT QMutex g_mutex;

/// State passed to the skin operations. It does not affect what they load.
enum _enStyleState { enStyleNormal, enStyleMini };

/// The application's language, the strings of all plugins, and the skin. All operations are static.
///
/// Each plugin has one file of strings per language, plugins/NAME/NAME_LANGUAGE.lang below the installation
/// ("plugins/XFramePlugin/XFramePlugin_en-us.lang"). It is XML: every element "item", at any depth, is one
/// string, identified by its attribute "name". If several items have the same identifier, the last one
/// applies. The escape sequence "\t", a backslash and a letter, becomes 12 spaces; "\n", "\r", "\v" and "\f"
/// are removed.
///
/// A string may end with a keyboard shortcut: "Save (Ctrl+S)", "Delete Del". Shortcuts are switched off if
/// the setting "EnableShortCut" of the section "system" is "false".
///
/// Any thread may look up strings, also while the language is being switched. The operations that read files
/// without taking the lock are for start-up and for callers that hold the lock.
class SKYLUME_EXPORT Change
{
public:
    // ---- Texts

    /// A string of a plugin in the current language. Any thread; takes the lock.
    /// @param id     the string's identifier, case-sensitive
    /// @param plugin the plugin's name. If the string is not in the table, the plugin's file is read, on
    ///               every call.
    /// @return empty if the plugin has no such string
    static QString tr(QString const& id, QString const& plugin);

    /// Splits a string of a plugin into label and shortcut. Any thread; takes the lock. Reads no file: load
    /// the plugin's strings first, with LoadLangFile() or the other tr().
    /// @param text receives the label, including the space before the shortcut. Without a shortcut it is the
    ///             whole string; with an unknown shortcut it is that shortcut without its brackets.
    /// @param key  receives the shortcut: the sum of the keys that it names out of Ctrl, Strg, Alt, Shift, Del,
    ///             F2 and A to Z, ignoring case; empty if there is none
    /// @return whether the string has a known shortcut
    static bool tr(QString const& id, QString const& plugin, QString& text, QKeySequence& key);

    /// A string of a plugin, for use during start-up. Like tr(), but if the string is not in the table, the
    /// active language of the settings becomes the current one before the file is read.
    static QString Stratup_tr(QString const& id, QString const& plugin);

    /// Finds the start of the shortcut in a string, using the current language's names of keys.
    /// @return a position greater than 0; -1 or 0 if there is none
    static int FindControlKeyInLangString(QString const& text);

    // ---- Language files: these do not take the lock

    /// Loads a plugin's strings for the current language. Strings that the file lacks are kept.
    /// @return whether the file exists and could be opened
    static bool LoadLangFile(QString const& plugin);

    /// Makes the active language of the settings current and loads a plugin's strings for it.
    static void StartupLoadLangFile(QString const& plugin);

    /// Reads a plugin's strings from an open device. Strings before a fault in the XML are kept.
    /// @param device the caller keeps ownership
    /// @return false if the device is null, otherwise true
    static bool readXmlFile(QIODevice* device, QString plugin);

    // ---- Language

    /// Makes a language current, loads it for every plugin in m_languageHash, and stores it as the active
    /// language. Any thread; takes the lock.
    /// @param name language and country code such as "en-us". Plugins without a file for it keep their
    ///             strings.
    static void SetLangName(QString const& name);

    /// The current language, for example "en-us". Any thread, with or without the lock.
    static QString GetLangName();

    /// Makes the active language of the settings current and reads the shortcut switch.
    /// @return the language's name; empty if none is stored
    static QString GetSettingDefaultLang();

    /// Does nothing: SetLangName() stores the language.
    static void SetSettingDefaultLang(QString const& name);

    // ---- Skin: GUI thread only

    /// Applies a style sheet to the application. If a file is read, the application also gets a new WinClassic
    /// as its style.
    /// @param app    null has no effect
    /// @param path   the style sheet's file, in UTF-8. Its lines are joined without a separator.
    /// @param reload false applies the last sheet read again, regardless of the path; the file is read only if
    ///               there is no such sheet
    /// @return false if app is null or the file cannot be opened; the application then keeps its style sheet
    static bool ChangSkin(QApplication* app, QString const& path, _enStyleState state, bool reload);

    /// In mini mode, applies the skin named by the setting "Name" of the section "MiniSkin": skin/NAME.qss below
    /// the installation or, if the application's layout is right-to-left, skin/NAME/NAME_Arabic.qss. Without
    /// that file, and outside mini mode, the style sheet is kept.
    /// @param reload as in ChangSkin()
    static void LoadQss(_enStyleState state, bool reload);

    /// Does nothing.
    static void setStyleSheetStyle(QApplication* app, _enStyleState state);

    /// @return always a null string
    static QString GetSettingDefaultSkin();

    /// Does nothing.
    static void SetSettingDefaultSkin(QString name);

    /// Plugin name to string identifier to string. Loading a file adds its plugin and strings; a look-up that
    /// would load a file adds an empty string if there is none. Keys do not share the characters of the
    /// callers' strings. Nothing is ever removed. Hold g_mutex.
    static QHash<QString, QHash<QString, QString>> m_languageHash;
};
