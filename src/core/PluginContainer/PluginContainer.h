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
/// for derived containers. Call loadPlugin, unloadPlugin and getPluginNameByClsid with the lock held. The
/// readers of the configuration file need no lock: no other thread knows the container yet. All others take
/// the lock themselves.
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

    // ---- Life-cycle

    QObject* getPlugin(QString key, bool bInit, int iid);
    /// Loads the first loadable library of the plugin folder whose file name begins with fileBase.
    QObject* loadPlugin(PluginInfo* info, QString fileBase);
    void initPlugin(QObject* plugin, QString clsid, PluginInfo* info);
    void loadAllStaticOrActivePlugin();
    bool unloadPlugin(PluginInfo* info);
    bool unloadAllPlugins();

    // ---- Records

    QString getPluginNameByClsid(QString clsid);
    void removePluginInfo(QString clsid);
    bool isPluginInList(QString clsid);
    void disableAllPlugins();

    // ---- Configuration files

    void populatePluginInfo(QString path);
    PluginInfo* readPluginElement(QXmlStreamReader& reader);
    void populatePluginsConfig(QString path);
    void readCommonElement(QXmlStreamReader& reader);
    void readCustomizeElements(QXmlStreamReader& reader);
    void readDeviceElements(QString name, QXmlStreamReader& reader);
    void readIMSIElements(QString name, QXmlStreamReader& reader);
    void readGIDElements(QString name, QXmlStreamReader& reader);
    void addToDisEnableList(QString key, QHash<QString, QString>* table, QStringRef clsid, bool enable);

    // ---- Customisation

    void updatePluginInfo(QString clsid, bool enable);
    void processFromSet(QSet<QString>* set, bool enable);
    void processFromList(QString key, QHash<QString, QString>* table, bool enable);
    void updateCommonOperatorCustomization();
    void updateDeviceCustomization(QString key);

    // ---- Device link: takes the lock itself

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
