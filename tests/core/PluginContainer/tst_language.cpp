// The language of the start: what the customisation asks for, what is installed, and what is stored.
#include "CoreTest.h"
#include "PluginContainer/LanguageChoice.h"
#include "platform/LanguageId.h"

class TestLanguage : public CoreTest
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("LC_ALL", "de_DE.UTF-8"); } // where the environment counts
    void wish_data();
    void wish();
    void store_data();
    void store();
    void records();
    void country_data();
    void country();

private:
    static QString installed(const QString& name)
    {
        return QCoreApplication::applicationDirPath() + '/' + name;
    }

    /// Items of the language area file, each written "long name,id,short code". SYS and USER stand for the
    /// computer's and the user's number.
    static void writeAreas(const QStringList& items)
    {
        QString xml = "<areas>";
        for (const QString& item : items) {
            const QStringList parts = item.split(',');
            xml += "<item lang=\"" + parts[0] + "\" id=\"" + parts[1] + "\">" + parts[2] + "</item>";
        }
        xml.replace("SYS", QString::number(Platform::systemLanguageId()));
        xml.replace("USER", QString::number(Platform::userLanguageId()));
        writeFile(installed("LangAreaForShort.xml"), xml.toUtf8() + "</areas>");
    }

    static void writeInstalled(const QStringList& names)
    {
        QByteArray ini = "[language]\n";
        for (const QString& name : names)
            ini += "lang" + QByteArray::number(ini.size()) + '=' + name.toUtf8() + '\n';
        writeFile(installed("SysConfig.dat"), ini);
    }

    std::unique_ptr<TestContainer> startWithoutWish()
    {
        auto container = makeContainer(QByteArray("<l/>"));
        service().reset();
        return container;
    }
};

void TestLanguage::wish_data()
{
    QTest::addColumn<QString>("wish");
    QTest::addColumn<QStringList>("languages");
    QTest::addColumn<QStringList>("areas");
    QTest::addColumn<QString>("adapter");
    const QStringList both{"English", QString::fromUtf8("Français")};
    const QStringList areas{QString::fromUtf8("Français,USER,fr-fr"), "English,1,en-us", "Deutsch,2,de-de"};
    const auto row = [](const char* name, const char* text, const QStringList& languages,
                        const QStringList& records, const char* adapter) {
        QTest::newRow(name) << text << languages << records << adapter;
    };
    row("no wish", "", both, areas, "");
    row("other words", "System|AREA| area|systems", both, areas, "");
    row("user's", "area", both, areas, "_fr-fr");
    row("odd separators", "||x,|area|", both, areas, "_fr-fr");
    row("system wins", "area|system", both, {"English,0SYS,xx-xx", "English,SYS,en-us"}, "_en-us");
    row("first record wins", "area", both, {"English,USER,en-gb", "English,USER,en-us"}, "_en-gb");
    row("not installed", "area", {"Deutsch"}, {"English,USER,en-us", "deutsch,2,de-de"}, "_de-de");
    row("case of long names", "area", {"english"}, {"English,USER,en-gb"}, "_en-gb"); // as the first language
    row("unknown first language", "area", {"Polski"}, areas, "_en-us");
    row("none installed", "area", {}, areas, "");
    row("no records", "area", {"Deutsch"}, {}, "_en-us");
    row("records without attributes", "area", {"0"}, {",,x"}, "_en-us");
}

void TestLanguage::wish()
{
    QFETCH(QString, wish);
    QFETCH(QStringList, languages);
    QFETCH(QStringList, areas);
    writeInstalled(languages);
    writeAreas(areas);
    const auto container = startWithoutWish();
    if (!wish.isEmpty())
        service().setSetting("customize", "adaptertype", wish, ScriptedDeviceService::Ini);
    QTEST(container->GetAdapterLang(), "adapter");
    const QStringList parts = wish.split('|');
    const bool followsUser = parts.contains("area") && !parts.contains("system");
    QCOMPARE(container->GetCurrentSystemLang(),
             QString::number(followsUser ? Platform::userLanguageId() : Platform::systemLanguageId()));
}

