#pragma once

#include "PluginContainer/ConfigurationFault.h"
#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/LanguageInfoEx.h"
#include "PluginContainer/PluginStatus.h"

#include <QDir>
#include <QHash>
#include <QMutex>
#include <QSet>

#include <atomic>
#include <memory>

class CInitConfigThread;
class PluginContainerPrivate;
class PluginInfo;
class QStringRef;
class QXmlStreamReader;

/// The registry and life-cycle manager of all plugins. Startup creates the only one of the process.
///
/// IPluginContainer.h documents the operations for plugins. The protected operations are the steps of these,
/// for derived containers. They take the container's lock themselves, which is recursive, unless their section
/// says otherwise. Records and tables belong to the container.
class SKYLUME_EXPORT PluginContainer : public IPluginContainer
{
public:
    /// Reads both files, enables the common and operator plugins, loads and initialises the device manager,
    /// starts the configuration thread and chooses the language.
    /// @param strPluginsFile   the plugin library file; a missing one leaves no plugin known
    /// @param strPluginsConfig the plugin configuration file; a missing one leaves no plugin enabled
    ///
    /// The last argument is ignored.
    PluginContainer(QString strPluginsFile, QString strPluginsConfig, bool);

    /// Waits for the configuration thread, then shuts every plugin down and unloads it.
    ~PluginContainer() override;

    void Release() override;
    int GetLastError() override;

    bool IsPluginAvailable(QString clsid) override;
    bool IsPluginLoaded(QString clsid) override;
    QStringList GetLoadedPluginClsids() override;
    QStringList GetPluginClsidsByType(int type) override;
    QStringList GetSettingsPlugins() override;
    QObject* GetPlugin(QString key, int iid) override;
    int GetPluginType(QString clsid) override;
    QString GetMainFramePluginName() override;
    void LoadAllStaticOrActivePlugin() override;
    bool IsCustomizationForDevice(QString key) override;
    bool UnloadPlugin(QString key) override;
    bool UnloadAllPlugins() override;
    void ApplyCustomizationForDevice(QString key) override;
    QString GetPluginNameByClsid(QString clsid) override;
    QString GetClsidByName(QString name) override;
    void HandleDeviceSwitched(QString device, QList<QString>& enabledNow,
                              QList<QString>& disabledNow) override;
    bool DestroyPlugin(QString clsid) override;
    bool IsPluginsConfigInitialized() override;
    void StartInitPluginsConfig() override;
    void UpdateAllStaticOrActivePlugins() override;
    QStringList GetGIDGroups() override;
    bool UnRegisterFormPluginContainer(QString clsid) override;

    /// Whether the plugin configuration file has rules that ApplyCustomizationForDevice(key) would apply
    /// besides the common ones, whether or not they would change anything now. Any thread; changes nothing.
    /// @param key as for ApplyCustomizationForDevice()
    /// @return false for the empty key. Rules for plugins that the plugin library file does not list are
    ///         ignored.
    bool HasRulesFor(const QString& key) const;

    /// The customisation key of one modem, the most specific of these:
    ///
    /// 1. CustomisationKeys::Imsi and the IMSI, when HasRulesFor() that key;
    /// 2. CustomisationKeys::Gid and the group, when the plugin configuration file lists the group;
    /// 3. the modem's name, with or without rules.
    ///
    /// Any thread; changes nothing.
    /// @param imsi empty without a SIM card
    /// @param gid  the SIM card's group identifier; may be empty
    QString KeyForModem(const QString& name, const QString& imsi, const QString& gid) const;

    /// Every plugin of the plugin library file, followed by those that the operator's customisation removed,
    /// each with its state and the rule that decided. For views that explain the plugin set; any thread.
    PluginStatusList GetPluginStatus() const;

    /// The faults that the two files had when they were read, at most one for each file; empty when both were
    /// read to their ends. Any thread.
    ConfigurationFaultList GetConfigurationFaults() const;

    /// Handles an event of the device service, on a thread of the service. Stores the name of the modem when
    /// exactly one is available and wakes the configuration thread.
    /// @param type a QRVL_Event; other values are ignored
    /// @return always 1
    static int OnDevMgrEvent(int type, void* data);

    /// Name of the modem that the latest device event reported; empty when there is none or it has been used.
    static QString m_strDeviceName;
    static QMutex m_LockStrDevName; ///< guards m_strDeviceName

protected:
    /// An installation that is only looked at.
    struct Inspected
    {
        QString folder;       ///< with the plugins' libraries and the folder "config"
        QString operatorName; ///< customisation name
    };

