// Texts of plugins: their files, look-ups, shortcuts, and switching the language.
#include "Change/Change.h"
#include "Change/LanguageFiles.h"
#include "CoreTest.h"
#include "DataTable.h"
#include "LogOrder.h"

#include <QBuffer>
#include <QDir>
#include <QKeySequence>

#include <atomic>
#include <thread>

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
    void switchWhileAsking();

private:
    static QString fileName(const QString& plugin, const QString& language)
    {
        return installed("plugins/" + plugin + '/' + plugin + '_' + language + ".lang");
    }

    static void install(const QString& plugin, const QString& language, const QByteArray& items)
    {
        writeFile(fileName(plugin, language), "<language>" + items + "</language>");
    }

    /// Forgets all texts and makes a language current.
    static void begin(const QString& language = "en-us")
    {
        Change::m_languageHash.clear();
        service().setSetting("language", "active", '_' + language);
        Change::GetSettingDefaultLang();
    }
};

namespace {

QByteArray item(const char* id, const QByteArray& text)
{
    return QByteArray("<item name=\"") + id + "\">" + text + "</item>";
}

} // namespace

void TestTranslation::file_data()
{
    const auto row = dataTable<QByteArray, QString>("xml", "texts");
    row("items alone", "<b>" + item("B", "x") + "</b><Item name='A'>x</Item><item Name='A'>y</item>",
        "=y B=x");
    row("last one applies", item("A", "x") + item("A", "y"), "A=y");
    row("children", item("A", "x<!-- y --><?p?>-<b>y</b>&amp;") + item("B", "z"), "A=x-y& B=z");
    row("escapes", item("A", "a\\nb\\rc\\vd\\fe\\tf\ng\\x\\\\rn\\N"), "A=abcde            f\ng\\x\\n\\N");
    row("fault behind", item("A", "x") + "<b></a>" + item("B", "y"), "A=x");
    row("fault within", item("A", "x") + "<item name='A'>y", "A=x");
    row("no XML", QByteArray("\x7F\0\xFF<item", 8), "");
    const int depth = 100000;
    row("deeply nested",
        item("A", QByteArray("<b>").repeated(depth) + "x" + QByteArray("</b>").repeated(depth)), "A=x");
}

void TestTranslation::file()
{
    QFETCH(QByteArray, xml);
    begin();
    QBuffer device;
    device.setData("<a>" + xml + "</a>");
    QVERIFY(device.open(QIODevice::ReadOnly) && Change::readXmlFile(&device, "P"));
    QVERIFY(!Change::readXmlFile(nullptr, "P"));
    QStringList texts;
    const QHash<QString, QString> found = Change::m_languageHash["P"];
    for (auto text = found.begin(); text != found.end(); ++text)
        texts.append(text.key() + '=' + *text);
    texts.sort();
    QTEST(texts.join(' '), "texts");
}

// Every miss reads the file, so that one that is added later is found; a hit does not. The table and the
// language keep no characters of the caller.
void TestTranslation::misses()
{
    QString id = "A";
    QString plugin = "Late";
    QString language = "x-y";
    const auto raw = [](const QString& text) {
        return QString::fromRawData(text.constData(), text.size());
    };
    begin();
    const QString late = fileName("Late", "x-y");
    QFile::remove(late);
    Change::SetLangName(raw(language));
    QCOMPARE(Change::tr(raw(id), raw(plugin)), QString());
    QCOMPARE(log().count("File " + late + " does not exist"), 1);
    QVERIFY(QDir().mkpath(late) && !Change::LoadLangFile("Late") && QDir().rmdir(late));
    QVERIFY(log().contains("Error open file:" + late));
    for (QString* text : {&id, &plugin, &language})
        (*text)[0] = '#';
    QCOMPARE(Change::m_languageHash, (QHash<QString, QHash<QString, QString>>{{"Late", {{"A", ""}}}}));
    install("Late", "x-y", item("A", "x"));
    QCOMPARE(Change::tr("A", "Late"), QString("x"));
    QCOMPARE(Change::tr("A", "Late"), QString("x"));
    QCOMPARE(Change::tr("B", "Late"), QString());
    QCOMPARE(log().count("{file}: LoadLangFile: loading " + late), 4);
    QCOMPARE(log().count("{file}: tr: langid = A, trans = x, plugin=Late"), 1);
}

