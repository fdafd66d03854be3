// Texts of plugins: their files, the look-up, shortcuts, and switching the language.
#include "Change/Change.h"
#include "CoreTest.h"

#include <QBuffer>
#include <QKeySequence>

#include <atomic>
#include <thread>
#include <vector>

class TestTranslation : public CoreTest
{
    Q_OBJECT

private slots:
    void file_data();
    void file();
    void misses();
    void shortcut_data();
    void shortcut();
    void shortcutsOff();
    void switchLanguage();
    void settings_data();
    void settings();
    void switchWhileAsking();

private:
    static QString fileName(const QString& plugin, const QString& language)
    {
        return QCoreApplication::applicationDirPath() + "/plugins/" + plugin + '/' + plugin + '_' + language +
               ".lang";
    }

    static QByteArray item(const QByteArray& id, const QByteArray& text)
    {
        return "<item name=\"" + id + "\">" + text + "</item>";
    }

    static void install(const QString& plugin, const QString& language, const QByteArray& items)
    {
        writeFile(fileName(plugin, language), "<language>" + items + "</language>");
    }

    /// Forgets all texts and makes a language current; nothing is stored.
    static void begin(const QString& language = "en-us")
    {
        Change::m_languageHash.clear();
        service().setSetting("language", "active", '_' + language);
        Change::GetSettingDefaultLang();
    }
};

void TestTranslation::file_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("texts"); // "id=text" in the order of the identifiers, separated by "|"
    QTest::newRow("any depth") << QByteArray("<a><b>" + item("B", "x") + "</b>" + item("A", "") + "</a>")
                               << "A=|B=x";
    QTest::newRow("exact names") << QByteArray("<a><Item name='A'>x</Item><item Name='B'>y</item></a>")
                                 << "=y";
    QTest::newRow("last one counts") << QByteArray("<a>" + item("A", "x") + item("A", "y") + "</a>") << "A=y";
    QTest::newRow("markup") << QByteArray("<a>" + item("A", "x <b>y</b>&amp;<![CDATA[<]]>") + item("B", "z") +
                                          "</a>")
                            << "A=x y&<|B=z";
    QTest::newRow("escapes") << QByteArray("<a>" + item("A", "a\\nb\\rc\\vd\\fe\\tf\ng\\x\\N") + "</a>")
                             << "A=abcde            f\ng\\x\\N";
    QTest::newRow("escapes in turn") << QByteArray("<a>" + item("A", "\\\\nr|\\\\rn") + "</a>") << "A=|\\n";
    QTest::newRow("fault half-way") << QByteArray("<a>" + item("A", "x") + "<b></a>" + item("B", "y"))
                                    << "A=x";
    QTest::newRow("empty") << QByteArray() << "";
    QTest::newRow("binary") << QByteArray("\x7F\0\xFF<item", 8) << "";
}

void TestTranslation::file()
{
    QFETCH(QByteArray, xml);
    begin();
    QBuffer device(&xml);
    QVERIFY(device.open(QIODevice::ReadOnly));
    QVERIFY(Change::readXmlFile(&device, "P"));
    QVERIFY(!Change::readXmlFile(nullptr, "P"));
    QStringList texts;
    const auto& table = Change::m_languageHash["P"];
    for (auto entry = table.begin(); entry != table.end(); ++entry)
        texts.append(entry.key() + '=' + entry.value());
    texts.sort();
    QTEST(texts.join('|'), "texts");
}

// Every miss reads the file, so that one that comes later is found; a hit does not.
void TestTranslation::misses()
{
    begin();
    const QString late = fileName("Late", "en-us");
    QFile::remove(late);
    QCOMPARE(Change::tr("A", "Late"), QString());
    QCOMPARE(log().count("File " + late + " does not exist"), 1);
    QVERIFY(Change::m_languageHash["Late"].contains("A"));
    install("Late", "en-us", item("A", "x"));
    QCOMPARE(Change::tr("A", "Late"), QString("x"));
    QCOMPARE(Change::tr("A", "Late"), QString("x"));
    QCOMPARE(Change::tr("B", "Late"), QString());
    QCOMPARE(log().count("{file}: LoadLangFile: loading " + late), 3);
    QCOMPARE(log().count("{file}: tr: langid = A, trans = x, plugin=Late"), 1);
    QFile::remove(late);
    QVERIFY(QDir().mkpath(late)); // a folder cannot be read
    QVERIFY(!Change::LoadLangFile("Late"));
    QVERIFY(log().contains("Error open file:" + late));
    QVERIFY(QDir().rmdir(late));
}

