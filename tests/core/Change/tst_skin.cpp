// Style sheets, and the scroll bars that are drawn from images.
#include "Change/Change.h"
#include "Change/WinClassic.h"
#include "CoreTest.h"
#include "DataTable.h"
#include "common/CommonUtils.h"

#include <QApplication>
#include <QDir>
#include <QPointer>
#include <QScrollBar>

class TestSkin : public CoreTest
{
    Q_OBJECT

private slots:
    void cache();
    void miniSkin();
    void scrollBar_data();
    void scrollBar();
};

void TestSkin::cache()
{
    QPointer<QStyle> style;
    const struct
    {
        const char* file;
        bool reload, isApplied, hasNewStyle;
        const char* sheet;
    } steps[] = {
        {"b", false, true, true, "QLabel { color: blue; }"}, // none read yet
        {"a", true, true, true, "QLabel { color: red;}/* \xC3\xA4 */"},
        {"b", false, true, false, "QLabel { color: red;}/* \xC3\xA4 */"},
        {"missing", true, false, false, "QLabel { color: red;}/* \xC3\xA4 */"},
        {"b", false, true, true, "QLabel { color: blue; }"}, // the missing one emptied the cache
    };
    writeFile(path("a"), "QLabel {\r\n color: red;}\n/* \xC3\xA4 */");
    writeFile(path("b"), "QLabel { color: blue; }");
    for (const auto& step : steps) {
        QCOMPARE(Change::ChangSkin(qApp, path(step.file), enStyleNormal, step.reload), step.isApplied);
        QCOMPARE(qApp->styleSheet(), QString(step.sheet));
        qApp->setStyleSheet(QString()); // uncovers the style below the sheet
        QVERIFY(qobject_cast<WinClassic*>(qApp->style()));
        QCOMPARE(style != qApp->style(), step.hasNewStyle);
        style = qApp->style();
        qApp->setStyleSheet(step.sheet);
    }
    QVERIFY(log().contains("{file}: ChangSkin: File does not exist or failed to open " + path("missing")));
    QVERIFY(!Change::ChangSkin(nullptr, path("a"), enStyleNormal, true));
}

void TestSkin::miniSkin()
{
    const auto load = [](const char* name, Qt::LayoutDirection direction, bool reload = true) {
        service().setSetting("MiniSkin", "Name", name);
        QGuiApplication::setLayoutDirection(direction);
        Change::LoadQss(enStyleMini, reload);
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
        return qApp->styleSheet();
    };
    writeFile(installed("skin/Blue.qss"), "#left {}");
    writeFile(installed("skin/Blue/Blue_Arabic.qss"), "#right {}");
    qApp->setStyleSheet(QString());
    QCOMPARE(load("Blue", Qt::LeftToRight), QString());
    CommonUtils::SetMiniModeFlag();
    QCOMPARE(load("Blue", Qt::LeftToRight), QString("#left {}"));
    QCOMPARE(load("Blue", Qt::RightToLeft, false), QString("#left {}"));
    QCOMPARE(load("Red", Qt::RightToLeft), QString("#left {}"));
    QCOMPARE(load("Blue", Qt::RightToLeft), QString("#right {}"));
    qApp->setStyleSheet(QString());
}

void TestSkin::scrollBar_data()
{
    // look: the images seen in four places along the bar, from left or top
    const auto row = dataTable<Qt::Orientation, Qt::LayoutDirection, QString, QString>(
        "orientation", "direction", "without", "look");
    row("vertical", Qt::Vertical, Qt::LeftToRight, "", "up vertical_slider vertical_back down");
    row("horizontal", Qt::Horizontal, Qt::LeftToRight, "", "left horizontal_slider horizontal_back right");
    row("mirrored", Qt::Horizontal, Qt::RightToLeft, "", "left horizontal_back horizontal_slider right");
    for (const char* part : {"vertical_back", "vertical_slider", "up", "down", "mini mode", "enabled"})
        row(part, Qt::Vertical, Qt::LeftToRight, part, ""); // left to the base style
}

void TestSkin::scrollBar()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(QString, without);
    const QString images = installed("skin/default/images/scroll_");
    const bool isVertical = orientation == Qt::Vertical;
    QDir(installed("skin/default/images")).removeRecursively();
    QMap<QRgb, QString> parts;
    for (const char* name : {"vertical_back", "vertical_slider", "up", "down", "horizontal_back",
                             "horizontal_slider", "left", "right"})
        parts.insert(0xff000001 + parts.size(), name);
    for (auto part = parts.begin(); part != parts.end(); ++part) {
        QImage image(16, 16, QImage::Format_RGB32);
        image.fill(part.key());
        writeFile(images + part.value() + ".png", "no image");
        QVERIFY(part.value() == without || image.save(images + part.value() + ".png"));
    }
    if (without == "mini mode")
        CommonUtils::SetMiniModeFlag();
    WinClassic style;
    QScrollBar bar(orientation);
    bar.setStyle(&style);
    bar.setEnabled(without != "enabled");
    bar.setLayoutDirection(direction);
    bar.setRange(0, 100);
    bar.setPageStep(100);
    bar.resize(isVertical ? QSize(16, 160) : QSize(160, 16));
    const QImage picture = bar.grab().toImage().convertToFormat(QImage::Format_RGB32);
    QStringList seen;
    for (const int position : {8, 40, 120, 152})
        seen.append(parts.value(picture.pixel(isVertical ? QPoint(8, position) : QPoint(position, 8))));
    seen.removeAll(QString());
    QTEST(seen.join(' '), "look");
}

QTEST_MAIN(TestSkin)
#include "tst_skin.moc"
