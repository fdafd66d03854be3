#pragma once

#include "PluginContainer/interfaces/ICallUIPlugin.h"
#include "common/Log.h"
#include "common/TagUnits.h"
#include "skylume_global.h"

#include <QFontMetrics>
#include <QString>
#include <QStringList>
#include <QVector>

class IDeviceMgr;
class ILayout;
class QAbstractButton;
class QLabel;
class QThread;
class QWidget;

/// Whether menus show the separator right behind their search entry; see SetSMSSeperatorConfigValue().
extern SKYLUME_EXPORT bool gSeparator;

/// Services that every plugin and every part of the core library share. All operations are static and may be
/// called from any thread unless stated; none throws.
class SKYLUME_EXPORT CommonUtils
{
public:
    // ---- Settings, kept by the device service

    /// The value of a setting in the merged view: the user's value, else the installation's default.
    /// @return empty when there is no value or the store failed (which a warning tells); callers supply their
    ///         own defaults
    static QString GetSettings(QString section, QString key);

    /// As GetSettings, from the user's store alone.
    static QString GetUserSettings(QString section, QString key);

    /// Writes a setting to the user's store.
    /// @return the inverse of what one expects: true when the store refused the value
    static bool SetSettings(QString section, QString key, QString value);

    // ---- Well-known plugins; every one may be missing

    /// The device manager, or null.
    static IDeviceMgr* GetDeviceMgrPlugin();

    /// The main window, or null. Use it on the GUI thread.
    static QWidget* GetMainWindow();

    /// The layout plugin that the main frame names, or null.
    static ILayout* GetLayoutPlugin();

    /// Whether a plugin is known, enabled and loadable; loads its library. False without a plugin host.
    static bool IsPluginAvailable(QString clsid);

    /// Places a call through the call plugin.
    /// @param number the number to call; an empty one is refused
    /// @return what the call plugin answers; false without a call plugin. The plugin shows windows: use it on
    ///         the GUI thread.
    static bool MakeCall(QString number, _UI_EN_CALL_TYPE type);

    /// The clsids of plugins that the main frame may embed: all of type 0 other than those with a place of
    /// their own, in file order.
    static QStringList GetUIEmbedPlugibList();

    // ---- Places

    /// The installation: the folder of the executable. "config", "plugins" and "skin" lie below it.
    static QString GetPluginLibraryPath();

    /// Opens a document or an address with the desktop's own program.
    /// @param target a local file when it ends with "pdf", "html" or "htm" in lower case, else a URL
    /// @return whether a program was started
    static bool OpenUrl(QString target);

    // ---- Process-wide flags: plain variables without a lock, false at first unless said otherwise

    /// Set by the launcher when the main window has closed: nothing new is begun from then on.
    static bool IsShuttingDown();
    static void SetShutDownFlag();
    static void ResetShutDownFlag();

    /// Set by the main frame while its window is the compact one; skins and scroll bars go by it.
    static bool IsMiniMode();
    static void SetMiniModeFlag();
    static void ResetMiniModeFlag();

    /// Its meaning is agreed upon by plugins; the library does not look at it.
    static bool getCloseValue();
    static void setCloseValue(bool value);

    /// A set of bits, 1 at first. Bit value 4 takes a further plugin out of GetUIEmbedPlugibList().
    static int GetFrameStyle();
    static void SetFrameStyle(int style);

    /// True at first: whether menus have a separator behind the search item.
    static bool GetSMSSeperatorConfigValue();
    static void SetSMSSeperatorConfigValue(bool value);

    // ---- Protected data; docs/ciphers.md says what this protects from and what not

    /// Enciphers a text under a pass phrase into printable digits, each time differently.
    /// @param plain, passPhrase zero-terminated; 24 bytes of the pass phrase count
    /// @param result receives a zero-terminated text that the caller releases with CryptLocalFree(); it stays
    ///               as it is when a text is null or memory is short
    /// Should the system have no random bytes to give, which a log line tells, zeros take their place: the
    /// text comes back all the same, but two texts that begin alike then look alike.
    static void Encrypt(const char* plain, const char* passPhrase, char*& result);

    /// Brings back the text that Encrypt() was given. A wrong pass phrase is not noticed; the result is
    /// garbage then.
    /// @param result as for Encrypt(); it also stays as it is when protectedText has less than 15 digits
    static void Decrypt(const char* protectedText, const char* passPhrase, char*& result);

    /// Releases a result of Encrypt() or Decrypt(), wiped up to its terminating zero; nothing is behind that. Null
    /// is ignored.
    static void CryptLocalFree(char* p);

    /// Enciphers a file under a key that is built in (operation 1), deciphers it (2), or writes its
    /// fingerprint (3): the SHA-256 digest in Base64, 44 characters. The file is read as a text, up to its
    /// first zero byte; an empty text has the fingerprint of 32 zero bytes. Another operation only writes a
    /// log line.
    /// @param inputPath, outputPath in the system's 8-bit encoding. Both may be the same file. The
    ///        output is replaced; a text to decipher of less than 15 digits leaves it empty. It stays as it
    ///        is when memory is short or the input cannot be read whole, on Windows not from 2 GiB on. Of a
    ///        result that cannot be written whole, which a warning tells, a part remains: with one path for
    ///        both the original is lost then.
    /// @return always 0; what went wrong is told by the log and standard error
    static int FileCrypt(int operation, const char* inputPath, const char* outputPath);

    /// Makes a token of a device identity that does not show it.
    /// @param imei  1 to 23 characters, zero-terminated
    /// @param token receives 44 characters and no terminating zero; stays as it is on failure
    /// @return false, which the log explains, for null and for other lengths of imei
    static bool Handle_IMEI_Hash(const char* imei, char* token);

