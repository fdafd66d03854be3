// The page "Messages" with 5,000 conversations: how long the window is busy at a time while they are read, and how long
// it takes to draw a frame while the user scrolls.
#include "Application.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"

#include <QElapsedTimer>
#include <QListView>
#include <QScrollBar>
#include <QWidget>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int Count = 5000;
constexpr int LongestReading = 120000; // milliseconds
constexpr int ScrolledPixels = 37;

/// A modem with its messages.
QByteArray modem()
{
    QString lines = QStringLiteral(
        "[modem M]\nmodel=Lume V2\nstate=attached\nimsi=262011234567890\ngid=NT-GOLD\nanswer-time=0\n");
    for (int i = 0; i < Count; ++i)
        lines += QStringLiteral("[message %1]\nmodem=M\nsender=+4930%2\ntime=2024-03-01T09:15:00\n"
                                "text=The photos of our trip are at https://photos.example/album?page=%1\n")
                     .arg(i)
                     .arg(10000 + i);
    return lines.toUtf8();
}

QListView* messageList()
{
    QWidget* const window = Startup::GetMainFrameService()->GetMainWindow();
    return window->findChild<QListView*>(QStringLiteral("messageList"));
}

int rows()
{
    const QListView* const list = messageList();
    return list ? list->model()->rowCount() : 0;
}

/// Runs the application until all messages are shown.
/// @return the longest time that an event took, in milliseconds; negative if it takes too long
double readAll()
{
    QElapsedTimer all;
    all.start();
    qint64 longest = 0;
    while (rows() < Count) {
        if (all.hasExpired(LongestReading))
            return -1;
        QElapsedTimer busy;
        busy.start();
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        longest = std::max(longest, busy.nsecsElapsed());
    }
    return double(longest) / 1e6;
}

bool showPage()
{
    Startup::GetMainFrameService()->ShowPage(QStringLiteral("B7D24F91-6E03-4C8A-A5D7-92E8F10B3C46"));
    QCoreApplication::processEvents();
    return messageList()->isVisible();
}

void scroll(benchmark::State& state)
{
    QListView* const list = messageList();
    if (!showPage())
        state.SkipWithError("the page is not shown");
    QScrollBar* const bar = list->verticalScrollBar();
    for (auto _ : state) {
        bar->setValue(bar->value() + ScrolledPixels <= bar->maximum() ? bar->value() + ScrolledPixels : 0);
        list->viewport()->repaint();
    }
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    const Application application(argc, argv, modem());
    QElapsedTimer reading;
    reading.start();
    const double longest = readAll();
    if (longest < 0)
        return EXIT_FAILURE;
    const double total = double(reading.elapsed());
    benchmark::RegisterBenchmark("messages/5,000 scroll by a frame/ours", scroll)
        ->Unit(benchmark::kMillisecond);
    benchmark::AddCustomContext("messages/5,000 read, ms", std::to_string(total));
    benchmark::AddCustomContext("messages/longest event meanwhile, ms", std::to_string(longest));
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
