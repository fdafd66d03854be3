// How long skylume-check takes for an installation of many plugins in six languages, from the start of the process
// to its end.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

namespace {

constexpr const char* Languages[] = {"en-us", "de-de", "fr-fr", "zh-cn", "ar-sa", "he-il"};
constexpr int TextsPerPlugin = 20;

QString clsidOf(int number)
{
    return QStringLiteral("00000000-0000-0000-0000-%1").arg(number, 12, 10, QLatin1Char('0'));
}

QString nameOf(int number)
{
    return QStringLiteral("Trivial%1").arg(number, 4, 10, QLatin1Char('0'));
}

/// An installation without faults.
class SoundInstallation
{
public:
    explicit SoundInstallation(int plugins);

    QString path() const { return m_folder.path(); }

private:
    void write(const QString& name, const QString& content) const;
    void addPlugin(const QString& name) const;

    QTemporaryDir m_folder;
};

SoundInstallation::SoundInstallation(int plugins)
{
    QString library = QStringLiteral("<plugins>\n<mainplugin>%1</mainplugin>\n").arg(clsidOf(0));
    QString rules = QStringLiteral("<config>\n<common>\n");
    for (int number = 0; number < plugins; ++number) {
        library += QStringLiteral("<plugin>\n<name>%1</name>\n<clsid>%2</clsid>\n<url>.\\%1.dll</url>\n"
                                  "<static>false</static>\n</plugin>\n")
                       .arg(nameOf(number), clsidOf(number));
        rules += QStringLiteral("<item clsid=\"%1\"/>\n").arg(clsidOf(number));
        addPlugin(nameOf(number));
    }
    write(QStringLiteral("config/pluginslib.xml"), library + QStringLiteral("</plugins>\n"));
    write(QStringLiteral("config/PluginsConfig.xml"), rules + QStringLiteral("</common>\n</config>\n"));
}

void SoundInstallation::write(const QString& name, const QString& content) const
{
    const QString path = m_folder.filePath(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content.toUtf8()) < 0)
        qFatal("Cannot write %s", qUtf8Printable(path));
}

void SoundInstallation::addPlugin(const QString& name) const
{
    const QString plugin = QStringLiteral(TRIVIAL_PLUGIN);
    QFile::copy(plugin, m_folder.filePath(name + QLatin1Char('.') + QFileInfo(plugin).suffix()));
    QString texts;
    QString items;
    for (int number = 0; number < TextsPerPlugin; ++number) {
        texts += QStringLiteral("<item name=\"IDS_%1\">Text %1</item>\n").arg(number);
        items += QStringLiteral("<item type=\"ITEM\" id=\"IDS_%1\">item%1</item>\n").arg(number);
    }
    for (const char* language : Languages)
        write(QStringLiteral("plugins/%1/%1_%2.lang").arg(name, QLatin1String(language)),
              QStringLiteral("<language>\n%1</language>\n").arg(texts));
    write(QStringLiteral("plugins/%1/menu.xml").arg(name),
          QStringLiteral("<qrvldoc><menu parent=\"null\" name=\"M\">\n%1</menu></qrvldoc>\n").arg(items));
}

void check(benchmark::State& state)
{
    const SoundInstallation installation(int(state.range(0)));
    for (auto _ : state) {
        QProcess tool;
        tool.start(QStringLiteral(CHECK_TOOL), {installation.path()});
        if (!tool.waitForFinished() || tool.exitCode() != 0)
            state.SkipWithError("the tool failed");
    }
}
BENCHMARK(check)
    ->Name("check-installation/ours")
    ->Arg(50)
    ->Arg(100)
    ->Arg(200)
    ->Arg(400)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
