#include "PopupMenu/MenuParse.h"
#include "PopupMenu/QBuildMenu.h"

#include "CoreTest.h"
#include "common/CommonUtils.h"

#include <QAction>
#include <QMenu>
#include <QXmlStreamReader>

using namespace MENU;

namespace {

/// The entries as one string: "Open(IDS_OPEN) - Sub(IDS_SUB)[Child(IDS_CHILD) -]".
QString outline(const QList<MenuXmlInfo*>& entries)
{
    QStringList parts;
    for (const MenuXmlInfo* const entry : entries) {
        QString part;
        entry->GetMenuName(part);
        part += '(' + entry->GetMenuTextID() + ')';
        if (entry->GetMenuType() == MenuXmlInfo::Separator)
            part = QStringLiteral("-");
        else if (entry->GetMenuType() == MenuXmlInfo::Popup)
            part += QLatin1Char('[') + outline(*entry->GetPopupMenuList()) + QLatin1Char(']');
        parts.append(part);
    }
    return parts.join(QLatin1Char(' '));
}

QString outline(const MenuParse& parser)
{
    QStringList menus;
    for (const STMENUINFO* const menu : qAsConst(*parser.GetMenuInfoList()))
        menus.append(menu->name + QLatin1String(": ") + outline(*menu->items));
    return menus.join(QLatin1String("; "));
}

/// The texts of a menu's actions, "-" for separators and sub-menus in brackets.
QString shown(const QMenu& menu)
{
    QStringList parts;
    for (const QAction* const action : menu.actions()) {
        QString part = action->isSeparator() ? QStringLiteral("-") : action->text();
        if (action->menu())
            part += QLatin1Char('[') + shown(*action->menu()) + QLatin1Char(']');
        parts.append(part);
    }
    return parts.join(QLatin1Char(' '));
}

QByteArray item(const QByteArray& name, const QByteArray& type = "ITEM")
{
    return "<item type='" + type + "' id='IDS_" + name.toUpper() + "'>" + name + "</item>";
}

QByteArray popup(const QByteArray& name)
{
    return item(name, "POPUP");
}

QByteArray change(const QByteArray& action, const QByteArray& item)
{
    return QByteArray(item).replace("<item ", "<item action='" + action + "' ");
}

const QByteArray Separator = "<item type='SEPERATOR'/>";

QByteArray within(const QByteArray& parent, const QByteArray& content, const QByteArray& name = {})
{
    return "<menu parent='" + parent + "' name='" + name + "'>" + content + "</menu>";
}

QByteArray menu(const QByteArray& name, const QByteArray& content)
{
    return within("null", content, name);
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
    void write(const QByteArray& content) const
    {
        writeFile(installed("plugins/TestPlugin/menu.xml"), "<x><qrvldoc>" + content + "</qrvldoc></x>");
    }
};

void TestMenus::reading()
{
    const QByteArray plain = menu("M", item("a") + popup("S")) + within("S", item("b"));
    const QString unchanged = "M: a(IDS_A) S(IDS_S)[b(IDS_B)]";
    const QByteArray add = within("null", change("add", item("c")), "M");
    const auto custom = [&](const QByteArray& content, const QByteArray& name = "bluewave") {
        return plain + "<customize><other name='" + (name.isEmpty() ? "bluewave" : "nobody") + "'>" +
               within("null", change("rem", item("a")), "M") + "</other><block name='" + name + "'>" +
               content + "</block></customize>";
    };
    const std::pair<QByteArray, QString> rows[] = {
        {"", ""},
        {menu("M", item("a") + Separator + item("b")), "M: a(IDS_A) - b(IDS_B)"},
        {menu("M", item("a")) + menu("N", item("b")), "M: a(IDS_A); N: b(IDS_B)"},
        {menu("M", popup("S")) + menu("N", popup("S")) + within("S", item("a")),
         "M: S(IDS_S)[]; N: S(IDS_S)[a(IDS_A)]"}, // the sub-menu of the menu before
        {menu("M", popup("S") + popup("T")) + within("S", item("a") + Separator) + within("T", item("b")) +
             within("S", item("c")),
         "M: S(IDS_S)[a(IDS_A) - c(IDS_C)] T(IDS_T)[b(IDS_B)]"},
        {menu("M", popup("S")) + within("S", popup("T")), "M: S(IDS_S)[] T(IDS_T)[]"}, // no deeper nesting
        {menu("M", item("a")) + within("S", item("b") + Separator), "M: a(IDS_A)"},
        {menu("M", item("S")) + within("S", item("b")), "M: S(IDS_S)"}, // an item is no sub-menu
        {menu("M", popup("T") + popup("S")) + within("S", item("a")) + menu("N", popup("S") + popup("S")) +
             within("S", item("b")),
         "M: T(IDS_T)[] S(IDS_S)[a(IDS_A)]; N: S(IDS_S)[b(IDS_B)] S(IDS_S)[]"}, // the first of two
        {item("a") + menu("M", item("b")), "M: b(IDS_B)"},
        {menu("M", "<item type='Item'>a</item><entry>" + item("b") + "</entry>"), "M: b(IDS_B)"},
        {menu("M", "") + "<menu name='N'>" + item("a") + "</menu>", "M: "}, // without a parent
        {menu("M", "<item type='ITEM'>a<b>c</b>d</item>" + item("e")), "M: ad() e(IDS_E)"},
        {menu("M", item("a") + "<item type='ITEM'>b<"), "M: a(IDS_A) b()"},
        {custom(add, "redline"), unchanged},
        {custom(add), unchanged + " c(IDS_C)"},
        {custom(within("S", Separator + change("add", item("c")), "M")),
         "M: a(IDS_A) S(IDS_S)[b(IDS_B) - c(IDS_C)]"},
        {custom(within("null", change("add", popup("T")), "M") + within("T", change("add", item("c")), "M")),
         unchanged + " T(IDS_T)[c(IDS_C)]"},
        {custom(within("null", change("rem", item("a")), "M")), "M: S(IDS_S)[b(IDS_B)]"},
        {custom(within("null", change("rem", item("s")), "M")), "M: a(IDS_A)"}, // whatever has the identifier
        {custom(within("S", change("rem", item("b")), "M")), "M: a(IDS_A) S(IDS_S)[]"},
        {custom(within("null", change("rem", popup("S")), "M")), "M: a(IDS_A)"},
        {custom(within("null", change("rem", item("c") + popup("a")), "M") + // what is not there
                within("T", change("rem", item("b")), "M") + within("null", change("rem", item("a")), "N")),
         unchanged},
        {custom(add + within("null", change("add", item("d")))), unchanged + " c(IDS_C)"}, // names no menu
        {custom(add + "</block><block name='redline'>" + within("null", change("add", item("d")), "M")),
         unchanged + " c(IDS_C) d(IDS_D)"},                                 // to the end of the part
        {custom(within("null", item("c"), "M")), unchanged},                // no action
        {custom(within("null", change("add", item("c")), "N")), unchanged}, // makes no menu
        {custom(add, ""), "M: S(IDS_S)[b(IDS_B)] c(IDS_C)"}, // without a name: to the end of the part
        {custom("") + menu("N", item("d")), unchanged + "; N: d(IDS_D)"},
    };
    service().setCustomizeName("bluewave");
    for (const auto& [content, menus] : rows) {
        log().clear();
        write(content);
        QCOMPARE(outline(MenuParse("TestPlugin", "menu.xml")), menus);
        QCOMPARE(log().contains("{file}: ReadMenuItem:read traymenu customization "),
                 content.contains("<cus"));
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
    write(menu("M", item("a")));
    QVERIFY(!parser.LoadFile("TestPlugin", "menu.xml"));
    QCOMPARE(log().count("{file}: ReadInfo:open file "), 1);
    writeFile(installed("plugins/TestPlugin/other.xml"), "<x>" + menu("M", item("a")) + "</x>");
    QVERIFY(parser.LoadFile("TestPlugin", "other.xml"));
    QCOMPARE(outline(parser), "M: a(IDS_A)");
    QXmlStreamReader noDevice;
    QVERIFY(!parser.ReadFile(noDevice));

    const QByteArray deep = QByteArray("<a>").repeated(100000);
    write(menu("M", item("a") + "<item type='ITEM'>" + deep));
    QCOMPARE(outline(MenuParse("TestPlugin", "menu.xml")), "M: a(IDS_A) ()");

    service().setCustomizeName(""); // the part itself applies
    write(menu("M", "") + "<customize>" + within("null", change("add", item("c")), "M") + "</customize>");
    QCOMPARE(outline(MenuParse("TestPlugin", "menu.xml")), "M: c(IDS_C)");
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
    write(menu("M", ""));
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
    delete parser.GetMenuInfoList()->first()->items->takeFirst();
    QVERIFY(!parser.AddMenuItem("M", "T")); // it is gone
    parser.release();
    QVERIFY(parser.GetMenuInfoList()->isEmpty());

    MenuXmlInfo chain; // nested far deeper than a stack is
    MenuXmlInfo* deepest = &chain;
    for (int i = 0; i < 200000; ++i) {
        auto* const next = new MenuXmlInfo;
        deepest->SetPopupMenuList(new QList<MenuXmlInfo*>{next});
        deepest = next;
    }
}

void TestMenus::building()
{
    const QByteArray search = item("menu_search");
    const std::tuple<QByteArray, bool, QString> rows[] = {
        {menu("M", item("a") + Separator + item("b")), false, "a - b"},
        {menu("M", search + Separator + item("a")), true, "menu_search - a"},
        {menu("M", search + Separator + item("a")), false, "menu_search a"},
        {menu("M", search + Separator + Separator + item("a")), false, "menu_search - a"},
        {menu("M", search + item("a") + Separator + item("b")), false, "menu_search a b"},
        {menu("M", popup("menu_search") + Separator + item("a")), false, "menu_search[] a"},
        {menu("M", popup("S") + item("a")) + within("S", item("b") + Separator + item("c")), false,
         "S[b - c] a"},
    };
    QStringList records;
    for (const auto& [content, hasSeparator, expected] : rows) {
        CommonUtils::SetSMSSeperatorConfigValue(hasSeparator);
        write(content);
        QBuildMenu builder("TestPlugin", "menu.xml");
        QWidget parent;
        QList<QActionInfo> actions;
        const auto* const built = reinterpret_cast<QMenu*>(builder.CreateMenuBar("M", &parent, &actions));
        QVERIFY(built && built->parentWidget() == &parent);
        QCOMPARE(shown(*built), expected);
        records.clear();
        for (const QActionInfo& info : qAsConst(actions))
            if (info.action->parent() == &parent)
                records.append(info.action->text() + ' ' + info.textID + ' ' + info.popupParent);
    }
    QCOMPARE(records.join(", "), "S IDS_S , b IDS_B S, c IDS_C S, a IDS_A null");
    VERIFY_LOGGED_IN_ORDER("{file}: CreateMenuBar:CreateMenuBar ", "{file}: AddMenuItem:AddMenuItem ");
}

void TestMenus::nothingToBuild()
{
    write(menu("M", item("a")) + menu("", item("b")));
    QWidget parent;
    QList<QActionInfo> actions;
    QCOMPARE(QBuildMenu("", "menu.xml").CreateMenuBar("M", &parent, &actions), quintptr(0));
    QCOMPARE(QBuildMenu("TestPlugin", "").CreateMenuBar("M", &parent, &actions), quintptr(0));
    QBuildMenu builder("TestPlugin", "menu.xml");
    QCOMPARE(builder.CreateMenuBar("N", &parent, &actions), quintptr(0));
    QCOMPARE(builder.CreateMenuBar("", &parent, &actions), quintptr(0));
    QCOMPARE(builder.CreateMenuBar("M", nullptr, &actions), quintptr(0));
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
