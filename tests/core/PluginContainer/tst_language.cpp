// The language of the start: what the customisation asks for, what is installed, and what is stored.
#include "CoreTest.h"
#include "PluginContainer/LanguageChoice_p.h"
#include "platform/LanguageId_p.h"

class TestLanguage : public CoreTest
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("LC_ALL", "de_DE.UTF-8"); } // the user's, where the environment counts
    void wish();
    void store();
    void files();
    void country();

private:
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
};

void TestLanguage::wish()
{
    const auto container = makeContainer(QByteArray("<l/>"));
    const QString french = QString::fromUtf8("Français");
    const QStringList areas{french + ",USER,fr-fr", "English,1,en-us", "deutsch,2,de-de"};
    const struct
    {
        const char* adapterType;
        QString languages; // as SysConfig.dat lists them
        QStringList areas;
        const char* language;
    } cases[] = {
        {"System|AREA| area|systems", "a=" + french, areas, ""},
        {"||x,|area|", "a=English\nb=" + french, areas, "_fr-fr"},
        {"area|system", "a=English", {"English,0SYS,xx-xx", "English,SYS,en-gb"}, "_en-gb"},
        {"area", "a=English", {"English,USER,en-gb", "English,USER,en-us"}, "_en-gb"},
        {"area", "a=Deutsch", areas, "_de-de"}, // not the user's, so the first installed one
        {"area", "a=Polski", areas, "_en-us"},
        {"area", "a=Deutsch", {}, "_en-us"},
        {"area", "[other]\na=English", areas, ""},
    };
    QCOMPARE(container->GetAdapterLang(), QString());
    for (const auto& row : cases) {
        writeFile(installed("SysConfig.dat"), "[language]\n" + row.languages.toUtf8());
        writeAreas(row.areas);
        service().setSetting("customize", "adaptertype", row.adapterType, ScriptedDeviceService::Ini);
        QCOMPARE(container->GetAdapterLang(), QString(row.language));
    }
}

void TestLanguage::store()
{
    const auto container = makeContainer(QByteArray("<l/>"));
    const QString adapter = "QRVL_SetSettings(customize, adaptertype, _en-gb)";
    const struct
    {
        QString mark;
        QString stored;
        QStringList writes;
    } cases[] = {
        {"", "", {"QRVL_SetSettings(Startup, init, true)", adapter}},
        {"true", "", {"QRVL_SetSettings(language, active, _en-gb)", adapter}},
        {"true", "_en-us", {"QRVL_SetSettings(language, active, _en-gb)", adapter}},
        {"true", "_en-gb", {}},
        {"", "_en-gb", {}},
    };
    writeFile(installed("SysConfig.dat"), "[language]\na=English\n");
    writeAreas({"English,USER,en-gb"});
    for (const auto& row : cases) {
        service().reset();
        service().setSetting("customize", "adaptertype", "area", ScriptedDeviceService::Ini);
        service().setSetting("customize", "adaptertype", row.stored);
        service().setSetting("Startup", "init", row.mark);
        container->setStartupLanguage();
        QCOMPARE(service().calls(), row.writes);
    }
}

// A damaged file gives what stands before the fault, and a missing one nothing.
void TestLanguage::files()
{
    const auto container = makeContainer(QByteArray("<l/>"));
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
    QCOMPARE(container->decideDefaultLanguage({"L"}), QString("_en-us"));
    writeFile(installed("SysConfig.dat"), "[language\nnonsense");
    QStringList languages;
    QVERIFY(!container->getLanguageList(languages));
}

void TestLanguage::country()
{
    const QHash<QString, QString> candidates{{"a", "_zh-tw"}, {"b", "_zh-cn"}, {"c", "_de-ch"}, {"d", "_x"}};
    QCOMPARE(LanguageChoice::ofCountry(candidates, "zh_cn"), QString("_zh-cn"));
    QCOMPARE(LanguageChoice::ofCountry(candidates, "fr_ch"), QString("_de-ch")); // whatever the language
    QCOMPARE(LanguageChoice::ofCountry(candidates, "c"), QString("_x"));
    QVERIFY(candidates.values().contains(LanguageChoice::ofCountry(candidates, "zh_CN"))); // any
}

QTEST_GUILESS_MAIN(TestLanguage)
#include "tst_language.moc"
