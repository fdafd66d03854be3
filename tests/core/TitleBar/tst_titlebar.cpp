#include "TitleBar/TitleBar.h"

#include "CoreTest.h"
#include "DataTable.h"
#include "LogOrder.h"
#include "TitleBar/SystemMenuStates_p.h"
#include "TitleBar/TileGrid_p.h"
#include "common/CommonUtils.h"

#include <QGuiApplication>
#include <QLabel>
#include <QLayout>
#include <QMouseEvent>
#include <QScreen>
#include <QToolButton>

namespace {

/// A window with a title bar whose event handlers can be called.
class Window : public QWidget
{
public:
    struct Bar : TitleBar
    {
        using TitleBar::mouseDoubleClickEvent;
        using TitleBar::mouseMoveEvent;
        using TitleBar::mousePressEvent;
        using TitleBar::TitleBar;
    };

    Window()
        : QWidget(nullptr, Qt::FramelessWindowHint)
        , bar(new Bar(this, 3))
    {
        setGeometry(Normal);
        bar->resize(width(), 29);
        show();
    }

    bool isShown(const char* button) const { return !part(button)->isHidden(); }
    void click(const char* button) const { qobject_cast<QToolButton*>(part(button))->click(); }
    QWidget* part(const char* name) const { return bar->findChild<QWidget*>(QLatin1String("Core_") + name); }

    /// The names of the buttons that are shown: m, M, R, C.
    QString buttons() const
    {
        QString shown;
        for (const char* name : {"Minimize", "Maximize", "Restore", "Close"})
            if (isShown(QByteArray("Button") + name))
                shown += QLatin1String(name).left(3);
        return shown;
    }

    void drag(QPoint from, QPoint to) const
    {
        send(QEvent::MouseButtonPress, from);
        send(QEvent::MouseMove, to);
        send(QEvent::MouseButtonRelease, to);
    }

    void send(QEvent::Type type, QPoint at, Qt::MouseButton button = Qt::LeftButton) const
    {
        QMouseEvent event(type, bar->mapFromGlobal(at), at, button, button, Qt::NoModifier);
        QCoreApplication::sendEvent(bar, &event);
    }

    static constexpr QRect Normal{100, 120, 400, 300};
    Bar* const bar;
};

QRect available()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

QRect tile(int row, int column)
{
    return {available().left() + 160 * column, available().bottom() - 30 * (row + 1), 160, 30};
}

QList<int> counts(const TileGrid& grid, int row)
{
    QList<int> values;
    for (int column = 0; column < grid.columns(); ++column)
        values.append(const_cast<TileGrid&>(grid).matrix()[row][column].count);
    return values;
}

} // namespace

class TestTitleBar : public CoreTest
{
    Q_OBJECT

private slots:
    void init();
    void gridSize_data();
    void gridSize();
    void gridSearch();
    void gridOccupancy_data();
    void gridOccupancy();
    void parts();
    void tiles();
    void maximising();
    void maximisingIsOff();
    void minimiseHides();
    void dragging();
    void mouse();
    void popups();
    void systemMenu_data();
    void systemMenu();
    void missingParts();
};

void TestTitleBar::init()
{
    CoreTest::init();
    log().allow("This plugin does not support {*}"); // the platform without a screen
    service().setSetting("system", "EnableMaxButton", "true");
}

void TestTitleBar::gridSize_data()
{
    const auto row = dataTable<QRect, int, int, QRect>("available", "rows", "columns", "second");
    row("usual", {0, 0, 1920, 1040}, 34, 12, {160, 1009, 160, 30});
    row("second screen", {-1280, 24, 1280, 1000}, 33, 8, {-1120, 993, 160, 30});
    row("one tile", {0, 0, 319, 59}, 1, 1, {});
    row("too narrow", {0, 0, 159, 600}, 20, 0, {});
    row("too low", {0, 0, 600, 29}, 0, 3, {});
    row("none", {}, 0, 0, {});
}

