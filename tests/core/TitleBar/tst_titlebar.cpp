#include "TitleBar/TitleBar.h"

#include "CoreTest.h"
#include "Samples.h"
#include "TitleBar/TileGrid_p.h"
#include "common/CommonUtils.h"

#include <QGuiApplication>
#include <QLabel>
#include <QLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QScreen>
#include <QToolButton>

namespace {

QRect available()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

QRect tile(int row, int column)
{
    return {available().left() + 160 * column, available().bottom() - 30 * (row + 1), 160, 30};
}

/// A window with a title bar.
struct Window : QWidget
{
    Window()
        : QWidget(nullptr, Qt::FramelessWindowHint)
        , bar(new TitleBar(this, 3))
    {
        setGeometry(Normal);
        bar->setGeometry(3, 0, width(), 29); // as in a dialog
        show();
    }

    QWidget* part(const QByteArray& name) const { return bar->findChild<QWidget*>("Core_" + name); }
    void click(const QByteArray& name) const { bar->findChild<QToolButton*>("Core_Button" + name)->click(); }

    /// The buttons that are shown.
    QString shown() const
    {
        QString names;
        for (const QByteArray name : {"Minimize", "Maximize", "Restore", "Close"})
            if (!part("Button" + name)->isHidden())
                names += name.left(3);
        return names;
    }

    /// The place, the number of windows in the first tile, and the buttons.
    QString state(const TileCell* first) const
    {
        QString text = geometry() == Normal ? "normal" : "full";
        if (bar->IsMinimized())
            text = geometry() == tile(0, 0) && first->window == this ? "tile" : "lost";
        text += bar->IsMaximized() ? " maximised " : " ";
        text += QString::number(first ? first->count : 0) + ' ' + shown();
        return text + (isHidden() ? " hidden" : "");
    }

    /// @param at on the screen
    void send(QEvent::Type type, QPoint at, Qt::MouseButton button = Qt::LeftButton) const
    {
        QMouseEvent event(type, bar->mapFromGlobal(at), at, button, button, Qt::NoModifier);
        QCoreApplication::sendEvent(bar, &event);
    }

    /// Drags the window by its title.
    /// @return by how much it has moved
    QPoint drag(QPoint distance) const
    {
        const QPoint before = pos();
        const QPoint grip = before + QPoint(80, 10);
        send(QEvent::MouseButtonPress, grip);
        send(QEvent::MouseMove, grip + distance);
        send(QEvent::MouseButtonRelease, grip + distance);
        return pos() - before;
    }

    void occupyAll(bool release) const
    {
        for (int row = 0; row < TitleBar::iVerticalCnt; ++row) {
            QRect rect = tile(row, 0).adjusted(0, 0, available().width(), 0);
            bar->setOccupyState(release, rect);
        }
    }

    void perform(const QByteArray& step)
    {
        const auto button = step == "right" ? Qt::RightButton : Qt::LeftButton;
        if (step == "hides")
            bar->SetMinimizeBehavior(true);
        else if (step == "mini")
            bar->setMiniState();
        else if (step == "hide")
            hide();
        else if (step == "occupy")
            occupyAll(false);
        else if (step == "double" || step == "right")
            send(QEvent::MouseButtonDblClick, bar->mapToGlobal({200, 10}), button);
        else if (step != "disabled")
            click(step);
    }

    static constexpr QRect Normal{100, 120, 400, 300};
    TitleBar* const bar;
};

struct OpenBar : TitleBar
{
    using TitleBar::mousePressEvent;
};

/// The counts of all cells, row by row from the bottom.
QString counts(TileCell* const* matrix, int rows, int columns)
{
    QString text;
    for (int row = 0; row < rows; ++row, text += ' ')
        for (int column = 0; column < columns; ++column)
            text += QString::number(matrix[row][column].count);
    return text.trimmed();
}

} // namespace

class TestTitleBar : public CoreTest
{
    Q_OBJECT

private slots:
    void init();
    void grid();
    void parts();
    void states();
    void dragging();
    void popups();
    void systemMenu();
};

void TestTitleBar::init()
{
    CoreTest::init();
    service().setSetting("system", "EnableMaxButton", "true");
    writeFile(installed("plugins/XFramePlugin/XFramePlugin_en-us.lang"), contentOf(SAMPLES "/texts.xml"));
}