    /// The subscriber identity of the SIM in the first modem, or empty.
    static QString getIMSI();

    // ---- Threads

    /// Announces that a worker thread begins. Every worker calls it once, and ThreadCountDec() once at its
    /// end.
    /// @param owner, name tell in the log who it is, for example a class and a thread name
    static void ThreadCountInc(QString owner, QString name);

    /// Announces that a worker thread ends, after its last use of anything shared.
    /// @return the workers left; negative after calls without a beginning
    static int ThreadCountDec(QString owner, QString name);

    /// Asks all workers to stop, through the notification service if there is one, and waits until they have.
    /// All calls of a process together wait 20 times 500 ms at most; workers that are left then are
    /// abandoned. Returns at once without a plugin host. For the thread that closes the application.
    static void WaitThreadsStop();

    /// Stops a thread: asks its event loop to end, waits, and terminates it as a last resort.
    /// @param thread    null is ignored
    /// @param unMaxWait longest wait in seconds; there is no wait after a termination
    static void WaitForThreadToStop(QThread* thread, unsigned int unMaxWait);

    // ---- Addresses and links in a text; "characters" are UTF-16 units

    /// Whether the whole text is an e-mail address: letters, digits, marks, "_" and "-" of any script, with
    /// single dots between them and at least one dot behind the "@".
    static bool CheckForEmailAddr(QString text);

    /// Whether the whole text begins with a run of the letters h, t, p, s and "|" in either case, then "://".
    /// Characters up to 255 may follow, and those beyond that have an upper- or lower-case form up to 255.
    static bool CheckForHttpAddr(QString text);

    /// Whether the whole text is a host name of lower-case letters, digits and single dots that ends in a
    /// label of 2 to 6 letters.
    static bool CheckForWebAddr(QString text);

    /// Makes a plain text safe and clickable for a rich-text label: "<" and ">" are escaped, blanks become
    /// "&nbsp;", also one put before every line feed, and words that are e-mail addresses, host names
    /// beginning with "www." or web addresses become links. Words with characters above 255 are never links.
    /// @return empty, with a warning, for a text of more than 128 Mi characters
    static QString ParseAndCreateHyperLinks(QString text);

    /// The link for a word that begins with "http://", "https://" or "ftp://" and a letter or digit; anything
    /// else comes back as it is. A line feed in front stays in front.
    static QString createLinkForHttpAndFtp(QString word);

    // ---- Other work on texts

    /// Puts a blank before every line feed.
    static QString addSpaceToNewLine(QString text);

    /// Whether there is a character outside 1 to 255.
    static bool isNonAsciiCharPresent(QString text);

    /// Cuts a text into runs of characters within 1 to 255 and runs of all others, in order.
    static QStringList SplitAsciiAndUnicodeString(QString text);

    /// @param flag receives false
    /// @return the text as the only entry; no entry for an empty text
    static QStringList SplitAsciiString(QString text, bool& flag);

    /// Splits a line at blanks; what stands between double quotes is one parameter, blanks included.
    /// @return empty when the quotes are not in pairs
    static QStringList GetParamList(QString line);

    /// Fixes the direction of commas, quotes and brackets in a text for right-to-left languages: one that
    /// follows a left-to-right character has all of its kind followed by U+202D, one that follows a Hebrew
    /// letter or the like by U+202E. Every visit adds a mark, so repeated signs gather many. A text that
    /// would outgrow 128 Mi characters stays as it is, with a warning.
    static void ParanthesisCorrection(QString& text);
    static void ParanthesisCorrectionForHeAndAr(QString& text);

    // ---- Texts in widgets; GUI thread

    /// Shows a text in a label; one that leaves less than 2 pixels of its width is shortened, with the full
    /// text as tool tip. A text that fits leaves no tool tip.
    /// @param label null is logged and ignored
    static void ElidedText(QLabel* label, QString text, Qt::TextElideMode mode);
    static void LableElidedText(QLabel* label, QString text, Qt::TextElideMode mode);

    /// The same for a button, which keeps a wider margin.
    static void AbstractButtonElidedText(QAbstractButton* button, QString text, Qt::TextElideMode mode);

    /// The same for any widget with setText(), with a button's margin.
    template <typename Widget>
    static void setElidedTextForWidgetText(Widget* widget, QString text, Qt::TextElideMode mode);

    /// Measures a text in pixels with the widget's font.
    /// @param height, width stay as they are when the widget is null or the text is empty
    static void GetWidgetStringHeightAndWidth(QWidget* widget, QString text, int& height, int& width);

    /// The same with the application's font.
    static void GetApplicationStringHeightAndWidth(QString text, int& height, int& width);

    // ---- Speeds and volumes

    /// The unit of a ladder's first step.
    /// @param context the plugin whose language files hold the unit's text
    /// @return empty without a step
    static QString SpeedUnitToString(QVector<TagUnits> units, QString context);

    /// A value with two decimals, a blank and its unit: "1.50 KB". The unit is that of the last step whose
    /// threshold lies below the value, else of the first.
    /// @param value   in base units
    /// @param context the plugin whose language files hold the unit's text
    /// @return empty without a step
    static QString SpeedFluxToString(QVector<TagUnits> units, unsigned long long value, QString context);

private:
    /// @param margin what of the widget's width is not for the text
    template <typename Widget>
    static void showElided(Widget* widget, const QString& text, Qt::TextElideMode mode, int margin);

    /// A text as it is shown in a width.
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
