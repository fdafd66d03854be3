// Texts of plugins: their files, look-ups, shortcuts, and switching the language.
#include "Change/Change.h"
#include "Change/LanguageFiles.h"
#include "CoreTest.h"
#include "Samples.h"

#include <QDir>
#include <QKeySequence>

#include <atomic>
#include <future>

class TestTranslation : public CoreTest
{
    Q_OBJECT

private slots:
    void file();
    void misses();
    void shortcut();
    void shortcutsOff();
    void switchLanguage();
    void switchWhileAsking();

private:
    using Texts = QHash<QString, QString>; // by identifier

    static QByteArray item(const char* id, const QByteArray& text)
    {
        return QByteArray("<item name=\"") + id + "\">" + text + "</item>";
    }

    /// Forgets all texts and makes a language current.
    static void begin(const QString& language = "en-us")
    {
        Change::m_languageHash.clear();
        service().setSetting("language", "active", '_' + language);
        Change::GetSettingDefaultLang();
    }

    static void install(const QString& plugin, const QString& language, const QByteArray& items)
    {
        writeFile(LanguageFiles::path(installed("plugins"), plugin, language), "<a>" + items + "</a>");
    }
};

void TestTranslation::file()
{
    const QByteArray deep = QByteArray("<b>").repeated(100000) + "x" + QByteArray("</b>").repeated(100000);
    const std::pair<QByteArray, Texts> rows[] = {
        {"<b>" + item("B", "x") + "</b><Item name='A'/><item Name='A'>y</item>", {{"", "y"}, {"B", "x"}}},
        {item("A", "z") + item("A", "x<!-- y --><?p?>-<b>y</b>&amp;"), {{"A", "x-y&"}}},
        {item("A", "a\\nb\\rc\\vd\\fe\\tf\ng\\x\\\\rn\\N"), {{"A", "abcde            f\ng\\x\\n\\N"}}},
        {item("A", "x") + "<item name='A'>y</b></item>" + item("B", "y"), {{"A", "x"}}},
        {item("A", deep), {{"A", "x"}}},
    };
    for (const auto& [xml, texts] : rows) {
        begin();
        install("P", "en-us", xml);
        QVERIFY(Change::LoadLangFile("P"));
        QCOMPARE(Change::m_languageHash["P"], texts);
    }
}

// Every miss reads the file, so that one that is added later is found; a hit does not. The table and the
// language keep no characters of the caller.
void TestTranslation::misses()
{
    begin();
    const QString file = installed("plugins/Late/Late_Late.lang");
    QFile::remove(file);
    QString caller = "Late";
    const QString late = QString::fromRawData(caller.constData(), caller.size());
    Change::SetLangName(late);
    QCOMPARE(Change::tr(late, late), QString());
    caller.fill('#');
    QCOMPARE(Change::m_languageHash, (QHash<QString, Texts>{{"Late", {{"Late", ""}}}}));
    QVERIFY(QDir().mkpath(file) && !Change::LoadLangFile("Late") && QDir().rmdir(file));
    VERIFY_LOGGED_IN_ORDER("File " + file + " does not exist", "Error open file:" + file);
    install("Late", "Late", item("A", "x"));
    Change::tr("A", "Late");
    QCOMPARE(Change::tr("A", "Late"), QString("x"));
    QCOMPARE(Change::tr("B", "Late") + Change::tr("B", "Late"), QString());
    QCOMPARE(log().count("{file}: LoadLangFile: loading " + file), 5);
    QCOMPARE(log().count("{file}: tr: langid = A, trans = x, plugin=Late"), 1);
    QVERIFY(!Change::readXmlFile(nullptr, "Late"));
}

/// Samples are a language and a text, and its parts: position of the shortcut, label, keys or "none".
void TestTranslation::shortcut()
{
    for (const Sample& sample : samplesIn(SAMPLES "/shortcuts.txt")) {
        const QString name = sample.name, text = name.section(' ', 1);
        begin(name.section(' ', 0, 0));
        Change::m_languageHash["P"]["A"] = text;
        QString label;
        QKeySequence key(Qt::Key_Any);
        const QString keys = Change::tr("A", "P", label, key) ? key.toString() : "none" + key.toString(),
                      position = QString::number(Change::FindControlKeyInLangString(text));
        QCOMPARE(QStringList({position, label, keys}).join('|'), QString(sample.firstLine()));
    }
}

void TestTranslation::shortcutsOff()
{
    install("P", "en-us", item("A", "Open (Ctrl+O)") + item("B", "Del"));
    service().setSetting("system", "EnableShortCut", "false");
    begin();
    QString label;
    QKeySequence key(Qt::Key_Any);
    QVERIFY(!Change::tr("A", "P", label, key) && label.isEmpty()); // reads no file
    Change::tr("A", "P");
    QCOMPARE(Change::m_languageHash["P"], (Texts{{"A", "Open "}, {"B", "Del"}}));
    Change::m_languageHash["P"]["A"] = "Save (Ctrl+S)";
    QVERIFY(!Change::tr("A", "P", label, key) && key.isEmpty() && label == "Save (Ctrl+S)");

    service().setSetting("system", "EnableShortCut", "False"); // anything else is yes
    for (const char* text : {"Open ", "Open (Ctrl+O)"}) {      // the switch is read after the files
        Change::SetLangName("en-us");
        QCOMPARE(Change::tr("A", "P"), QString(text));
    }
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
    QCOMPARE(Change::tr("A", "P") + Change::tr("B", "P") + Change::tr("A", "Q"), QString("jaonly hereno"));
    QCOMPARE(service().calls(), QStringList("QRVL_SetSettings(language, active, _de-de)"));
    QCOMPARE(LanguageFiles::languages(installed("plugins"), "P"), QStringList({"de-de", "en-us"}));

    install("R", "fr-fr", item("A", "oui"));
    service().setSetting("language", "active", "_fr-fr"); // start-up texts follow the settings
    QCOMPARE(Change::Stratup_tr("A", "R"), QString("oui"));
    VERIFY_LOGGED_IN_ORDER(
        "10:24:16 : {file} : Stratup_tr : Enter", "10:24:16 : {file} : StartupLoadLangFile : Enter",
        "10:24:16 : {file} : StartupLoadLangFile : Exit", "10:24:16 : {file} : Stratup_tr : Exit");
    service().reset(); // a hit does not ask for them
    Change::Stratup_tr("A", "R");
    QCOMPARE(Change::GetLangName(), QString("fr-fr"));
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
    const auto ask = [&] {
        QSet<QString> seen;
        QString label;
        QKeySequence key;
        while (!isOver) {
            Change::tr("A", "P", label, key);
            seen += {label + key.toString(), Change::Stratup_tr("A", "P"), Change::GetLangName()};
        }
        return seen;
    };
    auto first = std::async(std::launch::async, ask);
    auto second = std::async(std::launch::async, ask);
    for (int round = 0; round < 50; ++round)
        Change::SetLangName(round % 2 ? "en-us" : "de-de");
    isOver = true;
    const QSet<QString> german{"Sichern Ctrl+S", "Sichern (Strg+S)", "de-de"};
    const QSet<QString> english{"Save Ctrl+S", "Save (Ctrl+S)", "en-us"};
    QCOMPARE(first.get() + second.get() - german - english, QSet<QString>());
}

QTEST_GUILESS_MAIN(TestTranslation)
#include "tst_translation.moc"
