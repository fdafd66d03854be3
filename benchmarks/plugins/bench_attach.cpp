// From the start of "skylume-modem attach" until the page of that modem is drawn. The page was in view when the modem was
// detached, so it returns without being asked for.
#include "Application.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QEvent>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>
#include <QWidget>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <functional>

namespace {

constexpr int Attachments = 31;    // each is a repetition, so that the median is of single attachments
constexpr int LongestWait = 20000; // milliseconds

/// The dial pad, which only this modem has. Null without it.
QWidget* page()
{
    const QWidget* const window = Startup::GetMainFrameService()->GetMainWindow();
    for (QWidget* const widget : window->findChildren<QWidget*>())
        if (widget->inherits("DialPadPage"))
            return widget;
    return nullptr;
}

bool isInPage(const QObject* object)
{
    while (object && !object->inherits("DialPadPage"))
        object = object->parent();
    return object != nullptr;
}

/// Notes when the page is drawn.
class PageWatch : public QObject
{
public:
    PageWatch() { qApp->installEventFilter(this); }

    bool isDrawn = false;

    bool eventFilter(QObject* object, QEvent* event) override
    {
        isDrawn = isDrawn || (event->type() == QEvent::Paint && isInPage(object));
        return false;
    }
};

/// Runs the application until the condition is true, which is looked at whenever nothing is left to do.
bool runUntil(const std::function<bool()>& isTrue)
{
    QEventLoop loop;
    const auto look = [&] {
        if (isTrue())
            loop.quit();
    };
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &loop,
                     look);
    QTimer::singleShot(LongestWait, &loop, &QEventLoop::quit);
    loop.exec();
    return isTrue();
}

/// Runs the modem tool until it has ended and the condition is true.
/// @return the milliseconds from its start until the condition became true; negative if it did not
double run(const QStringList& arguments, const std::function<bool()>& isTrue)
{
    QElapsedTimer time;
    time.start();
    QProcess tool;
    tool.start(QCoreApplication::applicationDirPath() + QLatin1String("/skylume-modem"), arguments);
    const bool isDone = runUntil(isTrue);
    const double taken = double(time.nsecsElapsed()) / 1e6;
    return isDone && runUntil([&] { return tool.state() == QProcess::NotRunning; }) ? taken : -1;
}

bool detach()
{
    return run({QStringLiteral("detach")}, [] { return !page(); }) >= 0;
}

double attach()
{
    PageWatch watch;
    return run({QStringLiteral("attach"), QStringLiteral("Lume V2")}, [&] { return watch.isDrawn; });
}

void measure(benchmark::State& state)
{
    for (auto _ : state) {
        const double taken = detach() ? attach() : -1;
        if (taken < 0)
            state.SkipWithError("the page did not follow the modem");
        state.SetIterationTime(taken / 1000);
    }
}

/// Shows the page of the modem that is attached at the start.
bool showPage()
{
    constexpr auto clsid = "70B4D2F8-5E19-4A3C-9D66-C82E0F7A5B14";
    return runUntil([] { return page(); }) && Startup::GetMainFrameService()->ShowPage(QLatin1String(clsid));
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    const Application application(argc, argv);
    if (!showPage())
        return EXIT_FAILURE;
    benchmark::RegisterBenchmark("modem/ours/attach to page", measure)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(Attachments);
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
