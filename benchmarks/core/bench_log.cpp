// The cost of a log line while its category is disabled.
#include "Installation.h"

#include "common/Log.h"

#include <benchmark/benchmark.h>

namespace {

const QString SampleText = QStringLiteral("D754AE84-535F-4c18-85F8-F154CFE34DDF");

void lineOff(benchmark::State& state)
{
    for (auto _ : state) {
        LOG_DEBUG("%s: %s: %s: %s is initialized", LOG_TIME, LOG_FILE, LOG_FUNCTION,
                  qUtf8Printable(SampleText));
        benchmark::ClobberMemory();
    }
}

/// printf-style qDebug evaluates all arguments before it checks whether the category is enabled.
void lineOffWithQDebug(benchmark::State& state)
{
    for (auto _ : state) {
        qDebug("%s: %s: %s: %s is initialized", Log::timeText().constData(), __FILE__, __func__,
               qUtf8Printable(SampleText));
        benchmark::ClobberMemory();
    }
}

} // namespace

BENCHMARK(lineOff)->Name("log_line_off/ours");
BENCHMARK(lineOffWithQDebug)->Name("log_line_off/peer_qdebug");

int main(int argc, char** argv)
{
    return runBenchmarks(argc, argv);
}
