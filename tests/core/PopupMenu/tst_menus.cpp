#include "PopupMenu/MenuParse.h"
#include "PopupMenu/QBuildMenu.h"

#include "CoreTest.h"
#include "Samples.h"
#include "common/CommonUtils.h"

#include <QMenu>
#include <QXmlStreamReader>

using namespace MENU;

namespace {

const QByteArray OneItem = "<menu parent='null' name='M'><item type='ITEM' id='IDS_A'>a</item></menu>";

/// The texts of a menu's actions, "-" for separators and sub-menus in brackets.
QString shown(const QMenu& menu)
{
    QStringList parts;
    for (const QAction* const action : menu.actions()) {
        parts += action->isSeparator() ? "-" : action->text();
        if (action->menu())
            parts.last() += '[' + shown(*action->menu()) + ']';
    }
    return parts.join(' ');
}

} // namespace

class TestMenus : public CoreTest
{
    Q_OBJECT

private slots:
    void reading();
    void failures();
    void editing();
    void building();
    void nothingToBuild();

private:
    static void write(const QByteArray& content)
    {
        writeFile(installed("plugins/TestPlugin/menu.xml"), "<x><qrvldoc>" + content + "</qrvldoc></x>");
    }

    /// What is built from the menus "M" and "N" of the file: "M[Open(IDS_OPEN) - Sub(IDS_SUB)[Child(IDS_CHILD)]]".
    static QByteArray built()
    {
        QStringList menus;
        QBuildMenu builder("TestPlugin", "menu.xml");
        for (const QString name : {"M", "N"}) {
            QWidget parent;
            QList<QActionInfo> actions;
            const auto* const menu = reinterpret_cast<QMenu*>(builder.CreateMenuBar(name, &parent, &actions));
            for (const QActionInfo& info : qAsConst(actions))
                if (info.action->parent() == &parent)
                    info.action->setText(info.action->text() + '(' + info.textID + ')');
            if (menu && menu->parentWidget() == &parent)
                menus += name + '[' + shown(*menu) + ']';
        }
        return menus.join(' ').toUtf8();
    }
};

/// Blocks of the samples customise a menu with an item and a sub-menu. They follow a block for another name.
void TestMenus::reading()
{
    const QByteArray beforeBlocks = "<menu parent='null' name='M'><item type='ITEM' id='IDS_A'>a</item>"
                                    "<item type='POPUP' id='IDS_S'>S</item></menu>"
                                    "<menu parent='S'><item type='ITEM' id='IDS_B'>b</item></menu>"
                                    "<customize><other name='nobody'><menu parent='null' name='M'>"
                                    "<item action='rem' type='ITEM' id='IDS_A'/></menu></other>";
    service().setCustomizeName("bluewave");
    for (const Sample& sample : samplesIn(SAMPLES "/menus.txt")) {
        const bool isBlock = sample.body().startsWith("<block");
        const QByteArray content = isBlock ? beforeBlocks + sample.body() + "</customize>" : sample.body();
        write(content);
        log().clear();
        const QByteArray menus = built();
        QVERIFY2(sample.firstLine() == "= " + menus, sample.name + ": " + menus);
        QCOMPARE(log().contains("{file}: ReadMenuItem:read traymenu customization "),
                 content.contains("<customize"));
    }
}

void TestMenus::failures()
{
    MenuParse parser;
    QVERIFY(!parser.LoadFile("TestPlugin", "missing.xml"));
    QVERIFY(log().contains("File {*}/plugins/TestPlugin/missing.xml does not exist"));
    QVERIFY(QDir().mkpath(installed("plugins/TestPlugin/folder.xml")));
    QVERIFY(!parser.LoadFile("TestPlugin", "folder.xml"));
    QVERIFY(log().contains("{time} : {file}: LoadFile: file open error"));
    write("<menu parent='null' name='N'><item type='SEPERATOR' id='IDS_B'>b</item></menu>");
    QVERIFY(!parser.LoadFile("TestPlugin", "menu.xml"));
    QVERIFY(parser.GetMenuInfoList()->first()->items->first()->GetMenuTextID().isEmpty());
    QCOMPARE(log().count("{file}: ReadInfo:open file "), 1);
    writeFile(installed("plugins/TestPlugin/other.xml"), "<x>" + OneItem + "</x>");
    QVERIFY(parser.LoadFile("TestPlugin", "other.xml"));
    QCOMPARE(parser.GetMenuInfoList()->size(), 1);
    writeFile(installed("plugins/TestPlugin/other.xml"), "<x>");
    QXmlStreamReader noDevice;
    QVERIFY(!parser.LoadFile("TestPlugin", "other.xml") && !parser.ReadFile(noDevice));

    write("<menu parent='null' name='M'><item type='ITEM'>" + QByteArray("<deep>").repeated(100000));
    QCOMPARE(built(), "M[()]");

    service().setCustomizeName(""); // the part itself applies
    write(OneItem + "<customize><menu parent='null' name='M'>"
                    "<item action='rem' type='ITEM' id='IDS_A'/></menu></customize>");
    QCOMPARE(built(), "M[]");
    QVERIFY(log().contains("{file}: CustomizeItemParse:ReadMenuItem "));
    service().setCustomizeName("blå");
    QCOMPARE(parser.GetOperator(), "blå");
    service().setResult("QRVL_DevSrv_GetCustomizeName", 1);
    QCOMPARE(parser.GetOperator(), "");
}

