#pragma once

#include "PluginContainer/interfaces/ICallUIPlugin.h"
#include "common/Log.h"
#include "common/TagUnits.h"
#include "skylume_global.h"

#include <QFontMetrics>
#include <QMessageBox>
#include <QPoint>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVector>

class DkMessageBox;
class ExtendDialog;
class IDeviceMgr;
class ILayout;
class QAbstractButton;
class QDialog;
class QLabel;
class QThread;
class QWidget;

/// Storage of GetSMSSeperatorConfigValue(); prefer the operations.
extern SKYLUME_EXPORT bool gSeparator;

/// Services shared by all plugins and the core library.
///
/// All operations are static. They may be called on any thread and do not throw, and they have no side effects
/// but log lines, unless stated otherwise. Interfaces and widgets that they return belong to the plugin that
/// provides them: use them on the GUI thread, do not delete them, and do not keep them, because the plugin may
/// be unloaded.
class SKYLUME_EXPORT CommonUtils
{
public:
    // ---- Settings, stored by the device service

    /// The effective value of a setting: the user's value, otherwise the installation's default.
    /// @return empty if there is no value or reading fails (logged as a warning); supply your own default
    static QString GetSettings(QString section, QString key);

    /// Like GetSettings(), but reads the user's values only.
    static QString GetUserSettings(QString section, QString key);

    /// Stores a value for the user. The value is never logged.
    /// @return true on **failure**, false on success (kept for compatibility)
    static bool SetSettings(QString section, QString key, QString value);

    // ---- Well-known plugins; load the plugin if necessary

    /// The device manager; null if it is not available.
    static IDeviceMgr* GetDeviceMgrPlugin();

    /// The main window; null before it is built and if there is no main frame.
    static QWidget* GetMainWindow();

    /// The layout plugin chosen by the main frame; null if there is none.
    static ILayout* GetLayoutPlugin();

    /// Whether a plugin is listed, enabled and can be loaded. Loads its library.
    /// @param clsid GUID without braces; case-sensitive
    static bool IsPluginAvailable(QString clsid);

    /// Places a call through the call plugin, which shows its window. GUI thread only.
    /// @param number the number as dialled; an empty number is refused
    /// @param type   passed on unchanged
    /// @return the call plugin's result; false if there is none
    static bool MakeCall(QString number, _UI_EN_CALL_TYPE type);

    /// The clsids of the plugins that the main frame may embed: all of type 0 except those with a fixed role
    /// and, if bit value 4 of the frame style is set, one more. In the order of the plugin library file.
    static QStringList GetUIEmbedPlugibList();

    // ---- Files and URLs

    /// The installation folder, which is that of the executable; no slash at the end. It contains "config",
    /// "plugins" and "skin".
    static QString GetPluginLibraryPath();

    /// Opens a document or URL with the desktop's default program. GUI thread only.
    /// @param target the path of a local file if it ends with "pdf", "html" or "htm" (lower case), otherwise
    ///               a URL
    /// @return false if no program could be started
    static bool OpenUrl(QString target);

    // ---- Process-wide flags. Plain variables without a lock: other threads may see an older value. All are
    //      false initially unless stated otherwise.

    /// Set by the launcher once the main window is closed; do not start new work then.
    static bool IsShuttingDown();
    static void SetShutDownFlag();
    static void ResetShutDownFlag();

    /// Set by the main frame while it shows its compact window; affects skins and scroll bars.
    static bool IsMiniMode();
    static void SetMiniModeFlag();
    static void ResetMiniModeFlag();

    /// For plugins to agree on; the library does not use it.
    static bool getCloseValue();
    static void setCloseValue(bool value);

    /// A bit set, initially 1; for bit value 4 see GetUIEmbedPlugibList().
    static int GetFrameStyle();
    static void SetFrameStyle(int style);

    /// Whether menus have a separator after the search item; initially true.
    static bool GetSMSSeperatorConfigValue();
    static void SetSMSSeperatorConfigValue(bool value);

    // ---- Dialogs and messages; GUI thread only

    /// Centres a dialog over its nearest ancestor named "miniplugin_subframedlg", otherwise over the main
    /// window. A dialog that would begin left of x = 0, or reach beyond the upper, right or lower edge of the
    /// primary screen, is moved inside that screen. If the primary screen is not the leftmost one, a dialog over
    /// a window on a screen to its left therefore moves to the primary screen.
    /// @param dialog not moved if there is no such window (logged); null is logged and ignored
    static void MoveCentre(QDialog* dialog);

    /// Like MoveCentre(), but centres the dialog over a widget and keeps it on the widget's screen. Null for
    /// either is ignored. The left limit is x = 0 here, too: on a screen that begins right of 0 a wide dialog may
    /// reach into the screen to the left, and on a screen left of 0 it moves to that screen's left edge.
    static void MoveRelatedCentre(QDialog* dialog, QWidget* reference);

    /// The position that centres a rectangle of the given size over a widget.
    /// @return the top-left corner in screen coordinates; (0, 0) if the widget is null
    static QPoint GetCentrePoint(QWidget* reference, QSize size);