void TestTranslation::shortcut_data()
{
    // key: 0 for none
    const auto row =
        dataTable<QString, QString, int, QString, int>("language", "text", "position", "label", "key");
    row("brackets", "en-us", "Save (Ctrl+S)", 5, "Save ", Qt::CTRL + Qt::Key_S);
    row("bare", "en-us", "Save Ctrl+S", 5, "Save ", Qt::CTRL + Qt::Key_S);
    row("small letter", "en-us", "Quit (Ctrl+Shift+q)", 5, "Quit ", Qt::CTRL + Qt::SHIFT + Qt::Key_Q);
    row("Alt is sought first", "en-us", "Find (Shift+Alt+F)", 12, "Find (Shift+", Qt::ALT + Qt::Key_F);
    row("bare Shift", "en-us", "To Shift+Z", 3, "To ", Qt::SHIFT + Qt::Key_Z);
    row("named key", "en-us", "Delete Del", 7, "Delete ", Qt::Key_Delete);
    row("bare F2", "en-us", "Rename F2", 7, "Rename ", Qt::Key_F2);
    row("last one", "en-us", "(Del (Del)", 5, "(Del ", Qt::Key_Delete);
    row("sign", "en-us", "Zoom (Ctrl++)", 5, "Zoom ", Qt::CTRL);
    row("unknown key", "en-us", "Help (F2Help)", 5, "F2Help", 0);
    row("no letters", "en-us", "Odd (Alt`+{)", 4, "Alt`+{", 0);
    row("behind a bracket", "en-us", "(Ctrl+A)", 1, "(", Qt::CTRL + Qt::Key_A);
    row("at the start", "en-us", "(F2)", 0, "(F2)", 0);
    row("alone", "en-us", "Del", 0, "Del", 0);
    row("German", "de-de", "Sichern (Strg+S)", 8, "Sichern ", Qt::CTRL + Qt::Key_S);
    row("German, unknown key", "de-de", "Weg (Entf)", 4, "Entf", 0);
    row("German, none", "de-de", "Suchen (Shift+F)", -1, "Suchen (Shift+F)", 0);
    row("German, fixed", "de-de", "A Alt(Replace this in German)+S", 2, "A ", Qt::Key_S);
    const QString many = "A (Ctrl+" + QString("Alt+").repeated(100) + "S)"; // the sum wraps around
    row("many", "en-us", many, 2, "A ", int(Qt::CTRL + 100u * Qt::ALT + Qt::Key_S));
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
    QCOMPARE(Change::tr("A", "P", label, sequence), key != 0);
    QTEST(label, "label");
    QCOMPARE(sequence, key ? QKeySequence(key) : QKeySequence());
    QVERIFY(!Change::tr("B", "Q", label, sequence) && label.isEmpty() && !log().contains("{*}loading{*}"));
}

void TestTranslation::shortcutsOff()
{
    install("P", "en-us", item("A", "Open (Ctrl+O)") + item("B", "Del"));
    service().setSetting("system", "EnableShortCut", "false");
    begin();
    QCOMPARE(Change::tr("A", "P") + Change::tr("B", "P"), QString("Open Del"));
    Change::m_languageHash["P"]["C"] = "Save (Ctrl+S)";
    QString label;
    QKeySequence key(Qt::Key_Any);
    QVERIFY(!Change::tr("C", "P", label, key) && key.isEmpty());
    QCOMPARE(label, QString("Save (Ctrl+S)"));

    service().setSetting("system", "EnableShortCut", "False"); // anything else is yes
    Change::SetLangName("en-us");                              // reads the switch after the files
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
    QCOMPARE(LanguageFiles::languages(installed("plugins"), "P"), QStringList({"de-de", "en-us"}));
    QCOMPARE(LanguageFiles::direction("ar-sa"), Qt::RightToLeft);

    install("R", "fr-fr", item("A", "oui"));
    service().setSetting("language", "active", "_fr-fr"); // start-up texts follow the settings
    QCOMPARE(Change::Stratup_tr("A", "R"), QString("oui"));
    QCOMPARE(Change::GetLangName(), QString("fr-fr"));
    VERIFY_LOGGED_IN_ORDER(
        "10:24:16 : {file} : Stratup_tr : Enter", "10:24:16 : {file} : StartupLoadLangFile : Enter",
        "10:24:16 : {file} : StartupLoadLangFile : Exit", "10:24:16 : {file} : Stratup_tr : Exit");
    service().reset();
    QCOMPARE(Change::Stratup_tr("A", "R") + Change::GetLangName(),
             QString("ouifr-fr")); // a hit reads nothing
    QCOMPARE(Change::GetSettingDefaultLang(), QString());
}

// For the thread sanitizer. Each text is in one of the two languages, never a mixture and never missing.
void TestTranslation::switchWhileAsking()
{
    install("P", "en-us", item("A", "Save (Ctrl+S)"));
    install("P", "de-de", item("A", "Sichern (Strg+S)"));
    begin();
    Change::tr("A", "P");
    std::atomic<bool> isOver{false};
    std::atomic<int> wrong{0};
    const auto ask = [&] {
        QString label;
        QKeySequence key;
        while (!isOver) {
            const QString text = Change::tr("A", "P");
            wrong += text != "Save (Ctrl+S)" && text != "Sichern (Strg+S)";
            wrong += !Change::tr("A", "P", label, key) || key != QKeySequence(Qt::CTRL + Qt::Key_S);
            wrong += Change::GetLangName().size() != 5;
            Change::Stratup_tr("none", "P");
        }
    };
    std::thread askers[] = {std::thread(ask), std::thread(ask), std::thread(ask), std::thread(ask)};
    for (int round = 0; round < 50; ++round)
        Change::SetLangName(round % 2 ? "en-us" : "de-de");
    isOver = true;
    for (std::thread& asker : askers)
        asker.join();
    QCOMPARE(wrong.load(), 0);
}

QTEST_GUILESS_MAIN(TestTranslation)
#include "tst_translation.moc"
