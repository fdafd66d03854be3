// Style sheets, and the scroll bars that are drawn from images.
#include "Change/Change.h"
#include "Change/WinClassic.h"
#include "CoreTest.h"
#include "common/CommonUtils.h"

#include <QApplication>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>

class TestSkin : public CoreTest
{
    Q_OBJECT

private slots:
    void cache();
    void miniSkin();
    void scrollBar_data();
    void scrollBar();
    void scrollBarBackground();
};

void TestSkin::cache()
{
    const QString red = "QLabel { color: red;}/* \xC3\xA4 */";
    const QString blue = "QLabel { color: blue; }";
    const std::tuple<QString, bool, QString, bool> steps[] = {
        // file, reload, sheet, whether there is a new style
        {"b", false, blue, true}, // none read yet
        {"a", true, red, true},        {"b", false, red, false},
        {"missing", true, red, false}, {"b", false, blue, true}, // the missing one emptied the cache
    };
    writeFile(path("a"), "QLabel {\r\n color: red;}\n/* \xC3\xA4 */");
    writeFile(path("b"), "QLabel { color: blue; }");
    for (const auto& [file, reload, sheet, hasNewStyle] : steps) {
        const QPointer<WinClassic> before = qApp->findChild<WinClassic*>();
        QCOMPARE(Change::ChangSkin(qApp, path(file), enStyleNormal, reload), file != "missing");
        QCOMPARE(qApp->styleSheet(), sheet);
        QCOMPARE(before.isNull(), hasNewStyle); // the old one is deleted
    }
    QVERIFY(log().contains("{file}: ChangSkin: File does not exist or failed to open " + path("missing")));
    QVERIFY(!Change::ChangSkin(nullptr, path("a"), enStyleNormal, true));
}

void TestSkin::miniSkin()
{
    const auto load = [](Qt::LayoutDirection direction, bool reload) {
        QGuiApplication::setLayoutDirection(direction);
        Change::LoadQss(enStyleMini, reload);
        return qApp->styleSheet();
    };
    service().setSetting("MiniSkin", "Name", "Blue");
    writeFile(installed("skin/Blue.qss"), "#left {}");
    writeFile(installed("skin/Blue/Blue_Arabic.qss"), "#right {}");
    qApp->setStyleSheet(QString());
    QCOMPARE(load(Qt::LeftToRight, true), QString());
    CommonUtils::SetMiniModeFlag();
    QCOMPARE(load(Qt::LeftToRight, true), QString("#left {}"));
    QCOMPARE(load(Qt::RightToLeft, false), QString("#left {}"));
    QCOMPARE(load(Qt::RightToLeft, true), QString("#right {}"));
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    qApp->setStyleSheet(QString());
}

void TestSkin::scrollBar_data()
{
    // look: the images seen in four places along the bar, from left or top
    const auto row = dataTable<Qt::Orientation, QString, QString>("orientation", "without", "look");
    row("vertical", Qt::Vertical, "", "up vertical_slider vertical_back down");
    row("horizontal", Qt::Horizontal, "", "left horizontal_slider horizontal_back right");
    row("mirrored", Qt::Horizontal, "left to right", "left horizontal_back horizontal_slider right");
    row("dense", Qt::Vertical, "low density", "up vertical_slider@2x vertical_back@2x down@2x");
    for (const char* part : {"vertical_back", "vertical_slider", "up", "down", "mini mode", "enabled"})
        row(part, Qt::Vertical, part, "   "); // left to the base style
}

void TestSkin::scrollBar()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(QString, without);
    const QStringList parts{"vertical_back",    "vertical_slider",    "up",     "down",
                            "horizontal_back",  "horizontal_slider",  "left",   "right",
                            "vertical_back@2x", "vertical_slider@2x", "down@2x"};
    const uint firstColor = 0xff000001;
    for (int i = 0; i < parts.size(); ++i) {
        const QString file = installed("skin/default/images/scroll_" + parts[i] + ".png");
        writeFile(file, "no image");
        QImage image(16, 16, QImage::Format_RGB32);
        image.fill(firstColor + i);
        QVERIFY(parts[i] == without || image.save(file));
    }
    if (without == "mini mode")
        CommonUtils::SetMiniModeFlag();
    WinClassic style;
    QScrollBar bar(orientation);
    bar.setStyle(&style);
    bar.setEnabled(without != "enabled");
    bar.setLayoutDirection(without == "left to right" ? Qt::RightToLeft : Qt::LeftToRight);
    bar.setRange(0, 100);
    bar.setPageStep(100);
    bar.resize(160, 160);
    const int density = without == "low density" ? 2 : 1;
    QImage picture(bar.size() * density, QImage::Format_RGB32);
    picture.setDevicePixelRatio(density);
    bar.render(&picture);
    QStringList seen;
    for (const int position : {8, 40, 120, 152}) {
        const QPoint place = orientation == Qt::Vertical ? QPoint(8, position) : QPoint(position, 8);
        seen.append(parts.value(int(picture.pixel(place * density) - firstColor)));
    }
    QTEST(seen.join(' '), "look");
}

/// Translucent images are drawn on the background of the area, not on what was there before.
void TestSkin::scrollBarBackground()
{
    for (const char* part : {"vertical_back", "vertical_slider", "up", "down"}) {
        QImage image(16, 16, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QVERIFY(image.save(installed(QString("skin/default/images/scroll_") + part + ".png")));
    }
    WinClassic style;
    for (const QColor& color : {QColor(Qt::yellow), QColor(Qt::black)}) {
        QScrollArea area;
        area.viewport()->setBackgroundRole(QPalette::Base);
        area.setPalette(QPalette(color, color, color, color, color, color, color, color, color));
        QScrollBar* const bar = area.verticalScrollBar();
        bar->setStyle(&style);
        bar->resize(16, 160);
        QImage picture(bar->size(), QImage::Format_RGB32);
        picture.fill(Qt::magenta);
        bar->render(&picture, QPoint(), QRegion(), QWidget::RenderFlags());
        for (int y = 0; y < picture.height(); ++y)
            QCOMPARE(picture.pixelColor(8, y), color);
    }
}

QTEST_MAIN(TestSkin)
#include "tst_skin.moc"
