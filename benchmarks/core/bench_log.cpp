// What a log line costs while its category is off.
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

/// printf-style qDebug forms every argument before it asks whether anybody wants the line.
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
