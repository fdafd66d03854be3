// Operator names and standard configuration files: right ones and every kind of wrong one.
#include "common/CommonUtils.h"
#include "common/StandardConfigParse.h"
#include "common/StatusBarOpListParse.h"

#include "CoreTest.h"
#include "DataTable.h"
#include "LogOrder.h"

#include <QBuffer>
#include <QDir>
#include <QRegularExpression>

class TestOperatorData : public CoreTest
{
    Q_OBJECT

private slots:
    void cleanup();
    void networks();
    void translated();
    void imsi();
    void codesAndInstance();
    void brokenLists_data();
    void brokenLists();
    void shippedLists();
    void standardConfig_data();
    void standardConfig();
    void standardConfigFiles();

private:
    static QString folder()
    {
        return QCoreApplication::applicationDirPath() + "/plugins/StatusBarMgrPlugin/";
    }
    static void writeList(const char* name, const QByteArray& content)
    {
        writeFile(folder() + name, content);
    }
    static StatusBarOpListParse& lists() { return *StatusBarOpListParse::GetInstance(); }
};

void TestOperatorData::cleanup()
{
    StatusBarOpListParse::DestroyInstance();
    QDir(folder()).removeRecursively();
    checkLog();
}

void TestOperatorData::networks()
{
    writeList(
        "OperatorList.xml",
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<OperatorList><Item mcc=\"208\" shortdescr=\"X\"/>"
        "<MccMnc><Item mcc=\"001\" mnc=\"01\" shortdescr=\"Test &amp; &lt;&quot;\"/>"
        "<Region descr=\"Asia\"/><Item mcc=\"460\" mnc=\"00\" shortdescr=\"One\" fulldescr=\"One Ltd\"/>"
        "<Item mcc=\"460\" mnc=\"01\" shortdescr=\"Old\" fulldescr=\"Old Ltd\" langid=\"old\"/><item/>"
        "<Region descr=\"America\"><Item mcc=\"460\" mnc=\"01\" shortdescr=\"New\"/></Region>"
        "<Item mcc=\"310\" mnc=\"260\" shortdescr=\"Six\"/></MccMnc><unknown>text</unknown>"
        "<MccOnly><Region descr=\"Europe\"/><Item mcc=\"460\" shortdescr=\"CN\" fulldescr=\"China\"/>"
        "</MccOnly><MccMnc><Item mcc=\"460\" mnc=\"77\" shortdescr=\"Late\"/></MccMnc></OperatorList>");
    const struct
    {
        QString mcc, mnc, names; // short, full, region
    } cases[] = {
        {"460", "00", "One|One Ltd|Asia"},
        {"001", "01", "Test & <\"||"},  // before the first region
        {"310", "260", "Six||America"}, // behind an item inside the region
        {"460", "01", "New||America"},  // the later one wins
        {"460", "000", "CN000|CN|"},    // a known country
        {"460", "", "CN|CN|"},
        {"46", "000", "One|One Ltd|Asia"}, // the codes are joined
        {"208", "99", "||"},               // outside the sections
        {"460", "77", "CN77|CN|"},         // in a section behind the last one
        {QString::fromUtf8("x\xC3\xA9"), QString(100000, '1'), "||"},
    };
    for (const auto& row : cases) {
        const _ST_MCCMNC_ITEM item = lists().GetOperatorData(row.mcc, row.mnc);
        QCOMPARE(QStringList({item.shortdescr, item.fulldescr, item.descr}).join('|'), row.names);
        QCOMPARE(item.langid, QString());
    }
    VERIFY_LOGGED_IN_ORDER("{file}: LoadFile: called", "{time}: {file}: readMccMncInfo: called",
                           "{time}: {file}: readMccOnlyInfo: called",
                           "{file}: LoadCPLMNOpListFile: File " + folder() +
                               "CPLMNOpList.xml does not exist");
}

void TestOperatorData::translated()
{
    writeList("StatusBarMgrPlugin_en-us.lang",
              "<l><item name='one'>First</item><item name='kb'>kB</item></l>");
    writeList("OperatorList.xml",
              "<OperatorList><MccMnc><Item mcc='001' mnc='01' shortdescr='a' fulldescr='A' langid='one'/>"
              "<Item mcc='001' mnc='02' shortdescr='b' langid='none'/></MccMnc>"
              "<MccOnly><Item mcc='001' shortdescr='c' langid='one'/></MccOnly></OperatorList>");
    const auto names = [](const char* mnc) {
        const _ST_MCCMNC_ITEM item = lists().GetOperatorData("001", mnc);
        return item.shortdescr + '|' + item.fulldescr + '|' + item.langid;
    };
    QCOMPARE(names("01"), QString("First|A|one"));
    QCOMPARE(names("02"), QString("b||none"));
    QCOMPARE(names("03"), QString("First|c|one"));

    const QVector<TagUnits> units = {{"KB", 1, 0, "kb"}, {"MB", 1000, 1000, "none"}};
    QCOMPARE(CommonUtils::SpeedUnitToString(units, "StatusBarMgrPlugin"), QString("kB"));
    QCOMPARE(CommonUtils::SpeedFluxToString(units, 1, "StatusBarMgrPlugin"), QString("1.00 kB"));
    QCOMPARE(CommonUtils::SpeedFluxToString(units, 2000, "StatusBarMgrPlugin"), QString("2.00 "));
}

