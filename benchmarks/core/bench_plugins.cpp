// Loading and initialising trivial plugins through the container, compared with one folder listing and
// QPluginLoader alone in the same order: plugins use one another, so all are loaded before the first is
// initialised.
#include "Installation.h"

#include "PluginContainer/PluginContainer.h"
#include "PluginContainer/interfaces/IBasePlugin.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QLibrary>
#include <QPluginLoader>

#include <chrono>
#include <memory>
#include <vector>

namespace {

const Installation* installation = nullptr;

template <typename Work>
void measure(benchmark::State& state, Work work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
}

QString number(int value)
{
    return QString::number(value).rightJustified(3, QLatin1Char('0'));
}

void loadWithContainer(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    QString library = QStringLiteral("<plugins>");
    QString config = QStringLiteral("<config><common>");
    for (int i = 0; i < count; ++i) {
        library += QStringLiteral("<plugin><name>Trivial%1</name><clsid>%1</clsid><url>Trivial%1</url>"
                                  "<static>true</static></plugin>")
                       .arg(number(i));
        config += QStringLiteral("<item clsid=\"%1\"/>").arg(number(i));
    }
    const QString libraryFile = installation->write("pluginslib.xml", library.toUtf8() + "</plugins>");
    const QString configFile =
        installation->write("PluginsConfig.xml", config.toUtf8() + "</common></config>");

    for (auto _ : state) {
        PluginContainer container(libraryFile, configFile, true);
        measure(state, [&] { container.LoadAllStaticOrActivePlugin(); });
        if (container.GetLoadedPluginClsids().size() != count)
            state.SkipWithError("not all plugins were loaded");
    }
}

void loadBare(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        std::vector<std::unique_ptr<QPluginLoader>> loaders;
        measure(state, [&] {
            const QDir folder(QCoreApplication::applicationDirPath());
            const QFileInfoList files = folder.entryInfoList({QStringLiteral("Trivial*")}, QDir::Files);
            for (int i = 0; i < count; ++i) {
                loaders.push_back(std::make_unique<QPluginLoader>(files.at(i).absoluteFilePath()));
                loaders.back()->setLoadHints(QLibrary::ResolveAllSymbolsHint);
                loaders.back()->instance();
            }
            for (const auto& loader : loaders) {
                if (auto* const plugin = qobject_cast<IBasePlugin*>(loader->instance()))
                    plugin->Init();
                else
                    state.SkipWithError("a plugin was not loaded");
            }
        });
        for (const auto& loader : loaders)
            loader->unload();
    }
}

void useSizes(benchmark::internal::Benchmark* registered)
{
    registered->Arg(10)->Arg(50)->Arg(200)->Unit(benchmark::kMillisecond)->UseManualTime();
}

} // namespace

BENCHMARK(loadWithContainer)->Name("load_plugins/ours")->Apply(useSizes);
BENCHMARK(loadBare)->Name("load_plugins/peer_loader")->Apply(useSizes);

int main(int argc, char** argv)
{
    return runBenchmarks(argc, argv, [](const Installation& own) { installation = &own; });
}
