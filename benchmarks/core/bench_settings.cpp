// Reading one of 1,000 settings through the whole stack, compared with GLib's key files.
#include "Installation.h"

#include "common/CommonUtils.h"

#include <benchmark/benchmark.h>
#include <glib.h>

namespace {

constexpr int KeyCount = 1000;
const QString Section = QStringLiteral("system");

QString keyName(int number)
{
    return QStringLiteral("Setting%1").arg(number);
}

QString valueOf(int number)
{
    return QStringLiteral("value of setting %1").arg(number);
}

void readSetting(benchmark::State& state)
{
    const QString key = keyName(KeyCount / 2);
    for (auto _ : state)
        benchmark::DoNotOptimize(CommonUtils::GetSettings(Section, key));
    if (CommonUtils::GetSettings(Section, key) != valueOf(KeyCount / 2))
        state.SkipWithError("wrong value");
}

void readKeyFile(benchmark::State& state)
{
    GKeyFile* const file = g_key_file_new();
    for (int number = 0; number < KeyCount; ++number)
        g_key_file_set_string(file, "system", keyName(number).toUtf8().constData(),
                              valueOf(number).toUtf8().constData());
    const QByteArray key = keyName(KeyCount / 2).toUtf8();
    for (auto _ : state) {
        char* const value = g_key_file_get_string(file, "system", key.constData(), nullptr);
        benchmark::DoNotOptimize(value);
        g_free(value);
    }
    g_key_file_free(file);
}

} // namespace

BENCHMARK(readSetting)->Name("get_settings/ours");
BENCHMARK(readKeyFile)->Name("get_settings/peer_gkeyfile");

int main(int argc, char** argv)
{
    return runBenchmarks(argc, argv, [](const Installation&) {
        for (int number = 0; number < KeyCount; ++number)
            CommonUtils::SetSettings(Section, keyName(number), valueOf(number));
    });
}