    /// Shows a message in a modal dialog with the application's frame and waits for the answer.
    /// @param parent   the dialog's parent; null for the main window
    /// @param buttons  as for addMessageboxButton(); empty for a single "OK"
    /// @param canClose whether the user can close the dialog without pressing a button
    /// @return index of the pressed button in the list; -1 if the dialog was closed or deleted with its parent
    static int ShowMessage(QWidget* parent, QString title, QString text, QStringList buttons,
                           QMessageBox::Icon icon = QMessageBox::Information, bool canClose = true);

    /// Like ShowMessage(), but shows a message box that the caller has set up.
    /// @param box owned by the dialog, which deletes it before this returns; null is ignored
    /// @return index of the pressed button in box->buttons(); -1 as for ShowMessage(), or if the box is null
    static int ShowMessageCustomize(QWidget* parent, QString title, DkMessageBox* box, bool canClose = true);

    /// Puts a message box into a dialog, for callers that do not wait for the answer: show the dialog with open()
    /// and follow the signals of the box.
    /// @param box owned by the dialog; null is ignored
    /// @return owned by the parent; closes when the box is answered. Null if the box is null
    static ExtendDialog* MakeMessage(QWidget* parent, QString title, DkMessageBox* box, bool canClose = true);

    /// Adds up to three buttons, with the roles YesRole, NoRole and RejectRole in this order; further texts
    /// are ignored.
    /// @return the buttons, owned by the box; empty if the box is null
    static QList<QAbstractButton*> addMessageboxButton(QMessageBox* box, const QStringList& buttons);

    // ---- Protected data; docs/ciphers.md describes the protection and its limits

    /// Encrypts a string; the result differs each time. If the system provides no random bytes, zeros are used
    /// instead (logged): the result can still be decrypted, but strings that start alike look alike.
    /// @param plain      zero-terminated
    /// @param passPhrase zero-terminated; only the first 24 bytes are used
    /// @param result     receives a zero-terminated string of printable digits; release it with
    ///                   CryptLocalFree(). Unchanged if an argument is null or memory runs out.
    static void Encrypt(const char* plain, const char* passPhrase, char*& result);

    /// Decrypts a result of Encrypt(). A wrong pass phrase is not detected; it yields garbage.
    /// @param result as for Encrypt(); also unchanged if protectedText has less than 15 digits
    static void Decrypt(const char* protectedText, const char* passPhrase, char*& result);

    /// Wipes a result of Encrypt() or Decrypt(), up to its terminating zero, and releases it. Null is ignored.
    static void CryptLocalFree(char* p);

    /// Reads a file up to its first zero byte and writes a file that depends on the operation:
    ///   1  the content, encrypted with a built-in key
    ///   2  the content, decrypted with that key; empty if the input has less than 15 digits
    ///   3  the SHA-256 digest in Base64, 44 characters; for empty content that of 32 zero bytes
    /// Other operations are logged and write nothing.
    /// @param inputPath, outputPath in the system's 8-bit encoding; may be the same. The output is replaced.
    ///        It is unchanged if the input cannot be read completely (on Windows: 2 GiB or more) or memory
    ///        runs out. If writing fails, a warning is logged and a truncated output remains; if both paths
    ///        are the same, the original is lost.
    /// @return always 0; errors are reported in the log and on standard error
    static int FileCrypt(int operation, const char* inputPath, const char* outputPath);

    /// Derives a token from a device identity that does not reveal the identity.
    /// @param imei  zero-terminated, 1 to 23 characters
    /// @param token receives 44 characters without a terminating zero; unchanged on failure
    /// @return false (logged) if an argument is null or the imei has another length
    static bool Handle_IMEI_Hash(const char* imei, char* token);

    /// The IMSI of the SIM card in the first modem; empty if there is none.
    static QString getIMSI();

    // ---- Threads

    /// Counts a worker thread that starts. Every worker calls it once, and ThreadCountDec() once when it ends.
    /// @param owner, name identify the worker in the log, for example its class and purpose; not stored
    static void ThreadCountInc(QString owner, QString name);

    /// Counts a worker thread that ends. Call it after the last use of shared objects.
    /// @return the number of remaining workers; negative if there were more ends than starts
    static int ThreadCountDec(QString owner, QString name);

    /// Asks all workers to stop, through the notification service if there is one, and waits for them. For
    /// the thread that closes the application. All calls in a process together wait 20 times 500 ms at most;
    /// workers that are still counted then are abandoned. Without a plugin host it returns at once.
    static void WaitThreadsStop();

    /// Stops a thread: quits its event loop, waits, and terminates it if it is still running. A terminated
    /// thread may run on for a moment: wait for it before deleting it or anything that it uses.
    /// @param thread    null is ignored
    /// @param unMaxWait in seconds; 0 terminates a running thread at once
    static void WaitForThreadToStop(QThread* thread, unsigned int unMaxWait);

    // ---- Addresses and links; a "character" is a UTF-16 code unit

    /// Whether the whole text is an e-mail address: runs of letters, digits and marks of any script, "_" and
    /// "-", with single dots between them; exactly one "@", and at least one dot after it.
    static bool CheckForEmailAddr(QString text);

