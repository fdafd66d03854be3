// The start-up language: what the customisation asks for, what is installed, what is stored and loaded.
#include "Change/Change.h"
#include "CoreTest.h"
#include "DataTable.h"
#include "LogOrder.h"
#include "platform/LanguageId_p.h"

#include <QDir>

class TestLanguage : public CoreTest
{
    Q_OBJECT

private slots:
    void wish_data();
    void wish();
    void start_data();
    void start();
    void files();
    void country();

private:
    /// Items of LangAreaForShort.xml, each "long name,id,short code". SYS and USER are replaced by the identifiers
    /// of the system's and the user's language.
    static void writeAreas(const QStringList& items)
    {
        QString xml;
        for (const QString& item : items)
            xml += QString("<item lang='%1' id='%2'>%3</item>")
                       .arg(item.section(',', 0, 0), item.section(',', 1, 1), item.section(',', 2));
        xml.replace("SYS", QString::number(Platform::systemLanguageId()));
        xml.replace("USER", QString::number(Platform::userLanguageId()));
        writeFile(installed("LangAreaForShort.xml"), "<areas>" + xml.toUtf8() + "</areas>");
    }

    /// QSettings does not read a file again whose size and time have not changed: each gets its own time.
    static void writeInstalled(const QString& lines)
    {
        static QDateTime time = QDateTime::currentDateTime();
        time = time.addSecs(2);
        writeFile(installed("SysConfig.dat"), lines.toUtf8());
        QFile file(installed("SysConfig.dat"));
        QVERIFY(file.open(QIODevice::ReadWrite) && file.setFileTime(time, QFileDevice::FileModificationTime));
    }
};

void TestLanguage::wish_data()
{
    const auto row =
        dataTable<QString, QString, QStringList, QString>("adapterType", "installed", "areas", "language");
    const bool isOne = Platform::systemLanguageId() == Platform::userLanguageId();
    const QString both = "[language]\na=English\nb=Polski";
    const QString french = QString::fromUtf8("[language]\nb=Français");
    const QStringList areas{QString::fromUtf8("Français,USER,fr-fr"), "English,1,en-us", "deutsch,2,de-de"};
    const QStringList systemLast{"English,0SYS,xx-xx", "Polski,USER,pl-pl", "English,SYS,en-gb"};
    row("no such word", "System|AREA| area|systems", french, areas, "");
    row("word among others", "||x,|area|", french + "\na=English", areas, "_fr-fr");
    row("system wins", "area|system", both, systemLast, isOne ? "_pl-pl" : "_en-gb");
    row("user's", "area", both, {"English,SYS,en-gb", "Polski,USER,pl-pl"}, isOne ? "_en-gb" : "_pl-pl");
    row("first item", "area", both, {"Polski,USER,pl-pl", "English,USER,en-gb"}, "_pl-pl");
    row("exact case", "area", "[language]\na=Polski\nb=english",
        {"English,USER,en-gb", "polski,1,xx-xx", "Polski,2,pl-pl"}, "_xx-xx");
    row("first by key", "area", "[language]\nz=Polski\na=Deutsch", areas, "_de-de");
    row("unknown", "area", "[language]\na=Polski", areas, "_en-us");
    row("no areas", "area", "[language]\na=Deutsch", {}, "_en-us");
    row("none installed", "area", "[other]\na=English", areas, "");
}

void TestLanguage::wish()
{
    QFETCH(QString, adapterType);
    QFETCH(QString, installed);
    QFETCH(QStringList, areas);
    const auto container = makeContainer(QByteArray("<l/>"));
    QCOMPARE(container->GetAdapterLang(), QString());
    service().setSetting("customize", "adaptertype", adapterType, ScriptedDeviceService::Ini);
    writeInstalled(installed);
    writeAreas(areas);
    QTEST(container->GetAdapterLang(), "language");
}

void TestLanguage::start_data()
{
    const auto row = dataTable<QString, QString, QString, QStringList, QStringList, QString>(
        "adapterType", "mark", "stored", "languages", "writes", "language");
    const QString init = "QRVL_SetSettings(Startup, init, true)";
    const QString adapter = "QRVL_SetSettings(customize, adaptertype, _en-gb)";
    const QString active = "QRVL_SetSettings(language, active, _en-gb)";
    row("very first", "area", "TRUE", "", {"fr-fr", "en-gb"}, {init, adapter}, "fr-fr");
    row("new request", "area", "true", "", {"fr-fr", "en-gb"}, {active, adapter}, "en-gb");
    row("other request", "area", "true", "_x", {"en-gb"}, {active, adapter}, "en-gb");
    row("same request", "area", "true", "_en-gb", {"fr-fr", "en-gb"}, {}, "fr-fr");
    row("same, unmarked", "area", "", "_en-gb", {"fr-fr", "en-gb"}, {}, "fr-fr");
    row("no request", "", "true", "_en-us", {"fr-fr", "en-gb"}, {}, "fr-fr");
    row("no file", "", "", "", {"en-us"}, {"QRVL_SetSettings(language, active, _en-us)"}, "en-us");
}

