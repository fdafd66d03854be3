// What users once saw broken, compared with stored pictures: colours, frames, distances and words that are cut off.
// Linux only, as letters have other shapes on Windows. scripts/make-pictures --references stores what differs.
#include "DataTable.h"
#include "RunningApplication.h"
#include "common/CommonUtils.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QStackedWidget>

namespace {

const QByteArray Modem = "[modem V]\nmodel=Lume V2\nport=sim2\nstate=attached\nnetwork=26201\nsignal=80\n"
                         "sim=ready\nconnection=disconnected\n"
                         "[message 1]\nmodem=V\nsender=A\ntime=2024-03-04T18:40:00\n"
                         "text=Look (www.example.org), or ask help@northtel.test.\n";
constexpr int Reduction = 3;    // pictures are compared smaller, as libraries smooth letters differently
constexpr int SameColour = 32;  // largest difference of a channel
constexpr int SamePicture = 5;  // how many pixels may differ more; any frame has more of them
constexpr int LongWait = 20000; // milliseconds

/// Brings a page into a state, if it is not in it, and returns what to compare.
using Scene = QWidget* (*)(QWidget* page);

QWidget* find(const QWidget* parent, const char* className)
{
    for (QWidget* widget : parent->findChildren<QWidget*>())
        if (widget->inherits(className))
            return widget;
    return nullptr;
}

/// Where two pictures differ, and by how much; empty if they look the same.
QString difference(const QImage& taken, const QImage& stored)
{
    const QSize size = taken.size() / Reduction;
    QImage rest = taken.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&rest);
    painter.setCompositionMode(QPainter::CompositionMode_Difference);
    painter.drawImage(0, 0, stored.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    QRect place;
    int count = 0;
    int largest = 0;
    for (int i = 0; i < size.width() * size.height(); ++i) {
        const QPoint here(i % size.width(), i / size.width());
        const int value = rest.pixelColor(here).value();
        largest = qMax(largest, value);
        count += value > SameColour;
        place |= value > SameColour ? QRect(here * Reduction, QSize(Reduction, Reduction)) : QRect();
    }
    QString text;
    if (taken.size() != stored.size() || count > SamePicture)
        QDebug(&text) << taken.size() << "instead of" << stored.size() << count << "places in" << place
                      << "differ by up to" << largest << "of 255";
    return text;
}

} // namespace
Q_DECLARE_METATYPE(Scene)

class TestPictures : public RunningApplication
{
    Q_OBJECT

public:
    TestPictures();

private slots:
    void compare_data();
    void compare();
    void cleanup() { end(); }
};

void TestPictures::compare_data()
{
    const auto row = dataTable<QByteArray, QByteArray, QByteArray, Scene>("model", "skin", "page", "scene");
    row("long-name", "Lume V2 with a name that fits no window", "", "ConnectionPage",
        [](QWidget* page) { return page->window(); });
    row("wrong-number", "Lume V2", "", "DialPadPage", [](QWidget* page) {
        page->findChild<QLineEdit*>()->setText("wrong");
        QTest::keyClick(page->findChild<QLineEdit*>(), Qt::Key_Return);
        return page->window();
    });
    row("focus-of-key", "Lume V2", "", "DialPadPage", [](QWidget* page) {
        find(page, "DialKeys")->findChild<QPushButton*>()->setFocus();
        return find(page, "DialKeys");
    });
    row("focus-of-button", "Lume V2", "Graphite", "ConnectionPage", [](QWidget* page) {
        find(page, "StatePanel")->findChild<QPushButton*>()->setFocus();
        return find(page, "StatePanel");
    });
    row("links", "Lume V2", "Graphite", "MessagesPage", [](QWidget* page) {
        if (QWidget* const list = find(page, "ConversationList"); list->isVisible())
            QTest::keyClick(list, Qt::Key_Return);
        return find(page, "ThreadView");
    });
    row("plugins", "Lume V2", "Blue", "DialPadPage", [](QWidget* page) {
        for (QAction* action : page->window()->findChildren<QAction*>())
            if (action->text() == "À propos de cette installation" && !QApplication::activeModalWidget())
                action->trigger();
        QApplication::activeModalWidget()->findChild<QPushButton*>()->setFocus();
        return find(QApplication::activeModalWidget(), "PluginsView");
    });
    row("settings", "Lume V2", "", "DialPadPage", [](QWidget* page) {
        const QString file = QString::fromLocal8Bit(qgetenv("QRVL_USER_DIR")) + "/settings.ini";
        if (QFile::remove(file))
            QDir().mkdir(file);
        CommonUtils::SetSettings("test", "key", "value");
        return find(page->window(), "ProblemLine");
    });
}

void TestPictures::compare()
{
    QFETCH(QByteArray, model);
    QFETCH(QByteArray, skin);
    QFETCH(QByteArray, page);
    QFETCH(Scene, scene);
    simulate(QByteArray(Modem).replace("Lume V2", model));
    CommonUtils::SetSettings("mainwindow", "compact", skin.isEmpty() ? "false" : "true");
    CommonUtils::SetSettings("MiniSkin", "Name", skin);
    start();
    QTRY_VERIFY_WITH_TIMEOUT(find(window(), page), LongWait);
    window()->resize(window()->minimumSize());
    auto* const pages = window()->findChild<QStackedWidget*>();
    window()->findChild<QListWidget*>()->setCurrentRow(pages->indexOf(find(pages, page)));
    const QString storedFile = QString(STORED_PICTURES "/%1.png").arg(QTest::currentDataTag());
    const QImage stored = QImage(storedFile).convertToFormat(QImage::Format_RGB32);
    QImage taken;
    const auto isSame = [&] {
        QWidget* const part = scene(find(pages, page)); // again, as a late event may undo it
        taken = QImage(part->size(), QImage::Format_RGB32);
        taken.fill(Qt::magenta); // shows through where a widget does not paint
        part->render(&taken);
        return difference(taken, stored).isEmpty();
    };
    if (QTest::qWaitFor(isSame, LongWait))
        return;
    const bool isWanted = qEnvironmentVariableIsSet("SKYLUME_STORE_PICTURES");
    const QString file = isWanted ? storedFile : QDir::current().filePath(QFileInfo(storedFile).fileName());
    QVERIFY(taken.save(file));
    QVERIFY2(isWanted, qUtf8Printable(file + ": " + difference(taken, stored)));
}

/// The same letters and controls everywhere.
TestPictures::TestPictures()
{
    QFont font("DejaVu Sans", 9);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    QApplication::setFont(font);
    QApplication::setStyle("Fusion");
}

int main(int argc, char** argv)
{
    qputenv("QT_FONT_DPI", "96");
    qputenv("QT_SCALE_FACTOR", "1");
    return runTest<TestPictures>(argc, argv, "[language]\nactive=_fr-fr\n");
}
#include "tst_pictures.moc"