void TestTitleBar::grid()
{
    const QRect screen(0, 0, 480, 90);
    const std::tuple<QRect, QRect, QString, QRect> rows[] = {
        {screen, {160, 59, 160, 30}, "010 000 000", {0, 59, 160, 30}}, // exactly a tile
        {screen, {80, 40, 160, 30}, "110 110 000", {320, 59, 160, 30}},
        {screen, {0, 0, 480, 89}, "111 111 000", {0, -1, 160, 30}}, // ends after the row with the fourth
        {screen, {0, 0, 320, 89}, "110 110 000", {320, 59, 160, 30}},
        {{-320, 24, 479, 89}, {-320, 82, 160, 30}, "10 00", {-160, 82, 160, 30}}, // a second screen
        {{0, 0, 160, 59}, {0, 0, 160, 59}, "1", {}},
        {{0, 0, 159, 600}, {}, "", {}},
        {{0, 0, 600, 29}, {}, "", {}}};
    for (const auto& [available, rect, occupied, free] : rows) {
        TileGrid grid(available);
        grid.change(false, rect);
        QCOMPARE(counts(grid.matrix(), grid.rows(), grid.columns()), occupied);
        const TileCell* const cell = grid.firstFree();
        QCOMPARE(cell ? cell->rect : QRect(), free);
    }
}

void TestTitleBar::parts()
{
    QImage picture(64, 32, QImage::Format_RGB32);
    picture.fill(Qt::red);
    picture.setPixelColor(0, 0, Qt::blue);
    QVERIFY(picture.save(installed("plugins/XFramePlugin/Startup.png")));
    Window window;
    const auto* const title = qobject_cast<QLabel*>(window.part("LabelTitle"));
    const auto* const icon = qobject_cast<QLabel*>(window.part("LabelTitleIcon"));
    QCOMPARE(title->text(), "Connection");
    QCOMPARE(title->minimumSize(), QSize(30, 15));
    QCOMPARE(icon->minimumHeight(), 16);
    QCOMPARE(icon->pixmap(Qt::ReturnByValue).size(), QSize(16, 8));
    const QColor mixed = icon->pixmap(Qt::ReturnByValue).toImage().pixelColor(0, 0);
    QVERIFY(mixed.red() > 0 && mixed.blue() > 0);
    QCOMPARE(window.bar->layout()->contentsMargins(), QMargins(1, 0, 5, 0));
    QStringList places;
    for (int i = 0; QLayoutItem* const place = window.bar->layout()->itemAt(i); ++i)
        places += place->widget() ? place->widget()->objectName().mid(5)
                                  : QString::number(place->sizeHint().width());
    QCOMPARE(places.join(' '), "LabelTitleIcon 2 LabelTitle 0 ButtonMinimize ButtonMaximize 2 "
                               "ButtonRestore ButtonClose");
    for (const QWidget* part : window.bar->findChildren<QWidget*>())
        QCOMPARE(part->focusPolicy(), Qt::NoFocus);

    window.bar->SetWindowTitle("<b>New");
    QCOMPARE(title->text(), "<b>New");
    window.bar->setCusTitleBarIcon(installed("missing.png"), 16, 16);
    QVERIFY(icon->pixmap(Qt::ReturnByValue).isNull());
    window.bar->HideAllControl();
    QVERIFY(window.shown().isEmpty() && icon->isHidden() && !title->isHidden());
    window.bar->ShowAllControl();
    QVERIFY(window.shown() == "MinMaxClo" && !icon->isHidden());
    QWidget pane(&window);
    const TitleBar inner(&pane, 3);
    pane.show();
    inner.findChild<QToolButton*>("Core_ButtonClose")->click();
    QVERIFY(pane.isHidden() && window.isVisible());
    window.click("Close");
    QVERIFY(!window.isVisible());
    for (const QByteArray part : {"LabelTitle", "LabelTitleIcon", "ButtonRestore"})
        delete window.part(part);
    window.bar->SetWindowTitle("title");
    window.bar->showMax();
    window.bar->setMiniState();
    QVERIFY(!window.bar->isIconPressed({}));
    (window.bar->*&OpenBar::mousePressEvent)(nullptr);
    VERIFY_LOGGED_IN_ORDER("{file}, SetWindowTitle : title label is null",
                           "{file}, showMax : maximize or restore button is null",
                           "{file}, setMiniState : restore button is null",
                           "{file}, isIconPressed : title Icon is null",
                           "{file}, mousePressEvent QMouseEvent is NULL");
}

/// Samples give steps, the state after them, and what is logged.
void TestTitleBar::states()
{
    for (const Sample& sample : samplesIn(SAMPLES "/states.txt")) {
        const QStringList steps = sample.marked("> ").join(' ').split(' ');
        service().setSetting("system", "EnableMaxButton", steps[0] == "disabled" ? "True" : "true");
        log().clear();
        auto window = std::make_unique<Window>();
        for (const QString& step : steps)
            window->perform(step.toLatin1());
        const TileCell* const cell = TitleBar::s_ppMatrixOccupy ? TitleBar::s_ppMatrixOccupy[0] : nullptr;
        const QString state = window->state(cell);
        QVERIFY2(sample.marked("= ") == QStringList(state), sample.name + ": " + state.toUtf8());
        QVERIFY2(log().firstMissingInOrder(sample.marked("log: ")).isEmpty(), sample.name);
        if (steps[0] == "occupy")
            window->occupyAll(true);
        window.reset(); // gives its tile back
        QVERIFY2(!cell || cell->count == 0, sample.name);
    }
}