    /// Whether the whole text is a run of the letters h, t, p, s (either case) and "|", followed by "://" and
    /// any characters up to 255, or characters with an upper- or lower-case form up to 255.
    static bool CheckForHttpAddr(QString text);

    /// Whether the whole text is a host name: lower-case ASCII letters and digits with single dots between
    /// them; the last label has 2 to 6 letters.
    static bool CheckForWebAddr(QString text);

    /// Turns plain text into rich text with clickable addresses. "<" and ">" are escaped, "&" is not; a space
    /// is added before every line feed; spaces become "&nbsp;". E-mail addresses, host names that start with
    /// "www." and web addresses become links, unless the word contains characters outside 1 to 255.
    /// @return empty, with a warning, if the text is longer than 128 Mi characters
    static QString ParseAndCreateHyperLinks(QString text);

    /// Turns a word into a link if it starts with "http://", "https://" or "ftp://" (either case) and a letter
    /// or digit. A line feed in front of it stays in front.
    /// @return the word itself if it is no link
    static QString createLinkForHttpAndFtp(QString word);

    // ---- Other text operations; a "character" is a UTF-16 code unit

    /// Inserts a space before every line feed.
    static QString addSpaceToNewLine(QString text);

    /// Whether the text contains a character outside 1 to 255.
    static bool isNonAsciiCharPresent(QString text);

    /// Splits a text into maximal runs of characters inside and outside 1 to 255, in order.
    static QStringList SplitAsciiAndUnicodeString(QString text);

    /// Returns the text as the only entry of a list; no entry if it is empty.
    /// @param flag receives false
    static QStringList SplitAsciiString(QString text, bool& flag);

    /// Splits a line at spaces. Text between double quotes is one parameter, which may be empty or contain
    /// spaces.
    /// @return empty if the number of quotes is odd
    static QStringList GetParamList(QString line);

    /// Fixes the direction of commas, double quotes and brackets in a text for right-to-left languages. For
    /// each of them that follows a left-to-right character (or a Hebrew one), U+202D (or U+202E) is inserted
    /// after all occurrences of the same character. Marks accumulate: each occurrence adds another. A text that
    /// would grow beyond 128 Mi characters is left unchanged, with a warning.
    static void ParanthesisCorrection(QString& text);
    static void ParanthesisCorrectionForHeAndAr(QString& text);

    // ---- Texts in widgets; GUI thread only

    /// Sets a label's text. A text that does not fit into its width less 2 pixels is shortened, and the full
    /// text becomes the tool tip; otherwise the tool tip is cleared.
    /// @param label null is logged and ignored
    static void ElidedText(QLabel* label, QString text, Qt::TextElideMode mode);
    static void LableElidedText(QLabel* label, QString text, Qt::TextElideMode mode);

    /// The same for a button, with a margin of 10 pixels.
    static void AbstractButtonElidedText(QAbstractButton* button, QString text, Qt::TextElideMode mode);

    /// The same for any widget with setText(), with a margin of 10 pixels.
    template <typename Widget>
    static void setElidedTextForWidgetText(Widget* widget, QString text, Qt::TextElideMode mode);

    /// Measures a text in the widget's font.
    /// @param height, width receive pixels; unchanged if the widget is null or the text is empty (logged)
    static void GetWidgetStringHeightAndWidth(QWidget* widget, QString text, int& height, int& width);

    /// The same in the application's font.
    static void GetApplicationStringHeightAndWidth(QString text, int& height, int& width);

    // ---- Speeds and volumes; empty ladders yield an empty string

    /// The unit of a ladder's first step.
    /// @param context name of the plugin whose language files contain the unit's text
    static QString SpeedUnitToString(QVector<TagUnits> units, QString context);

    /// A value with two decimals, a space and its unit, for example "1.50 KB"; independent of the locale. The
    /// unit is that of the last step with a threshold below the value, otherwise of the first step.
    /// @param value   in base units
    /// @param context name of the plugin whose language files contain the unit's text
    static QString SpeedFluxToString(QVector<TagUnits> units, unsigned long long value, QString context);

private:
    /// @param margin part of the widget's width that is not available for the text, in pixels
    template <typename Widget>
    static void showElided(Widget* widget, const QString& text, Qt::TextElideMode mode, int margin);

    /// The text as shown in `width` pixels.
    /// @param fits receives whether that is the whole text
    static QString elided(const QFontMetrics& metrics, const QString& text, Qt::TextElideMode mode, int width,
                          bool& fits);
};

template <typename Widget>
void CommonUtils::setElidedTextForWidgetText(Widget* widget, QString text, Qt::TextElideMode mode)
{
    constexpr int margin = 10;
    LOG_DEBUG("%s: %s: %s: %d: Enter", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
    if (!widget)
        return;
    showElided(widget, text, mode, margin);
}

template <typename Widget>
void CommonUtils::showElided(Widget* widget, const QString& text, Qt::TextElideMode mode, int margin)
{
    bool fits = false;
    widget->setText(elided(widget->fontMetrics(), text, mode, widget->width() - margin, fits));
    widget->setToolTip(fits ? QString() : text);
}
