// A file is valid by its schema exactly when the library reads every entry of it.
#include "Change/Change.h"
#include "CoreTest.h"
#include "PluginContainer/PluginInspection.h"
#include "PopupMenu/MenuParse.h"
#include "Samples.h"
#include "Startup/Startup.h"
#include "ToolBar/ToolBarLogic.h"
#include "ToolBar/ToolItem.h"
#include "Xmllint.h"
#include "common/CommonUtils.h"
#include "common/StandardConfigParse.h"
#include "common/StatusBarOpListParse.h"
#include "platform/LanguageId_p.h"

class TestSchemas : public CoreTest
{
    Q_OBJECT

private slots:
    void loaders();
};

namespace {

// Each of these reads a file of the test's installation and returns the number of entries that arrived.

int readPlugins()
{
    int count = 0;
    for (const PluginStatus& plugin :
         PluginInspection(CommonUtils::GetPluginLibraryPath(), {}).GetPluginStatus())
        count += plugin.clsid.isEmpty() || plugin.name.isEmpty() || plugin.url.isEmpty() ? 0 : 1;
    return count;
}

/// Rules for the plugins A to C, each named once.
int readRules()
{
    const QString folder = CommonUtils::GetPluginLibraryPath();
    writeFile(folder + "/config/pluginslib.xml", pluginLibraryXml({{"A", "A"}, {"B", "B"}, {"C", "C"}}));
    PluginInspection inspection(folder, "northtel");
    inspection.ApplyCustomizationForDevice("Lume");
    int count = 0;
    for (const PluginStatus& plugin : inspection.GetPluginStatus())
        count += plugin.ruleLine > 0 ? 1 : 0;
    return count;
}

int readMenus()
{
    int count = 0;
    MENU::MenuParse parser("P", "file.xml");
    for (const MENU::STMENUINFO* menu : qAsConst(*parser.GetMenuInfoList()))
        for (const MENU::MenuXmlInfo* entry : qAsConst(*menu->items))
            count += 1 + (entry->GetPopupMenuList() ? entry->GetPopupMenuList()->size() : 0);
    return count;
}

int readToolBar()
{
    QList<ToolItem> items;
    bool isGroup = false;
    ToolBarLogic::GetXmlData(CommonUtils::GetPluginLibraryPath() + "/plugins/P/file.xml", items, isGroup, {});
    return items.size();
}

/// Names and values are single letters, a condition's "c", a result's "r", a general value's "i" and others.
int readConfiguration()
{
    StandardConfigParse file("/plugins/P/file.xml");
    const QStringList values = {file.GetConditionByName("c"), file.GetResultByName("r"),
                                file.GetCustomInfoByName("i"), file.GetCustomInfoByName("j")};
    return values.size() - values.count(QString());
}

int readTexts()
{
    Change::m_languageHash.clear();
    Change::LoadLangFile("P");
    const QHash<QString, QString> texts = Change::m_languageHash.value("P");
    return texts.size() - (texts.contains(QString()) ? 1 : 0);
}

int readLists()
{
    StatusBarOpListParse::DestroyInstance();
    StatusBarOpListParse& lists = *StatusBarOpListParse::GetInstance();
    const QStringList names = {
        lists.GetOperatorData("001", "01").shortdescr, lists.GetOperatorData("001", "02").shortdescr,
        lists.GetOperatorData("002", {}).shortdescr,   lists.GetCPLMNOperatorData("001010123456789"),
        lists.GetCPLMNOperatorData("002010123456789"), lists.GetCMCCMNCOperatorData("00101"),
        lists.GetCMCCMNCOperatorData("001010")};
    StatusBarOpListParse::DestroyInstance();
    return names.size() - names.count(QString());
}

/// Everyone's switch is to be off, those of the operators a and b on.
int readSplash()
{
    struct Splash : Startup
    {
        using Startup::haveSplashScreen;
    };
    const auto isWantedBy = [](const QString& operatorName) {
        ScriptedDeviceService::instance().setSetting("customize", "operator", operatorName);
        return Splash::haveSplashScreen();
    };
    const bool everyone = isWantedBy("nobody");
    return (everyone ? 0 : 1) + (isWantedBy("a") != everyone) + (isWantedBy("b") != everyone);
}

/// The languages A and B, for this computer's language.
int readAreas()
{
    TestContainer container({}, {}, false);
    int count = 0;
    for (const char* name : {"A", "B"})
        count += container.decideDefaultLanguage({"other", name}).size() == 2 ? 1 : 0; // its code is a letter
    return count;
}

struct Loader
{
    const char* schema;
    const char* file;
    const char* entry; ///< what each entry has once, in any case
    int (*read)();
};

constexpr Loader Loaders[] = {
    {"pluginslib", "config/pluginslib.xml", "<clsid", readPlugins},
    {"PluginsConfig", "config/PluginsConfig.xml", " clsid", readRules},
    {"menu", "plugins/P/file.xml", "<item", readMenus},
    {"toolbar", "plugins/P/file.xml", "<item", readToolBar},
    {"standard-configuration", "plugins/P/file.xml", "<item", readConfiguration},
    {"language", "plugins/P/P_en-us.lang", "<item", readTexts},
    {"main-window", "plugins/XFramePlugin/Config.xml", "<splash", readSplash},
    {"LangAreaForShort", "LangAreaForShort.xml", "<item", readAreas},
    {"OperatorList", "plugins/StatusBarMgrPlugin/OperatorList.xml", "<item", readLists},
    {"CPLMNOpList", "plugins/StatusBarMgrPlugin/CPLMNOpList.xml", "<item", readLists},
    {"CMCCMNCOpList", "plugins/StatusBarMgrPlugin/CMCCMNCOpList.xml", "<item", readLists},
};

} // namespace

void TestSchemas::loaders()
{
    const QByteArray language = QByteArray::number(Platform::systemLanguageId());
    for (const auto& [schema, name, entry, read] : Loaders) {
        const QString file = installed(name);
        for (const Sample& sample : samplesIn(QString(SAMPLES "/%1.txt").arg(schema))) {
            const QByteArray content = QByteArray(sample.text).replace("LANGID", language);
            writeFile(file, content);
            checkSchema(schema, {file}, read() == content.toLower().count(entry));
            QVERIFY2(!QTest::currentTestFailed(), sample.name + " of " + schema);
        }
        QFile::remove(file);
    }
}

QTEST_GUILESS_MAIN(TestSchemas)
#include "tst_schemas.moc"
