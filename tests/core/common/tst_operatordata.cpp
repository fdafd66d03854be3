// Operator names and standard configuration files: right ones and every kind of wrong one.
#include "common/CommonUtils.h"
#include "common/StandardConfigParse.h"
#include "common/StatusBarOpListParse.h"

#include "CoreTest.h"

#include <QBuffer>
#include <QDir>
#include <QXmlStreamReader>

class TestOperatorData : public CoreTest
{
    Q_OBJECT

private slots:
    void cleanup();
    void network_data();
    void network();
    void translated();
    void imsi_data();
    void imsi();
    void codes();
    void instance();
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

void TestOperatorData::network_data()
{
    QTest::addColumn<QString>("mcc");
    QTest::addColumn<QString>("mnc");
    QTest::addColumn<QStringList>("names"); // short, full, region
    const auto row = [](const char* name, const char* mcc, const char* mnc, const char* names) {
        QTest::newRow(name) << QString(mcc) << QString(mnc) << QString(names).split('|');
    };
    row("listed", "460", "00", "One|One Ltd|Asia");
    row("before the first region", "001", "01", "Test & <\"||");
    row("region inside, and an item outside again", "310", "260", "Six||America");
    row("later one wins", "460", "01", "New||America");
    row("known country", "460", "99", "CN99|CN|");
    row("known country, longer code", "460", "000", "CN000|CN|");
    row("known country alone", "460", "", "CN|CN|");
    row("codes are joined", "46", "000", "One|One Ltd|Asia");
    row("outside the sections", "208", "99", "||");
    row("section behind the last one", "460", "77", "CN77|CN|");
    row("unknown", "999", "01", "||");
    row("no SIM card", "", "", "||");
    row("no number", "x\u00E9", QByteArray(100000, '1').constData(), "||");
}

void TestOperatorData::network()
{
    QFETCH(QString, mcc);
    QFETCH(QString, mnc);
    writeList(
        "OperatorList.xml",
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<OperatorList><Item mcc=\"208\" shortdescr=\"X\"/>"
        "<MccMnc><Item mcc=\"001\" mnc=\"01\" shortdescr=\"Test &amp; &lt;&quot;\"/>"
        "<Region descr=\"Asia\"/><Item mcc=\"460\" mnc=\"00\" shortdescr=\"One\" fulldescr=\"One Ltd\"/>"
        "<Item mcc=\"460\" mnc=\"01\" shortdescr=\"Old\" fulldescr=\"Old Ltd\" langid=\"old\"/><item/>"
        "<Region descr=\"America\"><Item mcc=\"460\" mnc=\"01\" shortdescr=\"New\"/></Region>"
        "<Item mcc=\"310\" mnc=\"260\" shortdescr=\"Six\"/></MccMnc><unknown>text</unknown>"
        "<MccOnly><Region descr=\"Europe\"/><Item mcc=\"460\" shortdescr=\"CN\" "
        "fulldescr=\"China\"/></MccOnly>"
        "<MccMnc><Item mcc=\"460\" mnc=\"77\" shortdescr=\"Late\"/></MccMnc></OperatorList>");
    const _ST_MCCMNC_ITEM item = lists().GetOperatorData(mcc, mnc);
    QTEST(QStringList({item.shortdescr, item.fulldescr, item.descr}), "names");
    QCOMPARE(item.langid, QString());
    QVERIFY(log().contains("{file}: LoadFile: called"));
    QVERIFY(log().contains("{time}: {file}: readMccMncInfo: called"));
    QVERIFY(log().contains("{time}: {file}: readMccOnlyInfo: called"));
    QCOMPARE(log().count("{file}: LoadCPLMNOpListFile: File " + folder() + "CPLMNOpList.xml does not exist"),
             1);
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

void TestOperatorData::imsi_data()
{
    QTest::addColumn<QString>("imsi");
    QTest::addColumn<QString>("name");
    const auto row = [](const char* name, const QString& imsi, const char* operatorName) {
        QTest::newRow(name) << imsi << QString(operatorName);
    };
    row("longest prefix", "310260199999999", "six");
    row("shorter prefix", "310269123456789", "five");
    row("exactly five", "31026", "five");
    row("exactly the longest", "3102601234", "ten");
    row("100,000 characters", "310260" + QString(99994, '9'), "six");
    row("a listed prefix of four is not tried", "99991", "");
    row("four", "9999", "");
    row("none", "", "");
    row("unknown", "262011234567890", "");
    row("not in the middle", "0310260", "");
}

void TestOperatorData::imsi()
{
    QFETCH(QString, imsi);
    writeList("CPLMNOpList.xml",
              "<CPLMN><Item IMSI=\"31026\" operator=\"five\"/><Item IMSI=\"310260\" operator=\"x\"/>"
              "<Item IMSI=\"9999\" operator=\"four\"/><Item IMSI=\"\" operator=\"none\"/><Item/>"
              "<Item IMSI=\"3102601234\" operator=\"ten\"/><Item IMSI=\"310260\" operator=\"six\"/></CPLMN>");
    QTEST(lists().GetCPLMNOperatorData(imsi), "name");
    QFETCH(QString, name);
    QCOMPARE(log().count("{time}: {file}: GetCPLMNOperatorData: IMSI Contain"), int(!name.isEmpty()));
}

void TestOperatorData::codes()
{
    writeList("CMCCMNCOpList.xml", "<CMCCMNC><Item MCCMNC=\"46000\" operator=\"One\"/>"
                                   "<Item MCCMNC=\"46000\" operator=\"Two\"/></CMCCMNC>");
    QCOMPARE(lists().GetCMCCMNCOperatorData("46000"), QString("Two"));
    for (const char* code : {"", "4600", "460000", "46000 "})
        QCOMPARE(lists().GetCMCCMNCOperatorData(code), QString());
    QCOMPARE(lists().GetLoadFileName(), QString("CMCCMNCOpList.xml"));
}

void TestOperatorData::instance()
{
    QVERIFY(QDir().mkpath(folder() + "OperatorList.xml")); // cannot be opened
    StatusBarOpListParse* const first = StatusBarOpListParse::GetInstance();
    QCOMPARE(StatusBarOpListParse::GetInstance(), first);
    QVERIFY(log().contains("{file}: LoadFile: Error open file:" + folder() + "OperatorList.xml"));
    QCOMPARE(first->GetLoadFileName(), QString());

    writeList("CMCCMNCOpList.xml", "<CMCCMNC><Item MCCMNC='1' operator='One'/></CMCCMNC>");
    QCOMPARE(first->GetCMCCMNCOperatorData("1"), QString()); // read once
    StatusBarOpListParse::DestroyInstance();
    QCOMPARE(lists().GetCMCCMNCOperatorData("1"), QString("One"));
    lists().ReleaseData();
    QVERIFY(log().contains("{file}: ReleaseData: called"));
    QCOMPARE(lists().GetCMCCMNCOperatorData("1"), QString());
    QVERIFY(lists().GetOperatorData("460", "00").shortdescr.isEmpty());
    lists().LoadCMCCMNCOpListFile("CMCCMNCOpList.xml");
    QCOMPARE(lists().GetCMCCMNCOperatorData("1"), QString("One"));
}

void TestOperatorData::brokenLists_data()
{
    QTest::addColumn<QByteArray>("tail"); // behind a good item
    QTest::addColumn<QString>("error");
    const QString inSection = "Error: {*} at line 2, column {n}";
    QTest::newRow("truncated") << QByteArray() << inSection;
    QTest::newRow("region without an end")
        << QByteArray("<Region descr=\"A\"></MccMnc></OperatorList>") << inSection;
    QTest::newRow("region's attribute without an end")
        << QByteArray(R"(<Region descr="A><Item mcc="1"/>)") << inSection;
    QTest::newRow("attribute twice") << QByteArray("<Item mcc='1' mcc='2'/></MccMnc></OperatorList>")
                                     << inSection;
    QTest::newRow("NUL") << QByteArray("<Item mcc=\"\0\"/></MccMnc></OperatorList>", 39) << inSection;
    QTest::newRow("nested without end") << QByteArray("<MccMnc>").repeated(100000) << inSection;
    QTest::newRow("second root") << QByteArray("</MccMnc><MccOnly/></OperatorList><OperatorList/>")
                                 << "Extra content{*}";
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

/// All items of a list, which has to be free of faults.
static QVector<QXmlStreamAttributes> readItems(const QString& path)
{
    QFile file(path);
    QVector<QXmlStreamAttributes> items;
    QXmlStreamReader reader(&file);
    if (!file.open(QIODevice::ReadOnly))
        return items;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && reader.name() == "Item")
            items.append(reader.attributes());
    }
    return reader.hasError() ? QVector<QXmlStreamAttributes>() : items;
}

/// The lists of the installation are complete and agree with each other.
void TestOperatorData::shippedLists()
{
    const QString shipped = QCoreApplication::applicationDirPath() + "/../../app/plugins/StatusBarMgrPlugin/";
    QVERIFY(QDir().mkpath(folder()));
    for (const char* name : {"OperatorList.xml", "CPLMNOpList.xml", "CMCCMNCOpList.xml"})
        QVERIFY(QFile::copy(shipped + name, folder() + name));
    QSet<QString> codes;
    for (const QXmlStreamAttributes& item : readItems(shipped + "OperatorList.xml")) {
        const QString mcc = item.value("mcc").toString();
        const QString code = mcc + item.value("mnc");
        QVERIFY2(!codes.contains(code), qPrintable(code));
        codes.insert(code);
        if (code == mcc)
            continue;
        const _ST_MCCMNC_ITEM names = lists().GetOperatorData(code, {});
        QVERIFY(!names.shortdescr.isEmpty() && !names.fulldescr.isEmpty() && !names.descr.isEmpty());
        QCOMPARE(lists().GetCMCCMNCOperatorData(code), names.shortdescr);
        QCOMPARE(lists().GetCPLMNOperatorData(code), names.shortdescr);
        QVERIFY(!lists().GetOperatorData(mcc, "---").fulldescr.isEmpty()); // its country
    }
    QVERIFY(codes.size() > 900);
}

void TestOperatorData::standardConfig_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("values"); // of the names a and b in conditions, results and custom info
    QTest::addColumn<int>("faultLines");
    const auto row = [](const char* name, const char* content, int result, const char* values,
                        int faultLines = 0) {
        QTest::newRow(name) << QByteArray(content) << result << QString(values) << faultLines;
    };
    const char* const item =
        "<qrvldoc><customize_item><conditions><item name='a' value='1'/><item name='b' value='2'/>"
        "</conditions><results><item name='b' value='3'/><item name='a' value='4'/></results>"
        "</customize_item><customize_Info><item name='a' value='5'/><item name='b' value='6'/>"
        "</customize_Info></qrvldoc>";
    row("first of each block", item, 0, "1..35.");
    row("blocks add up",
        "<qrvldoc><customize_item><conditions><item name='a' value='1'/></conditions><conditions>"
        "<item name='b' value='2'/></conditions></customize_item><customize_item><conditions>"
        "<item name='a' value='3'/></conditions></customize_item></qrvldoc>",
        0, "32....");
    row("what stands elsewhere",
        "<x><conditions><item name='a' value='1'/></conditions><qrvldoc><item name='a' value='1'/>"
        "<Customize_Info><item name='a' value='1'/></Customize_Info></qrvldoc></x>",
        0, "......");
    row("empty blocks",
        "<qrvldoc><customize_item><conditions/><results></results></customize_item><customize_Info/>"
        "<customize_item><results><item name='a' value='1'/></results></customize_item></qrvldoc>",
        0, "..1...");
    row("other elements in a block",
        "<qrvldoc><customize_Info><x/><item name='a' value='1'/></customize_Info>"
        "<customize_Info><item name='b' value='2'><x/></item></customize_Info></qrvldoc>",
        0, ".....2");
    row("without a value", "<qrvldoc><customize_Info><item name='a'/></customize_Info></qrvldoc>", 0,
        "......");
    row("nothing", "", 0, "......");
    row("another root", "<config/>", 0, "......");
    row("behind the root's end", "<qrvldoc/><", 0, "......");
    row("blank", " ", -1, "......", 1);
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
    const QByteArray content =
        "<qrvldoc><customize_Info><item name='a' value='1'/></customize_Info></qrvldoc>";
    writeList("standard.xml", content);
    StandardConfigParse config("/plugins/StatusBarMgrPlugin/standard.xml");
    QCOMPARE(config.GetCustomInfoByName("a"), QString("1"));
    QCOMPARE(config.loadFile("/plugins/StatusBarMgrPlugin/standard.xml"), 0);
    QCOMPARE(config.loadFile("plugins/StatusBarMgrPlugin/standard.xml"), -1); // joined without a separator
    QCOMPARE(config.loadFile("/plugins"), -1);                                // a folder
    QCOMPARE(config.GetCustomInfoByName("a"), QString("1"));
}

QTEST_GUILESS_MAIN(TestOperatorData)
#include "tst_operatordata.moc"