void TestMenus::editing()
{
    MenuParse parser;
    QVERIFY(!parser.AddMenuItem("M", "null") && !parser.AddMenuPopup("M"));
    QVERIFY(log().contains("{file}: AddMenuPopup:AddMenuPopup "));
    write(OneItem);
    parser.LoadFile("TestPlugin", "menu.xml");
    MenuXmlInfo* const sub = parser.AddMenuPopup("M");
    sub->SetMenuName("S");
    QCOMPARE(parser.AddMenuType("M", "S", MenuXmlInfo::Popup)->GetMenuType(), int(MenuXmlInfo::Unset));
    sub->SetMenuName("T"); // the next child is sought anew
    QVERIFY(!parser.AddMenuItem("M", "S"));
    QVERIFY(parser.AddMenuItem("M", "T"));
    sub->SetPopupMenuList(sub->GetPopupMenuList());
    QCOMPARE(sub->GetPopupMenuList()->size(), 2);
    sub->releaseXMlInfo();
    QVERIFY(!sub->GetPopupMenuList());
    QVERIFY(!parser.AddMenuItem("M", "T")); // without a list there is no place
    delete parser.GetMenuInfoList()->first()->items->takeLast();
    QVERIFY(!parser.AddMenuItem("M", "T")); // it is gone
    parser.release();
    QVERIFY(parser.GetMenuInfoList()->isEmpty());

    MenuXmlInfo chain; // nested far deeper than a stack is
    MenuXmlInfo* deepest = &chain;
    for (int i = 0; i < 200000; ++i) {
        deepest->SetPopupMenuList(new QList<MenuXmlInfo*>{new MenuXmlInfo});
        deepest = deepest->GetPopupMenuList()->first();
    }
}

/// Samples say what is built with and without the configurable separator.
void TestMenus::building()
{
    for (const Sample& sample : samplesIn(SAMPLES "/built.txt")) {
        write(sample.body());
        QByteArrayList menus;
        for (const bool hasSeparator : {true, false}) {
            CommonUtils::SetSMSSeperatorConfigValue(hasSeparator);
            menus += built();
        }
        QVERIFY2(sample.firstLine() == "= " + menus.join(" / "), sample.name + ": " + menus.join(" / "));
    }
    VERIFY_LOGGED_IN_ORDER("{file}: CreateMenuBar:CreateMenuBar ", "{file}: AddMenuItem:AddMenuItem ");
    QWidget parent;
    QList<QActionInfo> actions;
    QBuildMenu("TestPlugin", "menu.xml").CreateMenuBar("M", &parent, &actions); // of the last sample
    QStringList records;
    for (const QActionInfo& info : qAsConst(actions))
        records += info.action->text() + ' ' + info.textID + ' ' + info.popupParent;
    QCOMPARE(records.join(", "), "S IDS_S , b IDS_B S, c IDS_C S, a IDS_A null");
}

void TestMenus::nothingToBuild()
{
    write(OneItem + "<menu parent='null' name=''/>");
    writeFile(installed("plugins/menu.xml"), contentOf(installed("plugins/TestPlugin/menu.xml")));
    QWidget parent;
    QList<QActionInfo> actions;
    QVERIFY(!QBuildMenu("", "menu.xml").CreateMenuBar("M", &parent, &actions));
    QVERIFY(!QBuildMenu("TestPlugin", "").CreateMenuBar("M", &parent, &actions));
    QBuildMenu builder("TestPlugin", "menu.xml");
    for (const char* name : {"N", ""})
        QVERIFY(!builder.CreateMenuBar(name, &parent, &actions));
    QVERIFY(!builder.CreateMenuBar("M", nullptr, &actions));
    STMENUINFO menu;
    menu.items->append(new MenuXmlInfo);
    menu.items->first()->SetMenuType(MenuXmlInfo::Popup);
    QMenu target;
    QCOMPARE(builder.AddMenuItem(&menu, nullptr, &parent, &actions), 1);
    QCOMPARE(builder.AddMenuItem(nullptr, &target, &parent, &actions), 1);
    QVERIFY(actions.isEmpty());
    QCOMPARE(builder.AddMenuItem(&menu, &target, &parent, &actions), 0); // a sub-menu without a list
    menu.items->first()->SetPopupMenuList(new QList<MenuXmlInfo*>{new MenuXmlInfo}); // child of no type
    QCOMPARE(builder.AddMenuItem(&menu, &target, &parent, &actions), 1);
    QVERIFY(target.actions().last()->menu()->isEmpty());
}

QTEST_MAIN(TestMenus)

#include "tst_menus.moc"
