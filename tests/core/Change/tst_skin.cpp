// Style sheets, and the scroll bars that are drawn from images.
#include "Change/Change.h"
#include "Change/WinClassic.h"
#include "CoreTest.h"
#include "common/CommonUtils.h"

#include <QApplication>
#include <QDir>
#include <QScrollBar>

class TestSkin : public CoreTest
{
    Q_OBJECT

private slots:
    void cache();
    void miniSkin();
    void scrollBar();

private:
    /// What a scroll bar looks like along its length, by the names of the images seen in four places.
    static QString look(Qt::Orientation orientation, Qt::LayoutDirection direction);
};

void TestSkin::cache()
{
    const auto apply = [&](const char* name, bool reload) {
        return Change::ChangSkin(qApp, path(name), enStyleNormal, reload);
    };
    writeFile(path("a.qss"), "QLabel {\r\n color: red;}\n/* \xC3\xA4 */");
    writeFile(path("b.qss"), "QLabel { color: blue; }");
    writeFile(path("broken.qss"), "QLabel { color");
    QVERIFY(apply("a.qss", true));
    const QString first = QString::fromUtf8("QLabel { color: red;}/* \xC3\xA4 */");
    QCOMPARE(qApp->styleSheet(), first);
    QVERIFY(apply("b.qss", false)); // the first one again
    QCOMPARE(qApp->styleSheet(), first);
    QVERIFY(!apply("missing.qss", true));
    QCOMPARE(qApp->styleSheet(), first);
    QVERIFY(
        log().contains("{file}: ChangSkin: File does not exist or failed to open " + path("missing.qss")));
    QVERIFY(apply("b.qss", false)); // no sheet is kept now
    QCOMPARE(qApp->styleSheet(), QString("QLabel { color: blue; }"));
    log().allow("Could not parse application stylesheet");
    QVERIFY(apply("broken.qss", true));
}

void TestSkin::miniSkin()
{
    const auto load = [](const char* name, Qt::LayoutDirection direction) {
        service().setSetting("MiniSkin", "Name", name);
        QGuiApplication::setLayoutDirection(direction);
        Change::LoadQss(enStyleMini, true);
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
        return qApp->styleSheet();
    };
    writeFile(installed("skin/Blue.qss"), "#left { color: blue; }");
    writeFile(installed("skin/Blue/Blue_Arabic.qss"), "#right { color: blue; }");
    qApp->setStyleSheet(QString());
    QCOMPARE(load("Blue", Qt::LeftToRight), QString());
    CommonUtils::SetMiniModeFlag();
    QCOMPARE(load("Blue", Qt::LeftToRight), QString("#left { color: blue; }"));
    QCOMPARE(load("Red", Qt::RightToLeft), QString("#left { color: blue; }"));
    QCOMPARE(load("Blue", Qt::RightToLeft), QString("#right { color: blue; }"));
    qApp->setStyleSheet(QString());
}

QString TestSkin::look(Qt::Orientation orientation, Qt::LayoutDirection direction)
{
    const bool isVertical = orientation == Qt::Vertical;
    const QString images = installed("skin/default/images/scroll_");
    const QMap<QRgb, QString> parts{{0xff000001, isVertical ? "vertical_back" : "horizontal_back"},
                                    {0xff000002, isVertical ? "vertical_slider" : "horizontal_slider"},
                                    {0xff000003, isVertical ? "up" : "left"},
                                    {0xff000004, isVertical ? "down" : "right"}};
    QImage image(16, 16, QImage::Format_RGB32);
    for (auto part = parts.begin(); part != parts.end(); ++part) {
        image.fill(part.key());
        if (!QFile::exists(images + part.value() + ".png"))
            image.save(images + part.value() + ".png");
    }
    WinClassic style;
    QScrollBar bar(orientation);
    bar.setStyle(&style);
    bar.setLayoutDirection(direction);
    bar.setRange(0, 100);
    bar.setPageStep(100);
    bar.resize(isVertical ? QSize(16, 160) : QSize(160, 16));
    const QImage picture = bar.grab().toImage().convertToFormat(QImage::Format_RGB32);
    QStringList seen;
    for (const int position : {8, 40, 120, 152})
        seen.append(parts.value(picture.pixel(isVertical ? QPoint(8, position) : QPoint(position, 8))));
    return seen.join(' ');
}

void TestSkin::scrollBar()
{
    QVERIFY(QDir(installed("skin/default/images")).removeRecursively());
    QVERIFY(QDir().mkpath(installed("skin/default/images")));
    QCOMPARE(look(Qt::Vertical, Qt::LeftToRight), QString("up vertical_slider vertical_back down"));
    QCOMPARE(look(Qt::Horizontal, Qt::LeftToRight), QString("left horizontal_slider horizontal_back right"));
    QCOMPARE(look(Qt::Horizontal, Qt::RightToLeft), QString("left horizontal_back horizontal_slider right"));
    writeFile(installed("skin/default/images/scroll_down.png"), "no image"); // the base style draws it then
    QCOMPARE(look(Qt::Vertical, Qt::LeftToRight).trimmed(), QString());
    CommonUtils::SetMiniModeFlag();
    QCOMPARE(look(Qt::Horizontal, Qt::LeftToRight).trimmed(), QString());
}

QTEST_MAIN(TestSkin)
#include "tst_skin.moc"