void TestTranslation::shortcut_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("key"); // -1 for none

    const auto row = [](const char* text, int position, const char* label, int key,
                        const char* language = "en-us") {
        QTest::addRow("%s: %s", language, text) << language << text << position << label << key;
    };
    row("Save (Ctrl+S)", 5, "Save ", Qt::CTRL + Qt::Key_S);
    row("Save Ctrl+S", 5, "Save ", Qt::CTRL + Qt::Key_S);
    row("Quit (Ctrl+Shift+q)", 5, "Quit ", Qt::CTRL + Qt::SHIFT + Qt::Key_Q);
    row("Find (Shift+Alt+F)", 12, "Find (Shift+", Qt::ALT + Qt::Key_F); // Alt is sought before Shift
    row("Delete Del", 7, "Delete ", Qt::Key_Delete);
    row("Delete (Del)", 7, "Delete ", Qt::Key_Delete);
    row("Rename (F2)", 7, "Rename ", Qt::Key_F2);
    row("Rename F2", 7, "Rename ", Qt::Key_F2);
    row("Ctrl+A or (Ctrl+B)", 10, "Ctrl+A or ", Qt::CTRL + Qt::Key_B);
    row("Twice (Ctrl+Ctrl+S+S)", 6, "Twice ", 2 * Qt::CTRL + 2 * Qt::Key_S);
    row("Zoom (Ctrl++)", 5, "Zoom ", Qt::CTRL);
    row("Some (Ctrl+1)", 5, "Some ", Qt::CTRL);
    row("Help (F2Help)", 5, "F2Help", -1);
    row("Model-Alt", 6, "Model-", Qt::ALT);
    row("Plain (text)", -1, "Plain (text)", -1);
    row("(Ctrl+S)", 1, "(", Qt::CTRL + Qt::Key_S);
    row("(F2)", 0, "(F2)", -1);
    row("Del", 0, "Del", -1);
    row("Save (Strg+S)", -1, "Save (Strg+S)", -1);
    row("Sichern (Strg+S)", 8, "Sichern ", Qt::CTRL + Qt::Key_S, "de-de");
    row("Sichern (Ctrl+S)", -1, "Sichern (Ctrl+S)", -1, "de-de");
    row("Umbenennen (F2)", 11, "Umbenennen ", Qt::Key_F2, "de-de");
    row("Weg (Entf)", 4, "Entf", -1, "de-de");
    row("Suchen (Shift+F)", -1, "Suchen (Shift+F)", -1, "de-de");
}

void TestTranslation::shortcut()
{
    QFETCH(QString, language);
    QFETCH(QString, text);
    QFETCH(int, key);
    begin(language);
    QTEST(Change::FindControlKeyInLangString(text), "position");
    Change::m_languageHash["P"]["A"] = text;
    QString label;
    QKeySequence sequence(Qt::Key_Any);
    QCOMPARE(Change::tr("A", "P", label, sequence), key >= 0);
    QTEST(label, "label");
    QCOMPARE(sequence, key >= 0 ? QKeySequence(key) : QKeySequence());

    const QString overflowing = "A (Ctrl+" + QString("Alt+").repeated(100) + "S)";
    Change::m_languageHash["P"]["A"] = overflowing;
    Change::tr("A", "P", label, sequence);
    QVERIFY(!Change::tr("B", "Q", label, sequence) && label.isEmpty()); // and no file was read
    QVERIFY(!log().contains("{*}loading{*}"));
}