// The container's constructor settles the language, then loads the main frame's texts.
void TestLanguage::start()
{
    QFETCH(QString, adapterType);
    QFETCH(QString, mark);
    QFETCH(QString, stored);
    QFETCH(QStringList, languages);
    QFETCH(QString, language);
    const QString folder = installed("plugins/XFramePlugin");
    QDir(folder).removeRecursively();
    for (const QString& code : languages)
        writeFile(folder + "/XFramePlugin_" + code + ".lang", "<item name='A'>" + code.toUtf8() + "</item>");
    writeInstalled("[language]\na=English\n");
    writeAreas({"English,USER,en-gb"});
    Change::m_languageHash = {{"XFramePlugin", {}}};
    service().setSetting("language", "active", "_fr-fr");
    service().setSetting("customize", "adaptertype", adapterType, ScriptedDeviceService::Ini);
    service().setSetting("customize", "adaptertype", stored);
    service().setSetting("Startup", "init", mark);
    makeContainer(QByteArray("<l/>"));
    QTEST(service().calls().filter("QRVL_SetSettings"), "writes");
    QCOMPARE(Change::GetLangName(), language);
    QCOMPARE(Change::m_languageHash["XFramePlugin"]["A"], language);
    QCOMPARE(log().contains("{time}: {file}: PluginContainer: load XFramePlugin lan file failed"),
             language == "en-us");
}

// A damaged file gives what precedes the fault, a missing one nothing.
void TestLanguage::files()
{
    const auto container = makeContainer(QByteArray("<l/>"));
    const QString areas = installed("LangAreaForShort.xml");
    QList<LanguageInfoEx> found;
    writeFile(areas,
              "<a><g><item lang='L' id='7' maccode='m' linuxcode='n'>x-y</item></g><Item/><item/><b></a>"
              "<item/>");
    QVERIFY(container->GetCurLanguageInfo(found));
    QVERIFY(log().contains("{file}: GetCurLanguageInfo: Read Error: n"));
    writeFile(areas, "<a><item>x-y<b/></item>");
    QVERIFY(container->GetCurLanguageInfo(found));
    QCOMPARE(found.size(), 2);
    QCOMPARE(found[0].id + found[0].lang + found[0].shortName + found[0].maccode + found[0].linuxcode,
             QString("7L_x-ymn"));
    QCOMPARE(found[1].shortName, QString("_"));
    QFile::remove(areas);
    QVERIFY(!container->GetCurLanguageInfo(found));
    QCOMPARE(container->decideDefaultLanguage({"L"}), QString("_en-us"));
    QStringList languages{"c"};
    writeInstalled("[language]\n2=b\n1=a");
    QVERIFY(container->getLanguageList(languages));
    writeInstalled("[language\nnonsense");
    QVERIFY(!container->getLanguageList(languages));
    QCOMPARE(languages, QStringList({"a", "b", "c"}));
}

// Of several candidates the first of the system's country, else the first of all.
void TestLanguage::country()
{
    struct Container : TestContainer
    {
        using PluginContainer::getDefaultLan;
        using TestContainer::TestContainer;
    } container(libraryFile(), configFile(), false);
    QList<LanguageInfoEx> records;
    QHash<QString, QString> candidates{{"a", "_zh-tw"}, {"b", "_xx-x"}, {"c", "_x"}, {"d", "_de_"}};
    QCOMPARE(container.getDefaultLan(candidates, {}, records), *candidates.cbegin());
    const QString region = QLocale::system().name().toLower();
    candidates[candidates.keys().last()] = "_zz-" + region.mid(3);
    QCOMPARE(container.getDefaultLan(candidates, {}, records), "_zz-" + region.mid(3));
    VERIFY_LOGGED_IN_ORDER("{time}: {file}: getDefaultLan: strCurRegion is " + region,
                           "{time}: {file}: getDefaultLan: return lan is _zz-" + region.mid(3));
}

int main(int argc, char** argv)
{
    qputenv("LC_ALL", "de_DE.UTF-8"); // the user's language, except on Windows
    const QCoreApplication application(argc, argv);
    TestLanguage test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_language.moc"
