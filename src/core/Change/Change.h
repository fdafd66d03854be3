#pragma once

#include "skylume_global.h"

#include <QHash>
#include <QString>

class QApplication;
class QIODevice;
class QKeySequence;
class QMutex;

/// Guards Change::m_languageHash. It is not recursive: the operations that are documented to take it must not
/// be called by a thread that holds it.
extern SKYLUME_EXPORT QMutex g_mutex;

/// What a skin is asked for. The states are carried through to the skin operations and select nothing there.
enum _enStyleState { enStyleNormal, enStyleMini };

/// The language of the application, the texts of every plugin and the skin. All operations are static.
///
/// A plugin's texts are in one file per language, plugins/NAME/NAME_LANGUAGE.lang below the installation
/// ("plugins/XFramePlugin/XFramePlugin_en-us.lang"): XML, of which every element "item" at any depth is a
/// text, with the attribute "name" as its identifier. In a text "\t", a backslash and a letter, stands for 12
/// blanks; "\n", "\r", "\v" and "\f" are left out. Of several items with one identifier the last one counts.
///
/// A text may end with a keyboard shortcut: "Save (Ctrl+S)", "Delete Del". The setting "EnableShortCut" of
/// the section "system" takes shortcuts away when it is "false".
///
/// Texts may be asked for by any thread, and the language may be switched at the same time. The operations
/// that read files without taking the lock are for the start and for callers that hold it.
class SKYLUME_EXPORT Change
{
public:
    // ---- Texts

    /// A text of a plugin in the current language. Any thread; takes the lock.
    /// @param id     the text's identifier, compared with exact case
    /// @param plugin the plugin's name; its file is read when the text is not there yet, every time
    /// @return empty when the plugin has no such text
    static QString tr(QString const& id, QString const& plugin);

    /// Splits a text of a plugin into label and shortcut. Any thread; takes the lock. Reads no file: the
    /// plugin's texts have to be loaded already, by LoadLangFile() or by the other tr().
    /// @param text receives the label, with the blanks before the shortcut; the whole text when it has no
    ///             shortcut; the bare shortcut, without brackets, when it is one that is not understood
    /// @param key  receives the shortcut: the sum of the keys Ctrl, Strg, Alt, Shift, Del, F2 and A to Z that
    ///             it names, whatever the case; empty when there is none
    /// @return whether the text has a shortcut
    static bool tr(QString const& id, QString const& plugin, QString& text, QKeySequence& key);

    /// A text of a plugin, for use during the start: as tr(), but when a file has to be read, it is the one
    /// of the active language of the settings, which becomes the current one.
    static QString Stratup_tr(QString const& id, QString const& plugin);

    /// Where the shortcut in a text begins. The words sought are those of the current language.
    /// @return a position greater than 0; when there is none, -1 or 0
    static int FindControlKeyInLangString(QString const& text);

    // ---- Language files: these do not take the lock

    /// Loads a plugin's texts for the current language. Texts that the file lacks stay as they were.
    /// @return whether the plugin has a file for it and it could be opened
    static bool LoadLangFile(QString const& plugin);

    /// Makes the active language of the settings current and loads a plugin's texts for it.
    static void StartupLoadLangFile(QString const& plugin);

    /// Reads texts of a plugin from an open device. What comes before a fault in the XML is kept.
    /// @param device not taken over; null is refused
    /// @return false for null, otherwise true
    static bool readXmlFile(QIODevice* device, QString plugin);

    // ---- Language

    /// Makes a language current, loads the texts of every plugin that m_languageHash knows, and stores the
    /// language as the active one. Any thread; takes the lock.
    /// @param name language and country code such as "en-us". Plugins without a file for it keep their texts.
    static void SetLangName(QString const& name);

    /// The current language, for example "en-us". Any thread, with or without the lock.
    static QString GetLangName();

    /// Makes the active language of the settings current and reads whether texts keep their shortcuts.
    /// @return its name; empty when none is stored
    static QString GetSettingDefaultLang();

    /// Does nothing: SetLangName() stores the language.
    static void SetSettingDefaultLang(QString const& name);

    // ---- Skin: GUI thread only

    /// Applies a style sheet to the application and sets WinClassic as its style.
    /// @param app    null is refused
    /// @param path   the style sheet's file, in UTF-8. Its lines are joined without a separator: no comment
    ///               may reach to the end of a line.
    /// @param reload false applies the sheet that was read last again, whatever path says, and reads the file
    ///               only if there is none
    /// @return false when the file cannot be opened; the application then keeps its style sheet
    static bool ChangSkin(QApplication* app, QString const& path, _enStyleState state, bool reload);

    /// In mini mode, applies the skin that the setting "Name" of the section "MiniSkin" names: skin/NAME.qss
    /// below the installation or, when the application is laid out from right to left,
    /// skin/NAME/NAME_Arabic.qss. Without that file, and outside mini mode, the style sheet stays as it is.
    /// @param reload as in ChangSkin()
    static void LoadQss(_enStyleState state, bool reload);

    /// Does nothing.
    static void setStyleSheetStyle(QApplication* app, _enStyleState state);

    /// @return always a null text
    static QString GetSettingDefaultSkin();

    /// Does nothing.
    static void SetSettingDefaultSkin(QString name);

    /// Plugin name to the texts by their identifiers. A plugin is added when its texts are loaded or sought
    /// by an operation that would load them; what that does not find is added as an empty text. Nothing is
    /// ever removed. Hold g_mutex.
    static QHash<QString, QHash<QString, QString>> m_languageHash;
};
