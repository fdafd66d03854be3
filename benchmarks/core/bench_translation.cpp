// Looking up translated strings, compared with Qt's own translator; reading language files, compared with only
// running Qt's reader over the same file; switching the language of many plugins.
#include "Installation.h"

#include "Change/Change.h"
#include "Change/LanguageFiles.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTranslator>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace {

constexpr int TextCount = 5000;
constexpr int PluginCount = 30;
constexpr int TextsPerPlugin = 200;
const QString PluginName = QStringLiteral("BigPlugin");
const QString SoughtId = QStringLiteral("IDS_BIGPLUGIN_TEXT_2500");

QTranslator* translator = nullptr;

QString id(int number)
{
    return QStringLiteral("IDS_BIGPLUGIN_TEXT_%1").arg(number);
}

/// As in real files, some strings occur often ("OK", "Cancel").
QString textOf(int number)
{
    return number % 5 == 0 ? QStringLiteral("Cancel")
                           : QStringLiteral("Text number %1 of this plugin").arg(number);
}

QString languageFile(const QString& name, const QString& language)
{
    const QString plugins = QCoreApplication::applicationDirPath() + QStringLiteral("/plugins");
    QDir().mkpath(plugins + QLatin1Char('/') + name);
    return LanguageFiles::path(plugins, name, language);
}

template <typename WriteTexts>
void writeXml(const QString& path, const WriteTexts& writeTexts)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("Cannot write %s", qUtf8Printable(path));
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    writeTexts(xml);
    xml.writeEndDocument();
}

void writeLanguageFile(const QString& path, int count)
{
    writeXml(path, [count](QXmlStreamWriter& xml) {
        xml.writeStartElement(QStringLiteral("language"));
        for (int number = 0; number < count; ++number) {
            xml.writeStartElement(QStringLiteral("item"));
            xml.writeAttribute(QStringLiteral("name"), id(number));
            xml.writeCharacters(textOf(number));
            xml.writeEndElement();
        }
    });
}

void writeTranslationSource(const QString& path)
{
    writeXml(path, [](QXmlStreamWriter& xml) {
        xml.writeStartElement(QStringLiteral("TS"));
        xml.writeAttribute(QStringLiteral("version"), QStringLiteral("2.1"));
        xml.writeStartElement(QStringLiteral("context"));
        xml.writeTextElement(QStringLiteral("name"), PluginName);
        for (int number = 0; number < TextCount; ++number) {
            xml.writeStartElement(QStringLiteral("message"));
            xml.writeTextElement(QStringLiteral("source"), id(number));
            xml.writeTextElement(QStringLiteral("translation"), textOf(number));
            xml.writeEndElement();
        }
    });
}

/// The strings of the language file, compiled for Qt's translator.
void loadTranslator(QTranslator& peer, const Installation& installation)
{
    const QString source = installation.path("texts.ts");
    const QString compiled = installation.path("texts.qm");
    writeTranslationSource(source);
    QProcess::execute(QStringLiteral(LRELEASE),
                      {QStringLiteral("-silent"), source, QStringLiteral("-qm"), compiled});
    if (!peer.load(compiled))
        qFatal("The texts could not be compiled with %s", LRELEASE);
}

void translate(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(Change::tr(SoughtId, PluginName));
    if (Change::tr(SoughtId, PluginName) != textOf(2500))
        state.SkipWithError("wrong text");
}

void translateWithQt(benchmark::State& state)
{
    const QByteArray context = PluginName.toUtf8();
    const QByteArray source = SoughtId.toUtf8();
    for (auto _ : state)
        benchmark::DoNotOptimize(translator->translate(context, source));
    if (translator->translate(context, source) != textOf(2500))
        state.SkipWithError("wrong text");
}

/// Into an empty table, as at the start.
void load(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        Change::m_languageHash.clear();
        state.ResumeTiming();
        Change::LoadLangFile(PluginName);
    }
    if (Change::m_languageHash[PluginName].size() != TextCount)
        state.SkipWithError("not all texts were read");
}

void barePass(benchmark::State& state)
{
    const QString path = languageFile(PluginName, QStringLiteral("en-us"));
    for (auto _ : state) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
            qFatal("Cannot read the file");
        QXmlStreamReader reader(&file);
        while (!reader.atEnd())
            benchmark::DoNotOptimize(reader.readNext());
    }
}

void switchLanguage(benchmark::State& state)
{
    Change::m_languageHash.clear();
    for (int number = 0; number < PluginCount; ++number) {
        const QString name = QStringLiteral("Plugin%1").arg(number);
        writeLanguageFile(languageFile(name, QStringLiteral("en-us")), TextsPerPlugin);
        writeLanguageFile(languageFile(name, QStringLiteral("de-de")), TextsPerPlugin);
        Change::LoadLangFile(name);
    }
    bool german = false;
    for (auto _ : state) {
        german = !german;
        Change::SetLangName(german ? QStringLiteral("de-de") : QStringLiteral("en-us"));
    }
    Change::SetLangName(QStringLiteral("en-us"));
    Change::m_languageHash.clear();
    Change::LoadLangFile(PluginName);
}

} // namespace

BENCHMARK(translate)->Name("translate/ours");
BENCHMARK(translateWithQt)->Name("translate/peer_qtranslator");
BENCHMARK(translate)->Name("translate_threads/ours")->Threads(8)->UseRealTime();
BENCHMARK(translateWithQt)->Name("translate_threads/peer_qtranslator")->Threads(8)->UseRealTime();
BENCHMARK(load)->Name("load_language_file/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(barePass)->Name("load_language_file/peer_reader")->Unit(benchmark::kMillisecond);
BENCHMARK(switchLanguage)->Name("switch_language/ours")->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int argc, char** argv)
{
    QTranslator peer;
    return runBenchmarks(argc, argv, [&peer](const Installation& installation) {
        loadTranslator(peer, installation);
        translator = &peer;
        writeLanguageFile(languageFile(PluginName, QStringLiteral("en-us")), TextCount);
        Change::LoadLangFile(PluginName);
    });
}
