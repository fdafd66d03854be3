// The start-up language: what the customisation asks for, what is installed, what is stored and loaded.
#include "Change/Change.h"
#include "CoreTest.h"
#include "Samples.h"
#include "platform/LanguageId_p.h"

const bool IsGerman = qputenv("LC_ALL", "de_DE.UTF-8"); // the user's language, except on Windows

class TestLanguage : public CoreTest
{
    Q_OBJECT

private slots:
    void wish();
    void start_data();
    void start();
    void files();
    void country();

private:
    /// Items of LangAreaForShort.xml, each "long name,id,short code". SYS and USER are replaced by the identifiers
    /// of the system's and the user's language.
    static void writeAreas(QStringList items)
    {
        items.replaceInStrings("SYS", QString::number(Platform::systemLanguageId()));
        items.replaceInStrings("USER", QString::number(Platform::userLanguageId()));
        items.replaceInStrings(QRegularExpression("(.*),(.*),(.*)"), R"(<item lang='\1' id='\2'>\3</item>)");
        writeFile(installed("LangAreaForShort.xml"), "<areas>" + items.join("").toUtf8() + "</areas>");
    }

    /// QSettings does not read a file again whose size and time have not changed: each gets its own size.
    static void writeInstalled(const QString& lines)
    {
        static int size = 200;
        writeFile(installed("SysConfig.dat"), (lines + '\n').toUtf8().leftJustified(++size, ';'));
    }
};

/// Of two results the first holds where the user's language is the system's.
void TestLanguage::wish()
{
    const bool isOne = Platform::systemLanguageId() == Platform::userLanguageId();
    const auto container = makeContainer(QByteArray("<l/>"));
    for (const Sample& sample : samplesIn(LANGUAGES)) {
        service().setSetting("customize", "adaptertype", sample.marked("wish=")[0],
                             ScriptedDeviceService::Ini);
        writeInstalled(sample.marked("ini=").join('\n'));
        writeAreas(sample.marked("area="));
        const QStringList results = sample.marked("result=");
        QVERIFY2(container->GetAdapterLang() == (isOne ? results.first() : results.last()), sample.name);
    }
    VERIFY_LOGGED_IN_ORDER("{time}: {file}: getLanguageList: languages 1 = Fran\u00E7ais",
                           "{time} : {file}: GetCurLanguageInfo: Exit",
                           "{time}: {file}: getDefaultLan: return lan is _fr-fr",
                           "{time}: {file}: decideDefaultLanguage: lan can be insert to table is {n}");
}

void TestLanguage::start_data()
{
    // wish: short code; writes: the settings that are stored, by key
    const auto row = dataTable<QString, QString, QString, QString, QString>("wish", "mark", "stored",
                                                                            "writes", "language");
    row("very first", "en-gb", "TRUE", "", "init, true; adaptertype, _en-gb", "fr-fr");
    row("new request", "en-gb", "true", "", "active, _en-gb; adaptertype, _en-gb", "en-gb");
    row("other request", "en-gb", "true", "_x", "active, _en-gb; adaptertype, _en-gb", "en-gb");
    row("same request", "en-gb", "true", "_en-gb", "", "fr-fr");
    row("no request", "", "true", "_en-us", "", "fr-fr");
    row("no file", "x", "true", "", "active, _x; adaptertype, _x; active, _en-us", "en-us");
}

// The container's constructor settles the language, then loads the main frame's texts.
void TestLanguage::start()
{
    QFETCH(QString, wish);
    QFETCH(QString, mark);
    QFETCH(QString, stored);
    QFETCH(QString, language);
    for (const QByteArray code : {"en-us", "en-gb", "fr-fr"})
        writeFile(installed("plugins/XFramePlugin/XFramePlugin_" + code + ".lang"),
                  "<item name='A'>" + code + "</item>");
    writeInstalled("[language]\na=English\n");
    writeAreas({"English,USER," + wish});
    Change::m_languageHash = {{"XFramePlugin", {}}};
    service().setSetting("language", "active", "_fr-fr");
    service().setSetting("customize", "adaptertype", wish.isEmpty() ? "" : "area",
                         ScriptedDeviceService::Ini);
    service().setSetting("customize", "adaptertype", stored);
    service().setSetting("Startup", "init", mark);
    makeContainer(QByteArray("<l/>"));
    QStringList writes = service().calls().filter("QRVL_SetSettings");
    writes.replaceInStrings(QRegularExpression(R"(^.*\(\w+, |\)$)"), "");
    QTEST(writes.join("; "), "writes");
    QCOMPARE(Change::m_languageHash["XFramePlugin"]["A"], language);
    QCOMPARE(log().contains("{time}: {file}: isFirstTimeStart: first time startup"), mark == "TRUE");
    QCOMPARE(log().contains("{time}: {file}: isFirstTimeStart: not first time startup"),
             writes.value(0).startsWith("active"));
    QCOMPARE(log().contains("{time}: {file}: PluginContainer: load XFramePlugin lan file failed"),
             language == "en-us");
}

// A damaged file gives what precedes the fault, a missing one nothing.
void TestLanguage::files()
{
    const auto container = makeContainer(QByteArray("<l/>"));
    QList<LanguageInfoEx> found;
    writeFile(installed("LangAreaForShort.xml"),
              "<a><g><item lang='L' id='7' maccode='m' linuxcode='n'>x-y</item></g><Item/><item><b/></item>");
    QVERIFY(container->GetCurLanguageInfo(found));
    QVERIFY(log().contains("{file}: GetCurLanguageInfo: Read Error: n"));
    QCOMPARE(found.size(), 1);
    const LanguageInfoEx& record = found.first();
    QCOMPARE(
        QStringList({record.id, record.lang, record.shortName, record.maccode, record.linuxcode}).join(' '),
        QString("7 L _x-y m n"));
    QCOMPARE(container->decideDefaultLanguage({}), QString("_en-us"));
    QFile::remove(installed("LangAreaForShort.xml"));
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
    const auto container = makeContainer(QByteArray("<l/>"));
    QList<LanguageInfoEx> records;
    QHash<QString, QString> candidates{{"a", "_zh-tw"}, {"b", "_xx-x"}, {"c", "_x"}, {"d", "_de_"}};
    QCOMPARE(container->getDefaultLan(candidates, {}, records), *candidates.cbegin());
    const QString region = QLocale::system().name().toLower();
    candidates[candidates.keys().last()] = "_zz-" + region.mid(3);
    QCOMPARE(container->getDefaultLan(candidates, {}, records), "_zz-" + region.mid(3));
    QVERIFY(log().contains("{time}: {file}: getDefaultLan: strCurRegion is " + region));
}

QTEST_GUILESS_MAIN(TestLanguage)
#include "tst_language.moc"