void TestTitleBar::gridSize()
{
    QFETCH(QRect, available);
    QFETCH(int, rows);
    QFETCH(int, columns);
    QFETCH(QRect, second);
    TileGrid grid(available);
    QCOMPARE(grid.rows(), rows);
    QCOMPARE(grid.columns(), columns);
    QCOMPARE(grid.isEmpty(), rows * columns == 0);
    QCOMPARE(!grid.matrix(), grid.isEmpty());
    QCOMPARE(!grid.firstFree(), grid.isEmpty());
    if (columns > 1 && rows > 1)
        QCOMPARE(grid.matrix()[0][1].rect, second);
    grid.change(false, available);
}

void TestTitleBar::gridSearch()
{
    TileGrid grid({0, 0, 320, 90});
    QVector<QRect> given;
    while (TileCell* const cell = grid.firstFree()) {
        cell->count = 1;
        given.append(cell->rect);
    }
    QCOMPARE(given.size(), 6);
    QCOMPARE(given.mid(0, 3), (QVector<QRect>{{0, 59, 160, 30}, {160, 59, 160, 30}, {0, 29, 160, 30}}));
}

void TestTitleBar::gridOccupancy_data()
{
    const auto row = dataTable<QRect, QList<int>, QList<int>, QList<int>>("rect", "row0", "row1", "row2");
    row("exactly a tile", {160, 59, 160, 30}, {0, 1, 0}, {0, 0, 0}, {0, 0, 0});
    row("beside the columns", {80, 59, 160, 30}, {1, 1, 0}, {0, 0, 0}, {0, 0, 0});
    row("over four", {80, 40, 160, 30}, {1, 1, 0}, {1, 1, 0}, {0, 0, 0});
    row("wide: ends after the row with the fourth", {0, 0, 480, 89}, {1, 1, 1}, {1, 1, 1}, {0, 0, 0});
    row("elsewhere", {600, 59, 160, 30}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0});
}

