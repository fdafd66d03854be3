// Language identifiers of locales, and the files and variables that set the locale.
#include "TestFiles.h"
#include "platform/LanguageId_p.h"
#include "platform/LocaleLanguage_unix_p.h"

#include <QTemporaryDir>
#include <QtTest>

#include <utility>

using namespace Platform;

class TestLocale : public QObject
{
    Q_OBJECT

private slots:
    void identifier();
    void environment();
    void files();
};

void TestLocale::identifier()
{
    const std::pair<QByteArray, int> rows[] = {
        {"de_DE.UTF-8", 0x0407},
        {"zh_CN.GB18030", 0x0804},
        {"zh", 0x0804}, // the language's usual country
        {"sr_RS", 0x281a},
        {"sr_RS.UTF-8@latin", 0x241a}, // not the language's usual script
        {"uz_UZ@cyrillic", 0x0843},
        {"C.UTF-8", 0x0409},
        {"POSIX", 0x0409},
        {".UTF-8", 0},
        {"qq_QQ", 0},
        {QByteArray(5000, 'x'), 0},
    };
    for (const auto& [locale, id] : rows)
        QVERIFY2(languageIdOfLocale(locale) == id, locale);
}

void TestLocale::environment()
{
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        qputenv(name, "");
    QCOMPARE(int(userLanguageId()), 0);
    qputenv("LANG", "de_DE");
    QCOMPARE(int(userLanguageId()), 0x0407);
    qputenv("LC_MESSAGES", "it_IT");
    QCOMPARE(int(userLanguageId()), 0x0410);
    qputenv("LC_ALL", "fr_FR");
    QCOMPARE(int(userLanguageId()), 0x040c);
}

void TestLocale::files()
{
    const std::pair<QByteArray, QByteArray> rows[] = {
        {"LANG=de_DE.UTF-8\n", "de_DE.UTF-8"},
        {"LC_ALL=C\n LANG=\"de_DE\" \r\n", "de_DE"},
        {"LANG='de_DE'", "de_DE"},
        {"LANG=fr_FR\nLANG=de_DE\n", "de_DE"},
        {"LANG=\n", "it_IT"},
        {"#LANG=de\nLANGUAGE=de\nOLDLANG=de\n", "it_IT"},
        {"LANG=\"\n", "\""}, // not quoted
    };
    const QTemporaryDir folder;
    const QStringList names = {folder.filePath("missing"), folder.filePath("1"), folder.filePath("2")};
    QCOMPARE(localeOfFiles(names), QByteArray());
    writeFile(names[2], "LANG=it_IT\n");
    for (const auto& [content, locale] : rows) {
        writeFile(names[1], content);
        QCOMPARE(localeOfFiles(names), locale);
    }
}

QTEST_GUILESS_MAIN(TestLocale)
#include "tst_locale_unix.moc"