void TestTranslation::shortcutsOff()
{
    install("P", "en-us", item("A", "Open (Ctrl+O)") + item("B", "Del"));
    service().setSetting("system", "EnableShortCut", "false");
    begin();
    QCOMPARE(Change::tr("A", "P"), QString("Open "));
    QCOMPARE(Change::tr("B", "P"), QString("Del"));
    Change::m_languageHash["P"]["C"] = "Save (Ctrl+S)";
    QString label;
    QKeySequence key(Qt::Key_Any);
    QVERIFY(!Change::tr("C", "P", label, key));
    QCOMPARE(label, QString("Save (Ctrl+S)"));
    QVERIFY(key.isEmpty());

    service().setSetting("system", "EnableShortCut", "False"); // anything else is yes
    Change::SetLangName("en-us");                              // reads the switch last
    QCOMPARE(Change::tr("A", "P"), QString("Open "));
    Change::SetLangName("en-us");
    QCOMPARE(Change::tr("A", "P"), QString("Open (Ctrl+O)"));
}

// Texts that the new file lacks stay in the old language, and so do plugins without a file for it.
void TestTranslation::switchLanguage()
{
    install("P", "en-us", item("A", "yes") + item("B", "only here"));
    install("P", "de-de", item("A", "ja"));
    install("Q", "en-us", item("A", "no"));
    begin();
    QCOMPARE(Change::tr("A", "P") + Change::tr("A", "Q"), QString("yesno"));
    Change::SetLangName("de-de");
    QCOMPARE(Change::GetLangName(), QString("de-de"));
    QCOMPARE(Change::tr("A", "P") + Change::tr("B", "P") + Change::tr("A", "Q"), QString("jaonly hereno"));
    QCOMPARE(service().calls(), QStringList("QRVL_SetSettings(language, active, _de-de)"));
}

void TestTranslation::settings_data()
{
    QTest::addColumn<QString>("stored"); // null: none is stored
    QTest::addColumn<QString>("name");
    QTest::newRow("stored") << "_fr-fr"
                            << "fr-fr";
    QTest::newRow("none") << QString() << "";
    QTest::newRow("underscore alone") << "_"
                                      << "";
    QTest::newRow("unknown") << "_x/../y"
                             << "x/../y";
}

void TestTranslation::settings()
{
    QFETCH(QString, stored);
    QFETCH(QString, name);
    begin();
    service().setSetting("language", "active", stored);
    install("P", "en-us", item("A", "yes"));
    install("P", "fr-fr", item("A", "oui"));
    QCOMPARE(Change::Stratup_tr("A", "P"), name == "fr-fr" ? QString("oui") : QString());
    QCOMPARE(Change::GetLangName(), name);
    QCOMPARE(log().count("10:24:16 : {file} : Stratup_tr : Enter"), 1);
    QCOMPARE(log().firstMissingInOrder({"10:24:16 : {file} : StartupLoadLangFile : Enter",
                                        "{file}: LoadLangFile: loading {*}_" + name + ".lang",
                                        "10:24:16 : {file} : StartupLoadLangFile : Exit",
                                        "10:24:16 : {file} : Stratup_tr : Exit"}),
             QString());
}

// For the thread sanitizer. Each text is one of the two languages, never a mixture and never missing.
void TestTranslation::switchWhileAsking()
{
    install("P", "en-us", item("A", "Save (Ctrl+S)"));
    install("P", "de-de", item("A", "Sichern (Strg+S)"));
    begin();
    Change::tr("A", "P");
    std::atomic<bool> isOver{false};
    std::atomic<int> wrong{0};
    std::vector<std::thread> askers;
    for (int i = 0; i < 4; ++i)
        askers.emplace_back([&] {
            QString label;
            QKeySequence key;
            while (!isOver) {
                const QString text = Change::tr("A", "P");
                wrong += text != "Save (Ctrl+S)" && text != "Sichern (Strg+S)";
                wrong += !Change::tr("A", "P", label, key) || key != QKeySequence(Qt::CTRL + Qt::Key_S);
                wrong += Change::GetLangName().size() != 5;
                Change::Stratup_tr("none", "P");
            }
        });
    for (int round = 0; round < 50; ++round)
        Change::SetLangName(round % 2 ? "en-us" : "de-de");
    isOver = true;
    for (std::thread& asker : askers)
        asker.join();
    QCOMPARE(wrong.load(), 0);
}

QTEST_GUILESS_MAIN(TestTranslation)
#include "tst_translation.moc"
