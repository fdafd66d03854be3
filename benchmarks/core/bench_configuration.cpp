// Reading large plugin files and applying the customisation of one device, compared with only running
// Qt's reader over the same files. Checking whether a customisation would change anything, compared with applying it.
#include "Installation.h"

#include "PluginContainer/PluginContainer.h"

#include <benchmark/benchmark.h>

#include <QXmlStreamReader>

#include <memory>

namespace {

const Installation* installation = nullptr;

QByteArray clsid(int number)
{
    return "8A2F0000-0000-4000-8000-" + QByteArray::number(number).rightJustified(12, '0');
}

QString writeLibraryFile(int records)
{
    QByteArray xml = "<plugins>\n";
    for (int number = 0; number < records; ++number)
        xml += "  <plugin>\n    <name>Plugin" + QByteArray::number(number) + "</name>\n    <clsid>" +
               clsid(number) + "</clsid>\n    <url>.\\Plugin" + QByteArray::number(number) +
               ".dll</url>\n    <active>false</active>\n    <type>0</type>\n    "
               "<setting_title>false</setting_title>\n"
               "    <static>false</static>\n  </plugin>\n";
    return installation->write("pluginslib.xml", xml + "</plugins>\n");
}

/// 20 rules per device, so that the number of devices grows with the number of rules.
QString writeConfigFile(int rules, int records)
{
    constexpr int rulesPerDevice = 20;
    QByteArray xml = "<config>\n";
    for (int rule = 0; rule < rules; rule += rulesPerDevice) {
        xml += "  <device name=\"Device " + QByteArray::number(rule) + "\">\n    <plugin>\n";
        for (int i = rule; i < rule + rulesPerDevice; ++i)
            xml += (i % 2 ? "      <add clsid=\"" : "      <remove clsid=\"") + clsid(i % records) + "\"/>\n";
        xml += "    </plugin>\n  </device>\n";
    }
    return installation->write("PluginsConfig.xml", xml + "</config>\n");
}

void readAndCustomise(benchmark::State& state)
{
    const int records = static_cast<int>(state.range(0));
    const QString library = writeLibraryFile(records);
    const QString config = writeConfigFile(records * 10, records);
    for (auto _ : state) {
        auto container = std::make_unique<PluginContainer>(library, config, true);
        container->ApplyCustomizationForDevice(QStringLiteral("Device 200"));
        state.PauseTiming(); // the shut-down is not measured
        container.reset();
        state.ResumeTiming();
    }
    state.SetComplexityN(records);
}

void passOver(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("Cannot read the file");
    QXmlStreamReader reader(&file);
    while (!reader.atEnd())
        benchmark::DoNotOptimize(reader.readNext());
}

void barePass(benchmark::State& state)
{
    const int records = static_cast<int>(state.range(0));
    const QString library = writeLibraryFile(records);
    const QString config = writeConfigFile(records * 10, records);
    for (auto _ : state) {
        passOver(library);
        passOver(config);
    }
    state.SetComplexityN(records);
}

/// A container in which every plugin is enabled, and rules of one device that change nothing: the check has to
/// examine all of them.
std::unique_ptr<PluginContainer> makeSettledContainer(int records)
{
    QByteArray common;
    QByteArray device;
    for (int number = 0; number < records; ++number) {
        common += "<item clsid=\"" + clsid(number) + "\"/>";
        device += "<add clsid=\"" + clsid(number) + "\"/>";
    }
    const QString config = installation->write(
        "PluginsConfig.xml", "<config><common>" + common + "</common><device name=\"Lume\"><plugin>" +
                                 device + "</plugin></device></config>");
    return std::make_unique<PluginContainer>(writeLibraryFile(records), config, true);
}

void applyCustomisation(benchmark::State& state)
{
    const auto container = makeSettledContainer(static_cast<int>(state.range(0)));
    for (auto _ : state)
        container->ApplyCustomizationForDevice(QStringLiteral("Lume"));
}

void askForChanges(benchmark::State& state)
{
    const auto container = makeSettledContainer(static_cast<int>(state.range(0)));
    for (auto _ : state)
        if (container->IsCustomizationForDevice(QStringLiteral("Lume")))
            state.SkipWithError("the rules were to change nothing");
}

void useSizes(benchmark::internal::Benchmark* registered)
{
    registered->Arg(500)->Arg(1000)->Arg(2000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

} // namespace

BENCHMARK(readAndCustomise)->Name("read_configuration/ours")->Apply(useSizes);
BENCHMARK(barePass)->Name("read_configuration/peer_reader")->Apply(useSizes);

BENCHMARK(askForChanges)
    ->Name("customise/ours_ask")
    ->Arg(16000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(applyCustomisation)
    ->Name("customise/peer_apply")
    ->Arg(16000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

int main(int argc, char** argv)
{
    return runBenchmarks(argc, argv, [](const Installation& own) { installation = &own; });
}
