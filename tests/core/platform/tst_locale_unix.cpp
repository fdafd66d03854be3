// How names of locales and the files that set them become language identifiers.
#include "platform/LanguageId.h"
#include "platform/LocaleLanguage_unix.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace Platform;

class TestLocale : public QObject
{
    Q_OBJECT

private slots:
    void identifier_data();
    void identifier();
    void environment_data();
    void environment();
    void files_data();
    void files();
};

void TestLocale::identifier_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<int>("id");

    const auto row = [](const QByteArray& locale, int id) {
        QTest::newRow(locale.constData()) << locale << id;
    };
    row("en_US", 0x0409);
    row("de_DE.UTF-8", 0x0407);
    row("de_DE.ISO-8859-15@euro", 0x0407);
    row("pt_BR", 0x0416);
    row("es_ES", 0x0c0a);
    row("nb_NO", 0x0414);
    row("zh_CN.GB18030", 0x0804);
    row("zh_TW", 0x0404);
    row("de", 0x0407); // the language's usual country
    row("zh", 0x0804);
    row("sr_RS", 0x281a); // two scripts: the usual one, and the one asked for
    row("sr_RS.UTF-8@latin", 0x241a);
    row("uz_UZ@cyrillic", 0x0843);
    row("C", 0x0409);
    row("C.UTF-8", 0x0409);
    row("POSIX", 0x0409);
    row("", 0);
    row(".UTF-8", 0);
    row("qq_QQ", 0);
    row("no language at all", 0);
    row(QByteArray(5000, 'x'), 0);
}

void TestLocale::identifier()
{
    QFETCH(const QByteArray, locale);
    QTEST(int(languageIdOfLocale(locale)), "id");
}

void TestLocale::environment_data()
{
    QTest::addColumn<QByteArray>("all");
    QTest::addColumn<QByteArray>("messages");
    QTest::addColumn<QByteArray>("lang");
    QTest::addColumn<int>("id");

    QTest::newRow("all first") << QByteArray("fr_FR") << QByteArray("it_IT") << QByteArray("de_DE") << 0x040c;
    QTest::newRow("then messages") << QByteArray("") << QByteArray("it_IT") << QByteArray("de_DE") << 0x0410;
    QTest::newRow("then lang") << QByteArray("") << QByteArray("") << QByteArray("de_DE") << 0x0407;
    QTest::newRow("none") << QByteArray("") << QByteArray("") << QByteArray("") << 0;
}

void TestLocale::environment()
{
    const char* const variables[] = {"LC_ALL", "LC_MESSAGES", "LANG"};
    const char* const columns[] = {"all", "messages", "lang"};
    for (int i = 0; i < 3; ++i)
        qputenv(variables[i], *static_cast<QByteArray*>(QTest::qData(columns[i], qMetaTypeId<QByteArray>())));
    QTEST(int(userLanguageId()), "id");
}

void TestLocale::files_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<QByteArray>("locale");

    const QByteArray other = "LANG=it_IT\n";
    QTest::newRow("bare") << QByteArray("LANG=de_DE.UTF-8\n") << other << QByteArray("de_DE.UTF-8");
    QTest::newRow("quoted") << QByteArray("LC_ALL=C\n LANG=\"de_DE\" \r\n") << other << QByteArray("de_DE");
    QTest::newRow("single quotes") << QByteArray("LANG='de_DE'") << other << QByteArray("de_DE");
    QTest::newRow("last counts") << QByteArray("LANG=fr_FR\nLANG=de_DE\n") << other << QByteArray("de_DE");
    QTest::newRow("comment") << QByteArray("# LANG=de_DE\n#LANG=fr_FR\n") << other << QByteArray("it_IT");
    QTest::newRow("empty") << QByteArray("LANG=\n") << other << QByteArray("it_IT");
    QTest::newRow("other name") << QByteArray("LANGUAGE=de\nOLDLANG=de\n") << other << QByteArray("it_IT");
    QTest::newRow("one quote") << QByteArray("LANG=\"\n") << other << QByteArray("\"");
    QTest::newRow("no first file") << QByteArray() << other << QByteArray("it_IT");
    QTest::newRow("no file") << QByteArray() << QByteArray() << QByteArray("");
}

void TestLocale::files()
{
    QFETCH(const QByteArray, first);
    QFETCH(const QByteArray, second);
    const QTemporaryDir folder;
    QStringList names;
    for (const QByteArray& content : {first, second}) {
        names.append(folder.filePath(QString::number(names.size())));
        QFile file(names.last());
        if (!content.isNull())
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    QTEST(localeOfFiles(names), "locale");
}

QTEST_GUILESS_MAIN(TestLocale)
#include "tst_locale_unix.moc"