void TestTitleBar::dragging()
{
    Window first;
    first.bar->showSmall();
    Window window;
    QCOMPARE(QSize(TitleBar::iHorizontalCnt, TitleBar::iVerticalCnt),
             QSize(available().width() / 160, available().height() / 30));
    QCOMPARE(window.drag({30, 40}), QPoint(30, 40));
    window.send(QEvent::MouseMove, {300, 300}); // no button is pressed
    QCOMPARE(window.pos(), Window::Normal.topLeft() + QPoint(30, 40));
    const int room = available().right() - 3 - (window.x() + 80);
    QCOMPARE(window.drag({room + 1, 0}), QPoint());
    QVERIFY(log().contains("{time}, {file}, mouseMoveEvent : Move out of available area!!"));
    QCOMPARE(window.drag({room, 0}), QPoint(room, 0));
    QCOMPARE(window.drag({0, 2 - (window.y() + 10)}), QPoint());
    window.bar->SetMoveable(false);
    QCOMPARE(window.drag({-10, 10}), QPoint());
    window.bar->SetMoveable(true);
    window.bar->showMax();
    QCOMPARE(window.drag({10, 10}), QPoint());

    window.bar->showSmall();
    QCOMPARE(window.geometry(), tile(0, 1));
    QCOMPARE(window.drag({240, 0}), QPoint(240, 0)); // over two other tiles
    QCOMPARE(counts(TitleBar::s_ppMatrixOccupy, 1, 4), "1011");
}

void TestTitleBar::popups()
{
    Window main;
    QWidget popup;
    popup.setObjectName("popup");
    auto destroyed = std::make_unique<QWidget>();
    QWidget forgotten;
    for (QWidget* widget : {&popup, destroyed.get(), &forgotten})
        widget->show();
    main.bar->HideAllPopupWindow();
    QVERIFY(main.isVisible() && !popup.isVisible() && !destroyed->isVisible() && !forgotten.isVisible());
    destroyed.reset();
    for (QWidget* widget : {&forgotten, static_cast<QWidget*>(nullptr)})
        main.bar->DeletePopupWindow(widget);
    const QString line = "{time}, {file}, DeletePopupWindow : ";
    VERIFY_LOGGED_IN_ORDER("{file}, HideAllPopupWindow :hide widget popup during hide main", line + "Enter",
                           line + "the widget is deleted from list", line + "Exit", line + "Enter",
                           line + "Exit: the widget is null");
    main.bar->RestoreAllPopupWindow();
    QVERIFY(popup.isVisible() && !forgotten.isVisible());
    popup.hide();
    main.bar->HideAllPopupWindow(); // forgets the earlier ones
    main.bar->RestoreAllPopupWindow();
    QVERIFY(!popup.isVisible());
}

/// The menu of systems that have none of their own.
void TestTitleBar::systemMenu()
{
    Window window;
    const auto enabled = [&window](bool isCompact) {
        isCompact ? CommonUtils::SetMiniModeFlag() : CommonUtils::ResetMiniModeFlag();
        window.bar->showSystemMenu({300, 300});
        QStringList names;
        auto* const menu = window.bar->findChild<QMenu*>();
        for (const QAction* action : menu->actions())
            names += action->isEnabled() ? action->text() : "-";
        menu->hide();
        return names.join(' ');
    };
    QCursor::setPos(700, 700);
    QCOMPARE(enabled(true), "- Move - Minimize -");
    QCOMPARE(window.bar->findChild<QMenu*>()->pos(), QPoint(300, 300));
    QCOMPARE(enabled(false), "- Move Size Minimize Maximize");
    window.bar->findChild<QMenu*>()->actions().last()->trigger();
    QCOMPARE(enabled(true), "- Move - Minimize -");
    QCOMPARE(enabled(false), "Restore - - Minimize -");

    // A press on the icon that closes the menu does not open it again.
    const QPoint onIcon = window.part("LabelTitleIcon")->geometry().center();
    auto* const menu = window.bar->findChild<QMenu*>();
    QCursor::setPos(window.bar->mapToGlobal(onIcon));
    for (const bool isOpen : {true, false, true}) {
        window.send(QEvent::MouseButtonPress, QCursor::pos());
        QCOMPARE(menu->isVisible(), isOpen);
        menu->hide();
    }
    window.setCursor(Qt::SizeHorCursor);
    window.send(QEvent::MouseButtonPress, window.bar->mapToGlobal({200, 10}));
    QCOMPARE(window.cursor().shape(), Qt::ArrowCursor);
    window.send(QEvent::MouseButtonDblClick, QCursor::pos());
    QVERIFY(window.isHidden() && !window.bar->isIconPressed(onIcon));
    QVERIFY(log().contains("{file}, isIconPressed : title Icon is hidden"));
}

QTEST_MAIN(TestTitleBar)

#include "tst_titlebar.moc"