void TestLanguage::store_data()
{
    QTest::addColumn<QString>("mark");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QStringList>("writes"); // section and key, and the value
    const QString adapter = "customize, adaptertype, _fr-fr";
    QTest::newRow("first start") << ""
                                 << "" << QStringList({"Startup, init, true", adapter});
    QTest::newRow("later start") << "true"
                                 << "" << QStringList({"language, active, _fr-fr", adapter});
    QTest::newRow("changed") << "true"
                             << "_en-us" << QStringList({"language, active, _fr-fr", adapter});
    QTest::newRow("unchanged") << "true"
                               << "_fr-fr" << QStringList();
    QTest::newRow("unchanged at the first start") << ""
                                                  << "_fr-fr" << QStringList();
}

void TestLanguage::store()
{
    QFETCH(QString, mark);
    QFETCH(QString, stored);
    QFETCH(QStringList, writes);
    writeInstalled({"Francais"});
    writeAreas({"Francais,USER,fr-fr"});
    const auto container = startWithoutWish();
    service().setSetting("customize", "adaptertype", "area", ScriptedDeviceService::Ini);
    service().setSetting("customize", "adaptertype", stored);
    service().setSetting("Startup", "init", mark);
    container->setStartupLanguage();
    for (QString& write : writes)
        write = "QRVL_SetSettings(" + write + ')';
    QCOMPARE(service().calls(), writes);
}

// Every field of a record; a damaged file gives what stands before the fault, and a missing one nothing.
void TestLanguage::records()
{
    const auto container = startWithoutWish();
    writeFile(
        installed("LangAreaForShort.xml"),
        "<a><g><item lang='L' id='7' maccode='m' linuxcode='n'>x-y</item></g><Item/><item/><b></a><item/>");
    QList<LanguageInfoEx> found;
    QVERIFY(container->GetCurLanguageInfo(found));
    QCOMPARE(found.size(), 2);
    QCOMPARE(found[0].id + found[0].lang + found[0].shortName + found[0].maccode + found[0].linuxcode,
             QString("7L_x-ymn"));
    QCOMPARE(found[1].shortName, QString("_"));
    QVERIFY(log().contains("{file}: GetCurLanguageInfo: Read Error: n"));

    QFile::remove(installed("LangAreaForShort.xml"));
    QVERIFY(!container->GetCurLanguageInfo(found));
    QCOMPARE(found.size(), 2);
    QCOMPARE(container->decideDefaultLanguage({"L"}), QString("_en-us"));
    writeFile(installed("SysConfig.dat"), "[language\nnonsense");
    QStringList languages{"before"};
    QVERIFY(!container->getLanguageList(languages));
    QCOMPARE(languages, QStringList("before"));
}

void TestLanguage::country_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("chosen"); // empty: any
    QTest::newRow("country") << "zh_cn" << QStringList({"_zh-tw", "_zh-cn", "_en-us"}) << "_zh-cn";
    QTest::newRow("country of another language") << "fr_ch" << QStringList({"_de-ch", "_fr-fr"}) << "_de-ch";
    QTest::newRow("case counts") << "zh_CN" << QStringList({"_zh-cn", "_zh-CN"}) << "_zh-CN";
    QTest::newRow("no country") << "c" << QStringList({"_zh-cn", "_x"}) << "_x";
    QTest::newRow("none") << "de_de" << QStringList({"_zh-cn", "_zh-tw"}) << "";
}

void TestLanguage::country()
{
    QFETCH(QStringList, names);
    QFETCH(QString, locale);
    QFETCH(QString, chosen);
    QHash<QString, QString> candidates;
    for (const QString& name : names)
        candidates.insert("long " + name, name);
    const QString answer = LanguageChoice::ofCountry(candidates, locale);
    QVERIFY(chosen.isEmpty() ? names.contains(answer) : answer == chosen);
}

QTEST_GUILESS_MAIN(TestLanguage)
#include "tst_language.moc"
