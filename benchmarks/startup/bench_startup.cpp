// How long the application takes from the start of the process to the main window, and in which steps. Runs
// the real launcher several times and reads the times from its log.
#include <QCoreApplication>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>
#include <QVector>

#include <algorithm>

namespace {

constexpr int Runs = 15;
constexpr int LongestStartMs = 20000;

/// A step of the start, and the part of a log line that shows that it was reached.
struct Mark
{
    const char* name;
    const char* text;
};

constexpr Mark Marks[] = {
    {"QApplication is created, Startup begins", "src/core/Startup/Startup.cpp: Startup: entered"},
    {"both plugin files are read", "enabling based on common and operator"},
    {"device manager is initialised", "DeviceMgrPlugin init: elapsed"},
    {"container is created, main frame is requested", "loadMainFramePlugin: entered"},
    {"main frame is loaded", "m_pUiPlugin loaded..."},
    {"all plugins are loaded and initialised", "plugin count ="},
    {"main window is built and shown", "src/core/Startup/Startup.cpp: Startup: exit"},
};

using Times = QVector<double>;

void noteLine(const QByteArray& line, QVector<Times>& times)
{
    const QByteArray text = line.trimmed(); // the time is padded
    const double ms = text.left(text.indexOf(' ')).toDouble() * 1000;
    for (std::size_t i = 0; i < std::size(Marks); ++i)
        if (line.contains(Marks[i].text))
            times[static_cast<int>(i)].append(ms);
}

/// Starts the application and terminates it as soon as its window is shown.
bool startOnce(const QProcessEnvironment& environment, QVector<Times>& times)
{
    QProcess launcher;
    launcher.setProcessEnvironment(environment);
    launcher.setProcessChannelMode(QProcess::MergedChannels);
    launcher.start(QStringLiteral(SKYLUME_LAUNCHER), {QStringLiteral("--verbose")});
    const char* const last = std::end(Marks)[-1].text;
    bool isShown = false;
    while (!isShown && launcher.waitForReadyRead(LongestStartMs)) {
        while (!isShown && launcher.canReadLine()) {
            const QByteArray line = launcher.readLine();
            noteLine(line, times);
            isShown = line.contains(last);
        }
    }
    launcher.terminate();
    return launcher.waitForFinished(LongestStartMs) && isShown;
}

double median(Times values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? -1 : values.at(values.size() / 2);
}

void report(const QVector<Times>& times)
{
    QTextStream out(stdout);
    out << "Milliseconds since the process began, median of " << Runs << " starts:\n";
    double before = 0;
    for (std::size_t i = 0; i < std::size(Marks); ++i) {
        const double at = median(times.at(static_cast<int>(i)));
        out << QStringLiteral("%1  (+%2)  ").arg(at, 8, 'f', 1).arg(at - before, 6, 'f', 1) << Marks[i].name
            << '\n';
        before = at;
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir settings;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QRVL_USER_DIR"), settings.path());
    environment.insert(QStringLiteral("QT_MESSAGE_PATTERN"), QStringLiteral("%{time process} %{message}"));
    if (!environment.contains(QStringLiteral("DISPLAY")))
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));

    QVector<Times> times(static_cast<int>(std::size(Marks)));
    for (int run = 0; run < Runs; ++run) {
        if (startOnce(environment, times))
            continue;
        QTextStream(stderr) << "The application did not start\n";
        return 1;
    }
    report(times);
    return 0;
}