void TestOperatorData::imsi()
{
    writeList("CPLMNOpList.xml",
              "<CPLMN><Item IMSI=\"31026\" operator=\"five\"/><Item IMSI=\"310260\" operator=\"x\"/>"
              "<Item IMSI=\"9999\" operator=\"four\"/><Item IMSI=\"\" operator=\"none\"/><Item/>"
              "<Item IMSI=\"3102601234\" operator=\"ten\"/><Item IMSI=\"310260\" operator=\"six\"/></CPLMN>");
    const QPair<QString, QString> cases[] = {{"310260199999999", "six"},
                                             {"310269123456789", "five"},
                                             {"31026", "five"},
                                             {"3102601234", "ten"},
                                             {"310260" + QString(99994, '9'), "six"}};
    for (const auto& [imsi, name] : cases)
        QCOMPARE(lists().GetCPLMNOperatorData(imsi), name);
    QCOMPARE(log().count("{time}: {file}: GetCPLMNOperatorData: IMSI Contain"), 5);
    // A listed prefix of four is not tried, and none is sought in the middle.
    for (const char* imsi : {"99991", "9999", "", "262011234567890", "0310260"})
        QCOMPARE(lists().GetCPLMNOperatorData(imsi), QString());
    QCOMPARE(log().count("{time}: {file}: GetCPLMNOperatorData: IMSI Contain"), 5);
}

void TestOperatorData::codesAndInstance()
{
    QVERIFY(QDir().mkpath(folder() + "OperatorList.xml")); // cannot be opened
    StatusBarOpListParse* const first = StatusBarOpListParse::GetInstance();
    QCOMPARE(StatusBarOpListParse::GetInstance(), first);
    QVERIFY(log().contains("{file}: LoadFile: Error open file:" + folder() + "OperatorList.xml"));
    QCOMPARE(first->GetLoadFileName(), QString());

    const auto name = [](const char* code) {
        return lists().GetCMCCMNCOperatorData(code);
    };
    writeList("CMCCMNCOpList.xml", "<CMCCMNC><Item MCCMNC='46000' operator='One'/>"
                                   "<Item MCCMNC='46000' operator='Two'/></CMCCMNC>");
    QCOMPARE(name("46000"), QString()); // read once
    StatusBarOpListParse::DestroyInstance();
    QCOMPARE(name("46000"), QString("Two"));
    for (const char* code : {"", "4600", "460000", "46000 "})
        QCOMPARE(name(code), QString());
    QCOMPARE(lists().GetLoadFileName(), QString("CMCCMNCOpList.xml"));
    lists().ReleaseData();
    QVERIFY(log().contains("{file}: ReleaseData: called"));
    QCOMPARE(name("46000"), QString());
    lists().LoadCMCCMNCOpListFile("CMCCMNCOpList.xml");
    QCOMPARE(name("46000"), QString("Two"));
}

void TestOperatorData::brokenLists_data()
{
    const auto row = dataTable<QByteArray, QString>("tail", "error"); // behind a good item
    const QString inSection = "Error: {*} at line 2, column {n}";
    row("truncated", "", inSection);
    row("region without an end", "<Region descr=\"A\"></MccMnc></OperatorList>", inSection);
    row("NUL", QByteArray("<Item mcc=\"\0\"/></MccMnc></OperatorList>", 39), inSection);
    row("nested without end", QByteArray("<MccMnc>").repeated(100000), inSection);
    row("second root", "</MccMnc><MccOnly/></OperatorList><OperatorList/>", "Extra content{*}");
}

void TestOperatorData::brokenLists()
{
    QFETCH(QByteArray, tail);
    QFETCH(QString, error);
    writeList("OperatorList.xml",
              "<OperatorList><MccMnc>\n<Item mcc=\"460\" mnc=\"00\" shortdescr=\"One\"/>" + tail);
    QCOMPARE(lists().GetOperatorData("460", "00").shortdescr, QString("One"));
    QCOMPARE(log().count(error), 1);
}