    /// Reads both files of an installation and enables the common and operator plugins. Loads and starts
    /// nothing, and neither reads nor writes settings.
    explicit PluginContainer(const Inspected& installation);

    // ---- Life-cycle. `info` must not be null. Call loadPlugin() and unloadPlugin() with the lock held.

    /// As GetPlugin(), but with bInit false the plugin is not initialised.
    QObject* getPlugin(QString key, bool bInit, int iid);

    /// Loads the first loadable library of the plugin folder whose file name begins with fileBase and stores
    /// its loader in the record. The caller sets the record's flag and root object.
    /// @return the plugin's root object, owned by its library; null (logged) if no library can be loaded
    QObject* loadPlugin(PluginInfo* info, QString fileBase);

    /// Calls the plugin's Init(), unless the record is initialised already. The record counts as initialised
    /// before the call, because the plugin may ask for itself. Exceptions are caught and logged.
    /// @param plugin its root object; ignored (logged) if null, ignored if it has no base interface
    void initPlugin(QObject* plugin, QString clsid, PluginInfo* info);

    /// As LoadAllStaticOrActivePlugin().
    void loadAllStaticOrActivePlugin();

    /// Unloads the library of a loaded record and resets the record. Does not call the plugin: destroy it first.
    /// @return false (logged) if the library stays loaded; the record is then unchanged. The device manager is
    ///         not unloaded while the configuration thread uses it.
    bool unloadPlugin(PluginInfo* info);

    /// As UnloadAllPlugins().
    bool unloadAllPlugins();

    // ---- Records

    /// As GetPluginNameByClsid(). Call it with the lock held.
    QString getPluginNameByClsid(QString clsid);

    /// Deletes a record; pointers to it become invalid. An unknown clsid is ignored.
    void removePluginInfo(QString clsid);

    /// Whether the plugin library file lists the plugin and no operator has removed it.
    bool isPluginInList(QString clsid);

    /// Disables every plugin. Loaded ones stay loaded.
    void disableAllPlugins();

    // ---- Configuration files. A fault in a file is logged and recorded for GetConfigurationFaults(); what stands
    //      before it is kept. The read...() operations take the reader at the element's start tag. Apart from
    //      populatePluginInfo() these take no lock: they run in the constructor, before other threads know the
    //      container.

    /// Adds the records of a plugin library file. A later record with the same clsid replaces an earlier one in
    /// look-ups by clsid; both stay in the list.
    void populatePluginInfo(QString path);

    /// Reads one record, up to its "static" element.
    /// @return a new, disabled record, owned by the caller; never null
    PluginInfo* readPluginElement(QXmlStreamReader& reader);

    /// Adds the rules of a plugin configuration file to the tables. Enables no plugin yet.
    void populatePluginsConfig(QString path);

    void readCommonElement(QXmlStreamReader& reader); ///< adds the plugins that are enabled for everyone

    /// Adds the plugins that the operator enables, and deletes the records of those that it removes.
    void readCustomizeElements(QXmlStreamReader& reader);

    /// Adds the rules of one key.
    /// @param name the key; readIMSIElements() and readGIDElements() put their prefix of CustomisationKeys before
    ///             it. readGIDElements() also adds it to GetGIDGroups().
    void readDeviceElements(QString name, QXmlStreamReader& reader);
    void readIMSIElements(QString name, QXmlStreamReader& reader);
    void readGIDElements(QString name, QXmlStreamReader& reader);

    /// Adds a rule to a table; a key may have several. A clsid that the plugin library file does not list is
    /// logged and ignored.
    /// @param table  must not be null
    /// @param enable only for the log and GetPluginStatus(): whether it is the table of rules that enable
    void addToDisEnableList(QString key, QHash<QString, QString>* table, QStringRef clsid, bool enable);

    // ---- Customisation. These only change which plugins are enabled; they neither load nor unload any.

    /// Enables or disables one plugin; an unknown clsid is ignored.
    void updatePluginInfo(QString clsid, bool enable);

    /// Enables or disables all plugins of a set. GetPluginStatus() names the common rules as the reason.
    /// @param set must not be null
    void processFromSet(QSet<QString>* set, bool enable);

    /// Applies the rules of a table that match the key: those of the same key and, if the key begins with
    /// "IMSI", those whose key is contained in it.
    /// @param table must not be null
    void processFromList(QString key, QHash<QString, QString>* table, bool enable);

    /// Enables the plugins of the common and operator rules.
    void updateCommonOperatorCustomization();

    /// Applies the rules of one key, the disabling ones last. The empty key is ignored.
    void updateDeviceCustomization(QString key);

    // ---- Device link

