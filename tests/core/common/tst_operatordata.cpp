// Operator names and standard configuration files: right ones and every kind of wrong one.
#include "common/CommonUtils.h"
#include "common/StandardConfigParse.h"
#include "common/StatusBarOpListParse.h"

#include "CoreTest.h"
#include "Samples.h"

#include <QXmlStreamReader>

class TestOperatorData : public CoreTest
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        StatusBarOpListParse::DestroyInstance();
        QDir(folder()).removeRecursively();
        CoreTest::cleanup();
    }
    void networks();
    void prefixesAndCodes();
    void brokenLists();
    void shippedLists();
    void standardConfig();
    void standardConfigSteps();

private:
    static QString folder() { return installed("plugins/StatusBarMgrPlugin/"); }
    static void writeList(const char* name, const QByteArray& text) { writeFile(folder() + name, text); }
    static StatusBarOpListParse& lists() { return *StatusBarOpListParse::GetInstance(); }

    /// Short and full name, region and language string of a network.
    static QString names(const QString& mcc, const QString& mnc)
    {
        const _ST_MCCMNC_ITEM item = lists().GetOperatorData(mcc, mnc);
        return QStringList({item.shortdescr, item.fulldescr, item.descr, item.langid}).join('|');
    }
};

/// The samples are a list, then networks: their codes and names.
void TestOperatorData::networks()
{
    writeList("StatusBarMgrPlugin_en-us.lang",
              "<l><item name='one'>First</item><item name='kb'>kB</item></l>");
    const QVector<Sample> samples = samplesIn(SAMPLES "/operatorlist.txt");
    writeList("OperatorList.xml", QByteArray(samples.first().text).replace("\n", "\r\n"));
    for (const Sample& sample : samples.mid(1)) {
        const QString codes = QString::fromUtf8(sample.firstLine());
        const QString found = names(codes.section(' ', 0, 0), codes.section(' ', 1));
        QVERIFY2(found == QString::fromUtf8(sample.body()), sample.name + ": " + found.toUtf8());
    }
    VERIFY_LOGGED_IN_ORDER("{time}: {file}: readMccMncInfo: called",
                           "{file}: LoadCPLMNOpListFile: File {*}CPLMNOpList.xml does not exist");
    const QVector<TagUnits> units = {{"KB", 1, 0, "kb"}, {"MB", 1000, 1000, "none"}};
    QCOMPARE(CommonUtils::SpeedUnitToString(units, "StatusBarMgrPlugin"), QString("kB"));
    QCOMPARE(CommonUtils::SpeedFluxToString(units, 1, "StatusBarMgrPlugin"), QString("1.00 kB"));
    QCOMPARE(CommonUtils::SpeedFluxToString(units, 2000, "StatusBarMgrPlugin"), QString("2.00 "));
}

void TestOperatorData::prefixesAndCodes()
{
    QVERIFY(QDir().mkpath(folder() + "OperatorList.xml")); // cannot be opened
    QCOMPARE(lists().GetLoadFileName(), QString());
    QVERIFY(log().contains("{file}: LoadFile: Error open file:" + folder() + "OperatorList.xml"));
    for (const Sample& sample : samplesIn(SAMPLES "/prefixes.txt"))
        writeList(sample.name, sample.text);
    QCOMPARE(lists().GetCMCCMNCOperatorData("46000"), QString()); // read once
    StatusBarOpListParse::DestroyInstance();
    QStringList found;
    for (const QString imsi : {"310260199999999", "310269123456789", "31026", "3102601234567", "99991",
                               "9999", "", "262011234567890", "0310260"})
        found += lists().GetCPLMNOperatorData(imsi);
    for (const QString& code :
         {QString("46000"), QString(), QString("4600"), QString("460000"), QChar(0) + QString("46000")})
        found += lists().GetCMCCMNCOperatorData(code);
    QCOMPARE(found.join(' '), QString("six five five ten      Two    "));
    QCOMPARE(log().count("{time}: {file}: GetCPLMNOperatorData: IMSI Contain"), 4);
    QCOMPARE(lists().GetLoadFileName(), QString("CMCCMNCOpList.xml"));

    lists().LoadFile("more.xml");
    const auto all = [] {
        return names("460", "1") + names("461", "2") + lists().GetCPLMNOperatorData("31026") +
               lists().GetCMCCMNCOperatorData("46000");
    };
    QCOMPARE(all(), QString("a|||b2|b||fiveTwo"));
    lists().ReleaseData();
    QVERIFY(all() == "||||||" && log().contains("{file}: ReleaseData: called"));
}

