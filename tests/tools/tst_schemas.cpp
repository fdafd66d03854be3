// A file is valid by its schema exactly when the library reads every entry of it.
#include "Change/Change.h"
#include "CoreTest.h"
#include "DataTable.h"
#include "PluginContainer/PluginInspection.h"
#include "PopupMenu/MenuParse.h"
#include "ToolBar/ToolBarLogic.h"
#include "ToolBar/ToolItem.h"
#include "Xmllint.h"
#include "common/CommonUtils.h"
#include "common/StandardConfigParse.h"
#include "common/StatusBarOpListParse.h"

class TestSchemas : public CoreTest
{
    Q_OBJECT

private slots:
    void loaders_data();
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
    {"OperatorList", "plugins/StatusBarMgrPlugin/OperatorList.xml", "<item", readLists},
    {"CPLMNOpList", "plugins/StatusBarMgrPlugin/CPLMNOpList.xml", "<item", readLists},
    {"CMCCMNCOpList", "plugins/StatusBarMgrPlugin/CMCCMNCOpList.xml", "<item", readLists},
};

} // namespace

void TestSchemas::loaders_data()
{
    const auto row = dataTable<QString, QByteArray>("schema", "content");
    const QByteArray a = "<plugin><name>A</name><clsid>A</clsid><url>A</url><static>true</static></plugin>";
    row("plugins", "pluginslib", "<plugins><mainplugin>A</mainplugin>" + a + "</plugins>");
    row("plugins, other order", "pluginslib",
        "<plugins>" + a +
            "<mainplugin>A</mainplugin><plugin><url>B</url><active>true</active><clsid>B</clsid>" +
            "<type>1</type><name>B</name><static>false</static></plugin></plugins>");
    row("no static", "pluginslib",
        "<plugins><plugin><name>B</name><clsid>B</clsid><url>B</url></plugin>" + a +
            "<mainplugin>A</mainplugin></plugins>");
    row("after static", "pluginslib",
        "<plugins><plugin><name>B</name><static/><clsid>B</clsid></plugin><mainplugin>B</mainplugin></"
        "plugins>");

    const QByteArray add = "<plugin><add clsid='B'/></plugin>";
    row("rules", "PluginsConfig",
        "<config><common><item clsid='A'/></common><device name='Lume'>" + add +
            "</device><common/><customize name='northtel'><plugin><remove "
            "clsid='C'/></plugin></customize></config>");
    row("second plugin", "PluginsConfig",
        "<config><device name='Lume'>" + add + "<plugin><add clsid='C'/></plugin></device></config>");
    row("without plugin", "PluginsConfig", "<config><device name='Lume'><add clsid='C'/></device></config>");
    row("item of a rule", "PluginsConfig",
        "<config><device name='Lume'><plugin><item clsid='C'/></plugin></device></config>");

    const QByteArray item = "<item type='ITEM' id='I'>i</item>";
    const QByteArray menu = "<menu parent='null' name='M'><item type='POPUP'>Sub</item>" + item + "</menu>";
    row("menus", "menu", "<qrvldoc>" + menu + "<menu parent='Sub'>" + item + "</menu></qrvldoc>");
    row("menu after the blocks", "menu",
        "<qrvldoc>" + menu + "<customize><b name='x'/></customize>" +
            "<menu parent='null' name='N'/></qrvldoc>");
    row("type of an item", "menu",
        "<qrvldoc><menu parent='null' name='M'><item type='Item'/></menu></qrvldoc>");
    row("item without a menu", "menu", "<qrvldoc>" + item + menu + "</qrvldoc>");
    row("menu's root", "menu", "<qrvldocs>" + menu + "</qrvldocs>");

    const QByteArray button = "<item id='1' enabled='a' disabled='b'/>";
    row("toolbar", "toolbar",
        "<qrvldoc><ToolBar count='1'>" + button + "</ToolBar><GroupInGroup enable='1'/></qrvldoc>");
    row("count", "toolbar", "<qrvldoc><ToolBar count='one'>" + button + "</ToolBar></qrvldoc>");
    row("negative count", "toolbar", "<ToolBar count='-1'>" + button + "</ToolBar>");
    row("toolbar's name", "toolbar", "<qrvldoc><Toolbar count='1'>" + button + "</Toolbar></qrvldoc>");

    const QByteArray condition = "<conditions><item name='c' value='1'/></conditions>";
    const QByteArray result = "<results><item name='r' value='1'/></results>";
    row("configuration", "standard-configuration",
        "<qrvldoc><customize_Info><item name='i' value='1'/></customize_Info><customize_item>" + result +
            condition +
            "</customize_item><customize_Info><item name='j' value='1'/></customize_Info></qrvldoc>");
    row("two items", "standard-configuration",
        "<qrvldoc><customize_Info><item name='i' value='1'/><item name='j' "
        "value='1'/></customize_Info></qrvldoc>");
    row("two of a name", "standard-configuration",
        "<qrvldoc><customize_item>" + condition + "</customize_item><customize_item>" + condition +
            "</customize_item></qrvldoc>");
    row("results outside", "standard-configuration", "<qrvldoc>" + result + "</qrvldoc>");

    row("texts", "language", "<language><item name='A'>a</item><!-- --><item name='B'/></language>");
    row("two of an identifier", "language",
        "<language><item name='A'>a</item><item name='A'>b</item></language>");
    row("no identifier", "language", "<language><item>a</item></language>");
    row("other case", "language", "<language><Item name='A'>a</Item></language>");

    const QByteArray network = "<Item mcc='001' mnc='01' shortdescr='A'/>";
    const QByteArray countries = "<MccOnly><Item mcc='002' shortdescr='C'/></MccOnly>";
    row("networks", "OperatorList",
        "<OperatorList><MccMnc>" + network + "</MccMnc><MccMnc/>" + countries + "</OperatorList>");
    row("two of a code", "OperatorList",
        "<OperatorList><MccMnc>" + network + network + "</MccMnc></OperatorList>");
    row("after the countries", "OperatorList",
        "<OperatorList>" + countries + "<MccMnc>" + network + "</MccMnc></OperatorList>");
    row("list's root", "OperatorList", "<List><MccMnc>" + network + "</MccMnc></List>");
    row("prefixes", "CPLMNOpList",
        "<CPLMN><Item IMSI='00101' operator='A'/><Item IMSI='002010123456789' operator='B'/></CPLMN>");
    row("short prefix", "CPLMNOpList", "<CPLMN><Item IMSI='0010' operator='A'/></CPLMN>");
    row("codes", "CMCCMNCOpList",
        "<CMCCMNC><Item MCCMNC='00101' operator='A'/><Item MCCMNC='001010' operator='B'/></CMCCMNC>");
    row("code without a value", "CMCCMNCOpList", "<CMCCMNC><Item mccmnc='00101' operator='A'/></CMCCMNC>");
}

void TestSchemas::loaders()
{
    QFETCH(QString, schema);
    QFETCH(QByteArray, content);
    const auto* const loader =
        std::find_if(std::begin(Loaders), std::end(Loaders),
                     [&](const Loader& candidate) { return schema == candidate.schema; });
    const QString file = installed(loader->file);
    writeFile(file, content);
    const int read = loader->read();
    const int written = content.toLower().count(loader->entry);
    checkSchema(schema, {file}, read == written);
    QFile::remove(file);
}

QTEST_GUILESS_MAIN(TestSchemas)
#include "tst_schemas.moc"