/// The lists of the installation are complete and agree with each other.
void TestOperatorData::shippedLists()
{
    const QString shipped = QCoreApplication::applicationDirPath() + "/../../app/plugins/StatusBarMgrPlugin/";
    QVERIFY(QDir().mkpath(folder()));
    for (const char* name : {"OperatorList.xml", "CPLMNOpList.xml", "CMCCMNCOpList.xml"})
        QVERIFY(QFile::copy(shipped + name, folder() + name));
    QFile list(shipped + "OperatorList.xml");
    QVERIFY(list.open(QIODevice::ReadOnly));
    QSet<QString> codes;
    auto match = QRegularExpression("<Item mcc=\"(.*?)\" mnc=\"(.*?)\"").globalMatch(list.readAll());
    while (match.hasNext()) {
        const QStringList parts = match.next().capturedTexts();
        const QString code = parts[1] + parts[2];
        const _ST_MCCMNC_ITEM names = lists().GetOperatorData(code, {});
        QVERIFY2(!codes.contains(code), qPrintable(code));
        codes.insert(code);
        QVERIFY(!names.shortdescr.isEmpty() && !names.fulldescr.isEmpty() && !names.descr.isEmpty());
        QCOMPARE(lists().GetCMCCMNCOperatorData(code), names.shortdescr);
        QCOMPARE(lists().GetCPLMNOperatorData(code), names.shortdescr);
        QVERIFY(!lists().GetOperatorData(parts[1], "---").fulldescr.isEmpty()); // its country
    }
    QVERIFY2(codes.size() > 750, qPrintable(QString::number(codes.size())));
}

void TestOperatorData::standardConfig_data()
{
    // values: of the names a and b in conditions, results and custom info
    const auto row = dataTable<QByteArray, int, QString, int>("content", "result", "values", "faultLines");
    row("first of each block",
        "<qrvldoc><customize_item><conditions><item name='a' value='1'/><item name='b' value='2'/>"
        "</conditions><results><item name='b' value='3'/><item name='a' value='4'/></results>"
        "</customize_item><customize_Info><item name='a' value='5'/><item name='b' value='6'/>"
        "</customize_Info></qrvldoc>",
        0, "1..35.", 0);
    row("blocks add up",
        "<qrvldoc><customize_item><conditions><item name='a' value='1'/></conditions><conditions>"
        "<item name='b' value='2'/></conditions></customize_item><customize_item><conditions>"
        "<item name='a' value='3'/></conditions></customize_item></qrvldoc>",
        0, "32....", 0);
    row("what stands elsewhere",
        "<x><conditions><item name='a' value='1'/></conditions><qrvldoc><item name='a' value='1'/>"
        "<Customize_Info><item name='a' value='1'/></Customize_Info></qrvldoc></x>",
        0, "......", 0);
    row("empty blocks",
        "<qrvldoc><customize_item><conditions/><results></results></customize_item><customize_Info/>"
        "<customize_item><results><item name='a' value='1'/></results></customize_item></qrvldoc>",
        0, "..1...", 0);
    row("other elements in a block",
        "<qrvldoc><customize_Info><x/><item name='a' value='1'/></customize_Info>"
        "<customize_Info><item name='b' value='2'><x/></item></customize_Info></qrvldoc>",
        0, ".....2", 0);
    row("nothing", "", 0, "......", 0);
    row("behind the root's end", "<qrvldoc/><", 0, "......", 0);
    row("truncated", "<qrvldoc>", -1, "......", 1);
    row("truncated in a block", "<qrvldoc><customize_item><conditions><item name='a' value='1'/>", -1,
        "1.....", 2);
    row("fault in the info", "<qrvldoc><customize_Info><item name='a' value='1'/></x>", -1, "....1.", 1);
}

void TestOperatorData::standardConfig()
{
    QFETCH(QByteArray, content);
    QFETCH(int, faultLines);
    StandardConfigParse config("/missing.xml");
    QVERIFY(log().contains("file not exist"));
    QCOMPARE(config.readXmlFile(nullptr), -1);
    QBuffer buffer(&content);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    QTEST(config.readXmlFile(&buffer), "result");
    QString values;
    for (const auto get : {&StandardConfigParse::GetConditionByName, &StandardConfigParse::GetResultByName,
                           &StandardConfigParse::GetCustomInfoByName}) {
        for (const char* name : {"a", "b"}) {
            const QString value = (config.*get)(name);
            values += value.isEmpty() ? "." : value;
        }
    }
    QTEST(values, "values");
    QCOMPARE(log().count("10:24:35: {file}: {func}: Read Error: "), faultLines);
}

void TestOperatorData::standardConfigFiles()
{
    writeList("standard.xml",
              "<qrvldoc><customize_Info><item name='a' value='1'/></customize_Info></qrvldoc>");
    StandardConfigParse config("/plugins/StatusBarMgrPlugin/standard.xml");
    QCOMPARE(config.loadFile("plugins/StatusBarMgrPlugin/standard.xml"), -1); // joined without a separator
    QCOMPARE(config.loadFile("/plugins"), -1);                                // a folder
    QCOMPARE(config.GetCustomInfoByName("a"), QString("1"));
}

QTEST_GUILESS_MAIN(TestOperatorData)
#include "tst_operatordata.moc"
