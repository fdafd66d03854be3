// Rich text with links, compared with KDE's and with Qt's escaping, which does less; speeds, compared with Qt's
// number formatting.
#include "Installation.h"

#include "common/CommonUtils.h"

#include <KTextToHTML>

#include <benchmark/benchmark.h>

namespace {

/// Typical message text of `size` characters, with a link or an address every few lines.
QString message(int size)
{
    const QString paragraph =
        QStringLiteral("Dear customer, your bill for March (24.90 EUR) is ready. You have used 3.2 GB of "
                       "your 5 GB at home and "
                       "120 MB abroad, where data costs < 2 cents per MB.\nPlease see www.northtel.com or "
                       "https://my.northtel.com/bills?id=2231 for what it is made of; it will be collected "
                       "on 12 April, 10:30. "
                       "If you have questions, write to service@northtel.com or call +49 30 1234567 with "
                       "your customer number.\n"
                       "Your new tariff begins with the next month: 10 GB of data, all calls and messages "
                       "included, and it can "
                       "be ended at any time. Thank you for staying with us!\n");
    return paragraph.repeated(size / paragraph.size() + 1).left(size);
}

template <typename Convert>
void convert(benchmark::State& state, Convert convert)
{
    const QString text = message(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(convert(text));
    state.SetComplexityN(state.range(0));
}

void linksOurs(benchmark::State& state)
{
    convert(state, [](const QString& text) { return CommonUtils::ParseAndCreateHyperLinks(text); });
}

void linksKde(benchmark::State& state)
{
    convert(state,
            [](const QString& text) { return KTextToHTML::convertToHtml(text, KTextToHTML::Options()); });
}

void linksEscapeOnly(benchmark::State& state)
{
    convert(state, [](const QString& text) { return text.toHtmlEscaped(); });
}

const QVector<TagUnits> Speeds = {{QStringLiteral("B/s"), 1, 0, {}},
                                  {QStringLiteral("KB/s"), 1024, 1024, {}},
                                  {QStringLiteral("MB/s"), 1048576, 1048576, {}}};

/// A different speed for each call, within the range of the last step.
quint64 nextSpeed(quint64& speed)
{
    speed = speed * 6364136223846793005u + 1442695040888963407u;
    return 1048577 + (speed >> 40);
}

void speedOurs(benchmark::State& state)
{
    const QString context = QStringLiteral("StatusBarMgrPlugin");
    quint64 speed = 1;
    for (auto _ : state)
        benchmark::DoNotOptimize(CommonUtils::SpeedFluxToString(Speeds, nextSpeed(speed), context));
}

void speedNumber(benchmark::State& state)
{
    quint64 speed = 1;
    for (auto _ : state) {
        const double number = static_cast<double>(nextSpeed(speed)) / Speeds.last().divisor;
        const QString text = QString::number(number, 'f', 2) + QLatin1Char(' ') + Speeds.last().name;
        benchmark::DoNotOptimize(text);
    }
}

} // namespace

BENCHMARK(linksOurs)->Name("links/ours")->Arg(1000)->Arg(100000)->Arg(10000000);
BENCHMARK(linksKde)->Name("links/peer_ktexttohtml")->Arg(1000)->Arg(100000);
BENCHMARK(linksEscapeOnly)->Name("links/peer_escaping_only")->Arg(1000)->Arg(100000)->Arg(10000000);
BENCHMARK(speedOurs)->Name("speed_text/ours");
BENCHMARK(speedNumber)->Name("speed_text/peer_number");

int main(int argc, char** argv)
{
    return runBenchmarks(argc, argv);
}