/// What stands before the error is kept.
void TestOperatorData::brokenLists()
{
    int count = 0;
    for (const QByteArray& tail :
         {QByteArray(), QByteArray("<Region descr='A'></MccMnc></OperatorList>"),
          QByteArray("<Item mcc='\0'/>", 13), QByteArray("<MccMnc>").repeated(100000),
          QByteArray("</MccMnc><MccOnly><x></MccOnly>"), QByteArray("</MccMnc></x>")}) {
        writeList("OperatorList.xml",
                  "<OperatorList><MccMnc>\n<Item mcc='460' mnc='00' shortdescr='One'/>" + tail);
        writeList("CPLMNOpList.xml", "<CPLMN><Item IMSI='31026' operator='five'/></x>");
        writeList("CMCCMNCOpList.xml", "\n\n<CMCCMNC><Item MCCMNC='46000' operator='One'/></x>");
        StatusBarOpListParse::DestroyInstance();
        QCOMPARE(names("460", "00"), QString("One|||"));
        QCOMPARE(lists().GetCPLMNOperatorData("31026") + lists().GetCMCCMNCOperatorData("46000"), "fiveOne");
        ++count;
        for (const QString line : {"1", "2", "3"})
            QCOMPARE(log().count("Error: {*} at line " + line + ", column {n}"), count);
    }
    writeList("OperatorList.xml", "<OperatorList><MccOnly/></OperatorList><OperatorList/>");
    lists().LoadFile("OperatorList.xml");
    QVERIFY(log().contains("Extra content{*}"));
}

/// The lists of the installation agree with each other.
void TestOperatorData::shippedLists()
{
    QVERIFY(QDir().mkpath(folder()));
    for (const QString name : {"OperatorList.xml", "CPLMNOpList.xml", "CMCCMNCOpList.xml"})
        QVERIFY(QFile::copy(installed("../../app/plugins/StatusBarMgrPlugin/" + name), folder() + name));
    for (const char* code : {"26201", "310260", "46000", "50501"}) {
        const _ST_MCCMNC_ITEM item = lists().GetOperatorData(code, {});
        QVERIFY(!item.shortdescr.isEmpty() && !item.fulldescr.isEmpty() && !item.descr.isEmpty());
        QCOMPARE(lists().GetCMCCMNCOperatorData(code), item.shortdescr);
        QCOMPARE(lists().GetCPLMNOperatorData(code), item.shortdescr);
    }
    QVERIFY(!log().contains("Error: {*}"));
}

/// The samples begin with the result, the values of the names a and b in conditions, results and custom info, and the
/// number of errors that are logged.
void TestOperatorData::standardConfig()
{
    const QVector<Sample> samples = samplesIn(SAMPLES "/standardconfig.txt");
    for (const Sample& sample : samples) {
        writeList("standard.xml", sample.body());
        log().clear();
        StandardConfigParse config("/missing.xml");
        QVERIFY(log().contains("file not exist"));
        QString found = QString::number(config.loadFile("/plugins/StatusBarMgrPlugin/standard.xml")) + ' ';
        for (const auto get :
             {&StandardConfigParse::GetConditionByName, &StandardConfigParse::GetResultByName,
              &StandardConfigParse::GetCustomInfoByName}) {
            for (const char* name : {"a", "b"})
                found += (config.*get)(name).leftJustified(1, '.');
        }
        found += QString(" %1").arg(log().count("10:24:35: {file}: {func}: Read Error: "));
        QVERIFY2(sample.firstLine() == "= " + found.toUtf8(), sample.name + ": " + found.toUtf8());
    }
}

void TestOperatorData::standardConfigSteps()
{
    writeList("standard.xml", {});
    StandardConfigParse config("plugins/StatusBarMgrPlugin/standard.xml"); // joined without a separator
    QCOMPARE(config.loadFile("/plugins"), -1);                             // a folder
    QCOMPARE(log().count("file not exist"), 2);
    QCOMPARE(config.readXmlFile(nullptr), -1);
    QStringList results;
    for (const char* content : {"<i/>", "<i><results><item/></results><conditions/></i>",
                                "<i><conditions/><results><item/></results></i>",
                                "<i><conditions/><results><x/></results></i>", "<i><conditions/>"}) {
        QXmlStreamReader reader(content);
        reader.readNextStartElement();
        results += QString::number(config.parseCustomizeItem(reader, "i"));
    }
    QCOMPARE(results.join(' '), QString("0 -2 -3 0 -1"));
    QVERIFY(log().contains("10:24:35: {file}: parseCustomizeItem: Read Error: "));
    QXmlStreamReader info("<i><x");
    QCOMPARE(config.parseCustomizeInfo(info, "i"), 0);
}

QTEST_GUILESS_MAIN(TestOperatorData)
#include "tst_operatordata.moc"