void TestTitleBar::gridOccupancy()
{
    QFETCH(QRect, rect);
    QFETCH(QList<int>, row0);
    TileGrid grid({0, 0, 480, 90});
    grid.change(false, rect);
    QCOMPARE(counts(grid, 0), row0);
    QTEST(counts(grid, 1), "row1");
    QTEST(counts(grid, 2), "row2");
    grid.change(true, rect);
    QCOMPARE(counts(grid, 0) + counts(grid, 1) + counts(grid, 2), (QList<int>{0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

void TestTitleBar::parts()
{
    writeFile(installed("plugins/XFramePlugin/XFramePlugin_en-us.lang"),
              "<l><item name='IDS_XFRAME_TITLE'>Connection</item></l>");
    QImage picture(64, 32, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(installed("plugins/XFramePlugin/Startup.png")));
    Window window;
    const auto* const title = qobject_cast<QLabel*>(window.part("LabelTitle"));
    const auto* const icon = qobject_cast<QLabel*>(window.part("LabelTitleIcon"));
    QCOMPARE(title->text(), "Connection");
    QCOMPARE(title->minimumSize(), QSize(30, 15));
    QCOMPARE(icon->minimumHeight(), 16);
    QCOMPARE(icon->pixmap(Qt::ReturnByValue).size(), QSize(16, 8));
    QCOMPARE(window.bar->layout()->contentsMargins(), QMargins(1, 0, 5, 0));
    QCOMPARE(window.buttons(), "MinMaxClo");
    for (const QWidget* part : window.bar->findChildren<QWidget*>())
        QCOMPARE(part->focusPolicy(), Qt::NoFocus);

    window.bar->SetWindowTitle("<b>New");
    QCOMPARE(title->text(), "<b>New");
    window.bar->setCusTitleBarIcon(installed("missing.png"), 16, 16);
    QVERIFY(icon->pixmap(Qt::ReturnByValue).isNull());
    window.bar->GrayoutCloseButton(false);
    QVERIFY(!window.bar->IsCloseButtonEnable());
    window.bar->GrayoutCloseButton(true);
    QVERIFY(window.bar->IsCloseButtonEnable());
    window.bar->HideAllControl();
    QCOMPARE(window.buttons(), QString());
    QVERIFY(icon->isHidden() && !title->isHidden());
    window.bar->ShowAllControl();
    QCOMPARE(window.buttons(), "MinMaxClo");
    window.bar->EnableIcon(false);
    window.bar->EnableCloseButton(false);
    window.bar->EnableMinimizeButton(false);
    window.bar->EnableMaximizeButton(false);
    QVERIFY(icon->isHidden());
    QCOMPARE(window.buttons(), QString());
    window.bar->EnableCloseButton(true);
    window.click("ButtonClose");
    QVERIFY(!window.isVisible());
}

void TestTitleBar::tiles()
{
    QCOMPARE(TitleBar::s_ppMatrixOccupy, nullptr); // the first window to be minimised in this process
    auto first = std::make_unique<Window>();
    Window second;
    first->click("ButtonMinimize");
    QCOMPARE(TitleBar::iHorizontalCnt, available().width() / 160);
    QCOMPARE(TitleBar::iVerticalCnt, available().height() / 30);
    QCOMPARE(TitleBar::s_ppMatrixOccupy[0][0].window, first.get());
    QCOMPARE(first->geometry(), tile(0, 0));
    QCOMPARE(first->buttons(), "MaxResClo");
    QVERIFY(first->bar->IsMinimized() && !first->bar->IsMaximized());
    second.bar->showSmall();
    QCOMPARE(second.geometry(), tile(0, 1));
    second.bar->showSmall(); // takes no second tile
    QCOMPARE(TitleBar::s_ppMatrixOccupy[0][2].count, 0);

    first->click("ButtonRestore");
    QCOMPARE(first->geometry(), Window::Normal);
    QCOMPARE(first->buttons(), "MinMaxClo");
    QCOMPARE(TitleBar::s_ppMatrixOccupy[0][0].count, 0);
    first->bar->showSmall();
    QCOMPARE(first->geometry(), tile(0, 0));
    first.reset(); // destroyed as a tile
    QCOMPARE(TitleBar::s_ppMatrixOccupy[0][0].count, 0);
    second.bar->showMax();
    QCOMPARE(TitleBar::s_ppMatrixOccupy[0][1].count, 0);
    QCOMPARE(second.geometry(), available());
}

void TestTitleBar::maximising()
{
    Window window;
    window.click("ButtonMaximize");
    QVERIFY(window.bar->IsMaximized());
    QCOMPARE(window.geometry(), available());
    QCOMPARE(window.buttons(), "MinResClo");
    window.bar->showSmall(); // from maximised to a tile
    QCOMPARE(window.geometry(), tile(0, 0));
    QCOMPARE(window.buttons(), "MaxResClo");
    window.bar->showRestore(); // and back
    QCOMPARE(window.geometry(), available());
    QCOMPARE(window.buttons(), "MinResClo");
    QVERIFY(window.bar->IsMaximized() && !window.bar->IsMinimized());
    window.bar->showMax(); // keeps the normal geometry
    window.bar->showRestore();
    QCOMPARE(window.geometry(), Window::Normal);
    QCOMPARE(window.buttons(), "MinMaxClo");
    QCOMPARE(TitleBar::s_ppMatrixOccupy[0][0].count, 0);
}

void TestTitleBar::maximisingIsOff()
{
    service().setSetting("system", "EnableMaxButton", "True");
    Window window;
    QCOMPARE(window.buttons(), "MinClo");
    window.bar->showMax();
    QVERIFY(!window.bar->IsMaximized());
    QCOMPARE(window.geometry(), Window::Normal);
    QVERIFY(log().contains("{file}, showMax : maximize is disabled"));
    window.bar->showSmall();
    QCOMPARE(window.buttons(), "ResClo");
    window.bar->setMiniState(); // the restore button is there already
    QCOMPARE(window.buttons(), "ResClo");
    window.bar->showRestore();
    QCOMPARE(window.buttons(), "MinClo");
}

void TestTitleBar::minimiseHides()
{
    Window window;
    window.bar->SetMinimizeBehavior(true);
    QVERIFY(window.bar->getMinimizeBehavior());
    window.bar->showSmall();
    QVERIFY(!window.isVisible() && !window.bar->IsMinimized());
    VERIFY_LOGGED_IN_ORDER("{file}, showSmall : entered", "{file}, showSmall : hide called");
}

void TestTitleBar::dragging()
{
    Window window;
    const QPoint grip = window.pos() + QPoint(200, 10);
    window.drag(grip, grip + QPoint(30, 40));
    QCOMPARE(window.pos(), Window::Normal.topLeft() + QPoint(30, 40));
    window.send(QEvent::MouseMove, grip); // no button is pressed
    QCOMPARE(window.pos(), Window::Normal.topLeft() + QPoint(30, 40));
    window.drag(window.pos() + QPoint(200, 10), QPoint(available().right() - 2, 300));
    QCOMPARE(window.pos(), Window::Normal.topLeft() + QPoint(30, 40));
    QVERIFY(log().contains("{time}, {file}, mouseMoveEvent : Move out of available area!!"));
    window.drag(window.pos() + QPoint(200, 10), QPoint(available().right() - 3, 300));
    QVERIFY(window.pos().x() > 400);
    window.bar->SetMoveable(false);
    const QPoint before = window.pos();
    window.drag(before + QPoint(10, 10), before);
    QCOMPARE(window.pos(), before);
    window.bar->SetMoveable(true);

    window.bar->showMax();
    window.drag({200, 10}, {200, 200});
    QCOMPARE(window.geometry(), available());
    window.bar->showSmall(); // a tile over two others occupies both
    const QPoint onTile = tile(0, 0).topLeft() + QPoint(80, 10);
    window.drag(onTile, onTile + QPoint(240, 0));
    QCOMPARE(window.pos(), tile(0, 0).topLeft() + QPoint(240, 0));
    const TileCell* const row = TitleBar::s_ppMatrixOccupy[0];
    QCOMPARE((QList<int>{row[0].count, row[1].count, row[2].count}), (QList<int>{0, 1, 1}));
    window.close();
}

void TestTitleBar::mouse()
{
    Window window;
    const QPoint onTitle = window.pos() + QPoint(200, 10);
    window.setCursor(Qt::SizeHorCursor);
    window.bar->mousePressEvent(nullptr);
    QVERIFY(log().contains("{file}, mousePressEvent QMouseEvent is NULL"));
    window.bar->mouseMoveEvent(nullptr);
    window.bar->mouseDoubleClickEvent(nullptr);
    window.send(QEvent::MouseButtonPress, onTitle);
    QCOMPARE(window.cursor().shape(), Qt::ArrowCursor);

    window.send(QEvent::MouseButtonDblClick, onTitle, Qt::RightButton);
    QVERIFY(!window.bar->IsMaximized());
    window.send(QEvent::MouseButtonDblClick, onTitle);
    QVERIFY(window.bar->IsMaximized());
    window.send(QEvent::MouseButtonDblClick, QPoint(200, 10));
    QCOMPARE(window.geometry(), Window::Normal);
    window.bar->EnableMaximizeButton(false);
    window.send(QEvent::MouseButtonDblClick, onTitle);
    QVERIFY(!window.bar->IsMaximized());

    const QPoint onIcon = window.part("LabelTitleIcon")->geometry().center();
    QVERIFY(window.bar->isIconPressed(onIcon));
    QVERIFY(!window.bar->isIconPressed({200, 10}));
    window.send(QEvent::MouseButtonDblClick, window.bar->mapToGlobal(onIcon));
    QVERIFY(!window.isVisible());
    QVERIFY(!window.bar->isIconPressed(onIcon));
    QVERIFY(log().contains("{file}, isIconPressed : title Icon is hidden"));
}

void TestTitleBar::popups()
{
    Window main;
    QWidget hidden;
    QWidget popup;
    popup.setObjectName("popup");
    popup.show();
    auto destroyed = std::make_unique<QWidget>();
    destroyed->show();
    QWidget forgotten;
    forgotten.show();
    main.bar->HideAllPopupWindow();
    QVERIFY(main.isVisible() && !popup.isVisible() && !destroyed->isVisible() && !forgotten.isVisible());
    QVERIFY(log().contains("{file}, HideAllPopupWindow :hide widget popup during hide main"));
    destroyed.reset();
    main.bar->DeletePopupWindow(&forgotten);
    VERIFY_LOGGED_IN_ORDER("{time}, {file}, DeletePopupWindow : Enter",
                           "{time}, {file}, DeletePopupWindow : the widget is deleted from list",
                           "{time}, {file}, DeletePopupWindow : Exit");
    main.bar->RestoreAllPopupWindow();
    QVERIFY(popup.isVisible() && !hidden.isVisible() && !forgotten.isVisible());
    log().clear();
    main.bar->DeletePopupWindow(nullptr);
    main.bar->DeletePopupWindow(&hidden);
    QCOMPARE(log().count("{time}, {file}, DeletePopupWindow : Exit: the widget is null"), 1);
    QCOMPARE(log().count("{time}, {file}, DeletePopupWindow : Exit"), 1);
    QCOMPARE(log().count("{*} : the widget is deleted from list"), 0);
    popup.hide();
    main.bar->HideAllPopupWindow(); // forgets the earlier ones
    main.bar->RestoreAllPopupWindow();
    QVERIFY(!popup.isVisible());
}

void TestTitleBar::systemMenu_data()
{
    // move, restore, minimize, size, maximize
    const auto row = dataTable<bool, bool, QList<bool>>("isMaximized", "isCompact", "enabled");
    row("maximised", true, false, {false, true, true, false, false});
    row("maximised, compact", true, true, {true, false, true, false, false});
    row("compact", false, true, {true, false, true, false, false});
    row("normal", false, false, {true, false, true, true, true});
}

void TestTitleBar::systemMenu()
{
    QFETCH(bool, isMaximized);
    QFETCH(bool, isCompact);
    QFETCH(QList<bool>, enabled);
    const QList<unsigned int> entries{0xF010, 0xF120, 0xF020, 0xF000, 0xF030};
    for (const SystemMenuStates::EntryState& state : SystemMenuStates::of(isMaximized, isCompact))
        QCOMPARE(state.isEnabled, enabled.at(entries.indexOf(state.entry)));
}

void TestTitleBar::missingParts()
{
    Window window;
    delete window.part("ButtonRestore");
    window.bar->setMiniState();
    QVERIFY(log().contains("{file}, setMiniState : restore button is null"));
    QVERIFY(window.isShown("ButtonMinimize"));
    window.bar->showMax();
    window.bar->showRestore();
    QCOMPARE(log().count("{file}, {func} : maximize or restore button is null"), 2);
    delete window.part("LabelTitle");
    window.bar->SetWindowTitle("title");
    QVERIFY(log().contains("{file}, SetWindowTitle : title label is null"));
    delete window.part("LabelTitleIcon");
    QVERIFY(!window.bar->isIconPressed({5, 5}));
    QVERIFY(log().contains("{file}, isIconPressed : title Icon is null"));
    window.bar->HideAllControl();
    window.bar->ShowAllControl();
}

QTEST_MAIN(TestTitleBar)

#include "tst_titlebar.moc"
