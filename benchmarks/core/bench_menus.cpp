// Menus from XML files, compared with those of Qt Designer's and KDE's file formats, and with reading our file and
// creating the actions by hand.
#include "Installation.h"

#include "PopupMenu/MenuParse.h"
#include "PopupMenu/QBuildMenu.h"

#include <KActionCollection>
#include <KXMLGUIBuilder>
#include <KXMLGUIClient>
#include <KXMLGUIFactory>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QMainWindow>
#include <QMenu>
#include <QUiLoader>

namespace {

constexpr int UsualSize = 100;

/// An entry of a menu file, with its number in place of each "%1".
QByteArray repeated(const char* entry, int count)
{
    QString content;
    for (int i = 0; i < count; ++i)
        content += QString::fromLatin1(entry).replace(QLatin1String("%1"), QString::number(i));
    return content.toUtf8();
}

void write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("Cannot write %s", qPrintable(path));
}

/// Writes the menu file for a number of entries into the folder of the plugin "bench".
QString ourFile(int count)
{
    const QString name = QStringLiteral("%1.xml").arg(count);
    const QString folder = QCoreApplication::applicationDirPath() + QStringLiteral("/plugins/bench");
    QDir().mkpath(folder);
    write(folder + QLatin1Char('/') + name,
          R"(<qrvldoc><menu parent="null" name="Main">)" +
              repeated(R"(<item type="ITEM" id="IDS_%1">Entry %1</item>)", count) + "</menu></qrvldoc>");
    return name;
}

void buildOurs(benchmark::State& state, int count)
{
    const QString file = ourFile(count);
    for (auto _ : state) {
        QWidget parent;
        QList<MENU::QActionInfo> actions;
        MENU::QBuildMenu builder(QStringLiteral("bench"), file);
        benchmark::DoNotOptimize(builder.CreateMenuBar(QStringLiteral("Main"), &parent, &actions));
        if (actions.size() != count)
            qFatal("The menu is incomplete");
    }
    state.SetComplexityN(count);
}

void menuOurs(benchmark::State& state)
{
    buildOurs(state, UsualSize);
}

void menuSize(benchmark::State& state)
{
    buildOurs(state, static_cast<int>(state.range(0)));
}

void menuByHand(benchmark::State& state)
{
    const QString file = ourFile(UsualSize);
    for (auto _ : state) {
        QWidget parent;
        const MENU::MenuParse parser(QStringLiteral("bench"), file);
        auto* const menu = new QMenu(&parent);
        for (const MENU::MenuXmlInfo* const entry : *parser.GetMenuInfoList()->first()->items) {
            QString name;
            entry->GetMenuName(name);
            menu->addAction(new QAction(name, &parent));
        }
        benchmark::DoNotOptimize(menu->actions().size());
    }
}

void menuDesigner(benchmark::State& state)
{
    const QString path = QCoreApplication::applicationDirPath() + QStringLiteral("/menu.ui");
    write(
        path,
        R"(<ui version="4.0"><class>W</class><widget class="QWidget" name="W"><widget class="QMenu" name="menu">)" +
            repeated(R"(<addaction name="a%1"/>)", UsualSize) + "</widget>" +
            repeated(
                R"(<action name="a%1"><property name="text"><string>Entry %1</string></property></action>)",
                UsualSize) +
            "</widget></ui>");
    for (auto _ : state) {
        QUiLoader loader;
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        const std::unique_ptr<QWidget> window(loader.load(&file));
        const auto* const menu = window ? window->findChild<QMenu*>() : nullptr;
        if (!menu || menu->actions().size() != UsualSize)
            qFatal("Qt Designer's menu is incomplete");
    }
}

class KdeClient : public KXMLGUIClient
{
public:
    KdeClient(const QString& file, QObject* owner)
    {
        for (int i = 0; i < UsualSize; ++i)
            actionCollection()->addAction(QStringLiteral("a%1").arg(i),
                                          new QAction(QStringLiteral("Entry %1").arg(i), owner));
        setXMLFile(file);
    }
};

void menuKde(benchmark::State& state)
{
    const QString path = QCoreApplication::applicationDirPath() + QStringLiteral("/menu.rc");
    write(path, R"(<!DOCTYPE gui><gui name="bench" version="1"><Menu name="menu">)" +
                    repeated(R"(<Action name="a%1"/>)", UsualSize) + "</Menu></gui>");
    for (auto _ : state) {
        QMainWindow window;
        KXMLGUIBuilder builder(&window);
        KXMLGUIFactory factory(&builder);
        KdeClient client(path, &window);
        factory.addClient(&client);
        const auto* const menu = factory.container(QStringLiteral("menu"), &client);
        if (!menu || menu->actions().size() != UsualSize)
            qFatal("KDE's menu is incomplete");
        factory.removeClient(&client);
    }
}

} // namespace

BENCHMARK(menuOurs)->Name("menu/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(menuDesigner)->Name("menu/peer-QUiLoader")->Unit(benchmark::kMicrosecond);
BENCHMARK(menuKde)->Name("menu/peer-KXMLGUI")->Unit(benchmark::kMicrosecond);
BENCHMARK(menuByHand)->Name("menu/peer-by-hand")->Unit(benchmark::kMicrosecond);
BENCHMARK(menuSize)
    ->Name("menu-size")
    ->RangeMultiplier(10)
    ->Range(10, 10000)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity();

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const Installation installation;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
