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
    void miniSkin_data();
    void miniSkin();
    void scrollBar_data();
    void scrollBar();

private:
    static QString installed(const QString& name)
    {
        return QCoreApplication::applicationDirPath() + '/' + name;
    }
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
    QCOMPARE(log().count("{file}: ChangSkin: File does not exist or failed to open " + path("missing.qss")),
             1);
    QVERIFY(apply("b.qss", false)); // no sheet is kept now
    QCOMPARE(qApp->styleSheet(), QString("QLabel { color: blue; }"));
    log().allow("Could not parse application stylesheet");
    QVERIFY(apply("broken.qss", true));
    QVERIFY(!Change::ChangSkin(nullptr, path("b.qss"), enStyleNormal, true));
}

void TestSkin::miniSkin_data()
{
    QTest::addColumn<bool>("isMini");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("normal mode") << false << Qt::LeftToRight << "Blue"
                                 << "before";
    QTest::newRow("left to right") << true << Qt::LeftToRight << "Blue"
                                   << "left";
    QTest::newRow("right to left") << true << Qt::RightToLeft << "Blue"
                                   << "right";
    QTest::newRow("missing") << true << Qt::LeftToRight << "Red"
                             << "before";
    QTest::newRow("no name") << true << Qt::RightToLeft << ""
                             << "before";
}

void TestSkin::miniSkin()
{
    QFETCH(bool, isMini);
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(QString, name);
    const auto sheet = [](const QString& text) {
        return "#none { qproperty-text: " + text + "; }";
    };
    writeFile(installed("skin/Blue.qss"), sheet("left").toUtf8());
    writeFile(installed("skin/Blue/Blue_Arabic.qss"), sheet("right").toUtf8());
    service().setSetting("MiniSkin", "Name", name);
    qApp->setStyleSheet(sheet("before"));
    if (isMini)
        CommonUtils::SetMiniModeFlag();
    QGuiApplication::setLayoutDirection(direction);
    Change::LoadQss(enStyleMini, true);
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    QFETCH(QString, expected);
    QCOMPARE(qApp->styleSheet(), sheet(expected));
    qApp->setStyleSheet(QString());
}

void TestSkin::scrollBar_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<QString>("change");  // what stands in the way of the images
    QTest::addColumn<QString>("colours"); // from the top or the left: button, slider or back twice, button
    QTest::newRow("vertical") << Qt::Vertical << Qt::LeftToRight << ""
                              << "low slider back high";
    QTest::newRow("horizontal") << Qt::Horizontal << Qt::LeftToRight << ""
                                << "low slider back high";
    QTest::newRow("right to left") << Qt::Horizontal << Qt::RightToLeft << ""
                                   << "low back slider high";
    QTest::newRow("mini mode") << Qt::Vertical << Qt::LeftToRight << "mini"
                               << "";
    QTest::newRow("disabled") << Qt::Vertical << Qt::LeftToRight << "disabled"
                              << "";
    QTest::newRow("image missing") << Qt::Vertical << Qt::LeftToRight << "missing"
                                   << "";
    QTest::newRow("damaged image") << Qt::Horizontal << Qt::LeftToRight << "damaged"
                                   << "";
}

void TestSkin::scrollBar()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(QString, change);
    const bool isVertical = orientation == Qt::Vertical;
    const QString images = installed("skin/default/images");
    const QString bar = images + (isVertical ? "/scroll_vertical_" : "/scroll_horizontal_");
    const QString high = images + (isVertical ? "/scroll_down.png" : "/scroll_right.png");
    const QMap<QRgb, QString> parts{
        {0xffff0000, "back"}, {0xff00ff00, "slider"}, {0xff0000ff, "low"}, {0xffffff00, "high"}};
    const QMap<QString, QString> files{{"back", bar + "back.png"},
                                       {"slider", bar + "slider.png"},
                                       {"low", images + (isVertical ? "/scroll_up.png" : "/scroll_left.png")},
                                       {"high", high}};
    QVERIFY(QDir().mkpath(images));
    for (auto part = parts.begin(); part != parts.end(); ++part) {
        QImage image(16, 16, QImage::Format_RGB32);
        image.fill(part.key());
        QVERIFY(image.save(files[part.value()]));
    }
    if (change == "mini")
        CommonUtils::SetMiniModeFlag();
    else if (change == "missing")
        QVERIFY(QFile::remove(high));
    else if (change == "damaged")
        writeFile(high, "no image");

    WinClassic style;
    QScrollBar widget(orientation);
    widget.setStyle(&style);
    widget.setLayoutDirection(direction);
    widget.setRange(0, 100);
    widget.setPageStep(100);
    widget.setEnabled(change != "disabled");
    widget.resize(isVertical ? QSize(16, 160) : QSize(160, 16));
    const QImage picture = widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
    QStringList seen;
    for (const int position : {8, 40, 120, 152})
        seen.append(parts.value(picture.pixel(isVertical ? QPoint(8, position) : QPoint(position, 8))));
    QTEST(seen.join(' ').trimmed(), "colours");
}

QTEST_MAIN(TestSkin)
#include "tst_skin.moc"