    /// Asks the device manager to look for modems and waits for the device service, 10 seconds at most. For the
    /// configuration thread; call it without the lock. The argument is ignored.
    /// @return the name of the only modem, otherwise that of the modem used last; empty if there is neither or
    ///         no device manager (logged)
    QString getDeviceName(bool);

    // ---- First-run mark: does not take the lock

    /// Whether this is the first run: the setting "init" of the section "Startup" is not exactly "true".
    bool isFirstTimeStart();

    /// Records that the application has run: sets "init" to "true".
    void setRunningMark();

    // ---- Start-up language: only for the thread that runs the constructor; these do not take the lock

    /// If the customisation requests a different language than at the last start, makes it the active language.
    /// On the first run, the request is only recorded.
    void setStartupLanguage();

    /// The language that the customisation requests with the setting "adaptertype" of the section "customize"
    /// in the device service's INI file: "system" is the computer's language, "area" the user's. The setting may
    /// hold several words separated by "|"; "system" takes precedence.
    /// @return a short name such as "_en-us"; empty if none is requested or no language is installed
    QString GetAdapterLang();

    /// Reads the long names of the installed languages from SysConfig.dat, the preferred one first.
    /// @param list the names are inserted before the entries that it already has
    /// @return false if the file is damaged or cannot be read. A missing file lists no languages.
    bool getLanguageList(QStringList& list);

    /// Appends the languages of LangAreaForShort.xml in file order. After an XML error in the file, the rest is
    /// ignored.
    /// @return false if the file is missing or cannot be opened
    bool GetCurLanguageInfo(QList<LanguageInfoEx>& records);

    /// The identifier of the computer's language in decimal digits, or that of the user's language if the last
    /// call of GetAdapterLang() found "area".
    QString GetCurrentSystemLang();

    /// Chooses the start-up language.
    /// @param list long names of the installed languages, the preferred one first
    /// @return its short name; "_en-us" if LangAreaForShort.xml has no languages or the list is empty
    QString decideDefaultLanguage(QStringList const& list);

    /// Chooses one of several candidates: the first one of the computer's country or, if there is none, the
    /// first one in the hash's order.
    /// @param candidates short names by long names; if empty, the first language of the list is chosen
    /// @return the short name
    QString getDefaultLan(QHash<QString, QString> candidates, QStringList const& list,
                          QList<LanguageInfoEx>& records);

    /// The short name of the language with this long name, ignoring case; "_en-us" if there is none.
    QString getShortLan(QString const& name, QList<LanguageInfoEx>& records);

private:
    Q_DISABLE_COPY_MOVE(PluginContainer)

    void create(const QString& pluginFolder);
    void readFiles(const QString& pluginsFile, const QString& pluginsConfig);
    void startConfigThread();
    void loadMainFrameTexts(const char* function);
    void endConfigThread();
    void stopConfigThread();

    PluginInfo* findLogged(const QString& clsid, const char* function) const;

    bool provideLoaded(PluginInfo* info, bool bInit, const char* function);
    void loadIfNeeded(PluginInfo* info);
    void initLoadedPlugins(bool (*isWanted)(const PluginInfo&), const char* function);

    struct TeardownStep;
    bool callIfRunning(const QString& clsid, const TeardownStep& step, const char* function);
    void callEach(const QStringList& clsids, const TeardownStep& step);
    QStringList runningPlugins(const QStringList& without) const;
    void unloadDisabled(PluginInfo* info, const char* function);

    void readPluginLibraryElement(QXmlStreamReader& reader, const char* function);
    void readPluginsConfigElement(QXmlStreamReader& reader);
    bool enableByDefault(const QStringRef& clsid);
    void enableForOperator(const QStringRef& clsid);
    void removeForOperator(const QString& clsid);

    QString detectDeviceName(const char* function);

    QDir m_dirPlugins;
    QString m_strMainPlugin;
    QHash<QString, PluginInfo*>* m_pHashPlugins = nullptr;
    QList<PluginInfo*>* m_pListPlugins = nullptr; ///< file order; owns the records
    QSet<QString>* m_pCommonSet = nullptr;
    QHash<QString, QString>* m_pEnableTable = nullptr;  ///< customisation key to clsid, several per key
    QHash<QString, QString>* m_pDisableTable = nullptr; ///< customisation key to clsid, several per key
    QString m_strCustomizeName;
    bool m_bDeviceMgrInit = false;
    QStringList m_listGIDGroups;
    mutable QRecursiveMutex m_mutex;
    std::atomic<bool> m_bConfigInitialized{false};
    CInitConfigThread* m_pInitConfigThread = nullptr;
    bool m_bDeviceLink = false; ///< the device service holds our callbacks
    std::unique_ptr<PluginContainerPrivate> d;
};
