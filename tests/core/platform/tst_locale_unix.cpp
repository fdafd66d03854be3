// Language identifiers of locales, and the files and variables that set the locale.
#include "platform/LanguageId_p.h"
#include "platform/LocaleLanguage_unix_p.h"

#include <QTemporaryDir>
#include <QtTest>

#include <tuple>
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
    const std::tuple<QByteArray, int> rows[] = {
        {"en_US", 0x0409},
        {"de_DE.UTF-8", 0x0407},
        {"es_ES", 0x0c0a},
        {"nb_NO", 0x0414},
        {"zh_CN.GB18030", 0x0804},
        {"zh_TW", 0x0404},
        {"zh", 0x0804},    // the language's usual country
        {"sr_RS", 0x281a}, // two scripts: the usual one, and the one asked for
        {"sr_RS.UTF-8@latin", 0x241a},
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
    const std::tuple<QByteArray, QByteArray, QByteArray, int> rows[] = {
        {"fr_FR", "it_IT", "de_DE", 0x040c},
        {"", "it_IT", "de_DE", 0x0410},
        {"", "", "de_DE", 0x0407},
        {"", "", "", 0},
    };
    for (const auto& [all, messages, lang, id] : rows) {
        qputenv("LC_ALL", all);
        qputenv("LC_MESSAGES", messages);
        qputenv("LANG", lang);
        QCOMPARE(int(userLanguageId()), id);
    }
}

void TestLocale::files()
{
    const std::pair<QByteArray, QByteArray> rows[] = {
        {"LANG=de_DE.UTF-8\n", "de_DE.UTF-8"},
        {"LC_ALL=C\n LANG=\"de_DE\" \r\n", "de_DE"},
        {"LANG='de_DE'", "de_DE"},
        {"LANG=fr_FR\nLANG=de_DE\n", "de_DE"},
        {"# LANG=de_DE\n#LANG=fr_FR\n", "it_IT"},
        {"LANG=\n", "it_IT"},
        {"LANGUAGE=de\nOLDLANG=de\n", "it_IT"},
        {"LANG=\"\n", "\""},
    };
    const QTemporaryDir folder;
    const QStringList names = {folder.filePath("missing"), folder.filePath("1"), folder.filePath("2")};
    QCOMPARE(localeOfFiles(names), QByteArray());
    QFile second(names[2]);
    QVERIFY(second.open(QIODevice::WriteOnly) && second.write("LANG=it_IT\n") > 0 && second.flush());
    for (const auto& [content, locale] : rows) {
        QFile first(names[1]);
        QVERIFY(first.open(QIODevice::WriteOnly) && first.write(content) == content.size() && first.flush());
        QCOMPARE(localeOfFiles(names), locale);
    }
}

QTEST_GUILESS_MAIN(TestLocale)
#include "tst_locale_unix.moc"
