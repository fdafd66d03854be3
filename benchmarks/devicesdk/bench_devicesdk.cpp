// Settings operations of the device service with 1,000 settings; reading, compared with GLib's key files.
#include "qrvl.h"

#include <benchmark/benchmark.h>
#include <glib.h>

#include <QFile>
#include <QTemporaryDir>
#include <QVector>

#include <string>

namespace {

constexpr int Count = 1000;
const std::u16string Section = u"system";
QString settingsFile;

std::u16string keyName(int number)
{
    return QStringLiteral("Setting%1").arg(number).toStdU16String();
}

void setAll(const std::vector<std::u16string>& keys, const std::u16string& value)
{
    for (const std::u16string& key : keys)
        QRVL_SetSettings(Section.c_str(), key.c_str(), value.c_str());
}

std::vector<std::u16string> keyNames()
{
    std::vector<std::u16string> keys;
    keys.reserve(Count);
    for (int number = 0; number < Count; ++number)
        keys.push_back(keyName(number));
    return keys;
}

/// A different value at each call.
QString newValue()
{
    static int number = 0;
    return QStringLiteral("value number %1").arg(++number, 9, 10, QLatin1Char('0'));
}

void waitUntilDurable(const QString& value)
{
    const QByteArray lastLine = "Setting" + QByteArray::number(Count - 1) + '=' + value.toUtf8() + '\n';
    for (bool isThere = false; !isThere;) {
        QFile file(settingsFile);
        isThere = file.open(QIODevice::ReadOnly) && file.readAll().contains(lastLine);
    }
}

void readSetting(benchmark::State& state)
{
    const std::u16string key = keyName(Count / 2);
    for (auto _ : state) {
        char16_t* value = nullptr;
        QRVL_GetSettings(Section.c_str(), key.c_str(), &value);
        benchmark::DoNotOptimize(value);
        if (!value)
            state.SkipWithError("the setting is missing");
        delete[] value;
    }
}

void readKeyFile(benchmark::State& state)
{
    GKeyFile* const file = g_key_file_new();
    for (int number = 0; number < Count; ++number)
        g_key_file_set_string(file, "system", QString::fromStdU16String(keyName(number)).toUtf8().constData(),
                              newValue().toUtf8().constData());
    const QByteArray key = QString::fromStdU16String(keyName(Count / 2)).toUtf8();
    for (auto _ : state) {
        char* const value = g_key_file_get_string(file, "system", key.constData(), nullptr);
        benchmark::DoNotOptimize(value);
        g_free(value);
    }
    g_key_file_free(file);
}

/// 1,000 writes in a row: the time that the caller waits.
void writeSettings(benchmark::State& state)
{
    const std::vector<std::u16string> keys = keyNames();
    for (auto _ : state) {
        const QString value = newValue();
        setAll(keys, value.toStdU16String());
        state.PauseTiming();
        waitUntilDurable(value);
        state.ResumeTiming();
    }
}

/// 1,000 writes in a row: the time until they are in the file.
void writeSettingsDurably(benchmark::State& state)
{
    const std::vector<std::u16string> keys = keyNames();
    for (auto _ : state) {
        const QString value = newValue();
        setAll(keys, value.toStdU16String());
        waitUntilDurable(value);
    }
}

} // namespace

BENCHMARK(readSetting)->Name("qrvl_get_settings/ours");
BENCHMARK(readKeyFile)->Name("qrvl_get_settings/peer_gkeyfile");
BENCHMARK(writeSettings)->Name("qrvl_set_1000_enqueued/ours")->UseRealTime();
BENCHMARK(writeSettingsDurably)->Name("qrvl_set_1000_durable/ours")->UseRealTime();

int main(int argc, char** argv)
{
    const QTemporaryDir folder;
    qputenv("QRVL_USER_DIR", folder.path().toUtf8());
    settingsFile = folder.filePath(QStringLiteral("settings.ini"));
    setAll(keyNames(), newValue().toStdU16String());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
