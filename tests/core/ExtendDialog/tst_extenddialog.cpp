#include "ExtendDialog/ExtendDialog.h"

#include "CoreTest.h"
#include "ExtendDialog/DialogPlacement_p.h"
#include "ExtendDialog/DkMessageBox.h"
#include "ExtendDialog/ExtendLineEdit.h"
#include "ExtendDialog/FaderWidget.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "Startup/Startup.h"
#include "common/CommonUtils.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {

/// The main frame's answers about the frame of dialogs.
struct MainFrame : IMainFrameUIService
{
    QWidget* GetMainWindow() override { return nullptr; }
    QString GetLayoutPluginClsid() override { return {}; }
    bool UsesCustomFrame() override { return usesCustomFrame; }
    int GetTitleHeight() override { return 40; }
    int GetFrameWidth() override { return 5; }

    bool usesCustomFrame = true;
};

struct PublishedMainFrame : private Startup
{
    static void publish(IMainFrameUIService* service) { m_pUiPluginService = service; }
};

constexpr Qt::WindowFlags OwnFrameFlags = Qt::Dialog | Qt::FramelessWindowHint | Qt::CustomizeWindowHint;
constexpr Qt::WindowFlags AllButtons =
    Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint;

/// The parts of the title bar that are shown, but for the title.
QString shownParts(const ExtendDialog& dialog)
{
    QString names;
    for (const char* name :
         {"ButtonMinimize", "ButtonMaximize", "ButtonRestore", "ButtonClose", "LabelTitleIcon"})
        if (!dialog.GetTileBar()->findChild<QWidget*>(QLatin1String("Core_") + name)->isHidden())
            names += QString(name).mid(6, 3);
    return names;
}

} // namespace

class TestExtendDialog : public CoreTest
{
    Q_OBJECT

private slots:
    void init();
    void placement();
    void ownFrame();
    void systemFrame();
    void windowFlags();
    void centring();
    void closing();
    void showMessage_data();
    void showMessage();
    void fader();
    void lineEdit();

private:
    MainFrame m_mainFrame;
};

void TestExtendDialog::init()
{
    CoreTest::init();
    log().allow("QPixmap::fromWinHICON(){*}"); // Wine has not all icons
    service().setSetting("system", "EnableMaxButton", "true");
    m_mainFrame = {};
    PublishedMainFrame::publish(&m_mainFrame);
}

void TestExtendDialog::placement()
{
    const std::tuple<QRect, QSize, QPoint> rows[] = {
        {{200, 300, 400, 200}, {101, 101}, {349, 349}},   {{0, 300, 100, 100}, {100, 50}, {0, 325}},
        {{200, 300, 100, 100}, {201, 201}, {150, 250}},     // larger than the reference
        {{0, 300, 100, 100}, {200, 50}, {12, 325}},         // off to the left
        {{900, 300, 100, 100}, {300, 50}, {709, 325}},      // off to the right
        {{909, 300, 100, 100}, {100, 50}, {909, 325}},      // ends at the right edge
        {{400, 38, 100, 50}, {100, 50}, {400, 39}},         // too little room for the title
        {{400, 700, 100, 100}, {100, 90}, {400, 679}},      // off the bottom
        {{100, 100, 800, 600}, {1200, 900}, {-191, -131}}}; // larger than the screen
    for (const auto& [reference, dialog, topLeft] : rows)
        QCOMPARE(DialogPlacement::centred(reference, dialog, {10, 10, 1000, 760}), QRect(topLeft, dialog));
}

void TestExtendDialog::ownFrame()
{
    ExtendDialog dialog(nullptr, AllButtons, enWidgetNormal);
    QVERIFY(dialog.IsCusTitle() && (dialog.windowFlags() & OwnFrameFlags) == OwnFrameFlags);
    QCOMPARE(shownParts(dialog), "MinMaxClo");
    QCOMPARE(dialog.GetTileBar()->geometry(), QRect(3, 0, dialog.width(), 29));
    auto* const content = new QWidget(nullptr, Qt::Window);
    dialog.AddMainWidget(content);
    QVERIFY(!content->isWindow() && content->parentWidget() == &dialog);
    dialog.changeSize({200, 100});
    dialog.show();
    QCOMPARE(content->geometry(), QRect(5, 40, 200, 100));
    QCOMPARE(dialog.GetTileBar()->size(), QSize(207, 40));
    QCOMPARE(dialog.findChild<QFrame*>("Core_ExtendDialogFrame")->size(), dialog.size());
    dialog.setWindowTitle("Title");
    QCOMPARE(dialog.windowTitle() + dialog.GetTileBar()->findChild<QLabel*>("Core_LabelTitle")->text(),
             "TitleTitle");
    CommonUtils::SetMiniModeFlag();
    dialog.grab();
    CommonUtils::ResetMiniModeFlag();
    QVERIFY(dialog.mask().isEmpty() && dialog.minimumSize().isNull());
    dialog.grab();
    QString inside; // in turn left and right, along the edges and diagonally
    for (const QPoint& point : {QPoint(0, 5), {0, 9}, {10, 0}, {4, 4}, {0, 144}})
        for (const QPoint& place : {point, QPoint(209 - point.x(), point.y())})
            inside += dialog.mask().contains(place) ? '+' : '-';
    QCOMPARE(inside, "--++++++++");
    delete content;
    dialog.resize(300, 300); // without its content
    dialog.AddMainWidget(new QWidget);
    dialog.AddMainWidget(nullptr);
    QVERIFY(!dialog.GetMainWidget());
    auto* const layout = new QVBoxLayout;
    dialog.setLayout(nullptr);
    dialog.setLayout(layout);
    layout->activate();
    QCOMPARE(layout->geometry(), QRect(5, 40, 290, 255));
}

void TestExtendDialog::systemFrame()
{
    for (const auto type : {enWidgetNormal, enWidgetSystemFrame, enWidgetFixed, enWidgetMessage}) {
        m_mainFrame.usesCustomFrame = type == enWidgetSystemFrame;
        PublishedMainFrame::publish(type == enWidgetFixed ? nullptr : &m_mainFrame);
        ExtendDialog dialog(nullptr, OwnFrameFlags | Qt::WindowCloseButtonHint, type);
        QVERIFY(!dialog.IsCusTitle() && !dialog.GetTileBar());
        QCOMPARE(dialog.windowFlags() & (OwnFrameFlags | AllButtons), Qt::Dialog | Qt::WindowCloseButtonHint);
        auto* const content = new QWidget;
        dialog.AddMainWidget(content);
        dialog.changeSize({150, 60});
        dialog.EnableCloseButton(false); // there is none
        dialog.show();
        const bool isFixed = type == enWidgetFixed || type == enWidgetMessage;
        const QSize any(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        QCOMPARE(dialog.minimumSize(), isFixed ? QSize(150, 60) : QSize(100, 100));
        QCOMPARE(dialog.maximumSize(), isFixed ? QSize(150, 60) : any);
        QCOMPARE(content->geometry(), dialog.rect());
        m_mainFrame.usesCustomFrame = true;
        dialog.getFrameValue(); // the frame stays
        dialog.resize(200, 200);
    }
    QVERIFY(!log().contains("{*}grabKey{*}"));
}

void TestExtendDialog::windowFlags()
{
    log().allow("{file}, setWindowFlags : Qt::WindowStaysOnTopHint set");
    ExtendDialog own(nullptr, Qt::WindowCloseButtonHint, enWidgetNormal);
    own.setWindowFlags(Qt::WindowMinimizeButtonHint);
    QCOMPARE(shownParts(own), "Min");
    own.setWindowFlags(Qt::WindowStaysOnTopHint | Qt::WindowCloseButtonHint);
    QVERIFY(own.windowFlags() & Qt::WindowStaysOnTopHint);
    QCOMPARE(shownParts(own), "Clo");
    own.GetTileBar()->showSmall(); // a tile has a button to restore it
    QCOMPARE(shownParts(own), "ResClo");
    own.setWindowFlags(Qt::WindowCloseButtonHint);
    QCOMPARE(shownParts(own), "Clo");

    m_mainFrame.usesCustomFrame = false;
    ExtendDialog system(nullptr, Qt::WindowCloseButtonHint, enWidgetNormal);
    system.setWindowFlags(Qt::FramelessWindowHint | Qt::WindowMinimizeButtonHint);
    QCOMPARE(system.windowFlags() & (OwnFrameFlags | AllButtons),
             Qt::Dialog | Qt::WindowCloseButtonHint | Qt::WindowMinimizeButtonHint);
    ExtendDialog always(nullptr, Qt::WindowCloseButtonHint, enWidgetSystemFrame);
    always.setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowCloseButtonHint);
    QCOMPARE(always.windowFlags(), Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowCloseButtonHint);
    m_mainFrame.usesCustomFrame = true;
    always.getFrameValue(); // from now on flags choose the buttons of a title bar
    always.setWindowFlags(Qt::WindowMinimizeButtonHint);
    QCOMPARE(shownParts(always), "Min");
    always.setWindowFlags(Qt::WindowMaximizeButtonHint | Qt::WindowStaysOnTopHint);
    QCOMPARE(shownParts(always), "Max");
    QCOMPARE(log().lines(QtWarningMsg).size(), 2);
}

void TestExtendDialog::centring()
{
    QWidget outer;
    outer.setObjectName("miniplugin_subframedlg"); // only the nearest counts
    outer.setGeometry(100, 110, 600, 500);
    QWidget main(&outer);
    main.setObjectName("miniplugin_subframedlg");
    main.setGeometry(100, 90, 400, 300);
    QWidget between(&main);
    between.setObjectName("miniplugin_subframedlg2"); // another name
    ExtendDialog dialog(&between, {}, enWidgetMessage);
    dialog.resize(100, 100);
    dialog.move(0, 0);
    dialog.show();
    QCOMPARE(dialog.geometry(), QRect(350, 300, 100, 100));
    dialog.resize(200, 100);
    QCOMPARE(dialog.pos(), QPoint(300, 300));
    VERIFY_LOGGED_IN_ORDER("{file}: MoveCentre: Enter", "{file}: MoveCentre: Exit");
    m_mainFrame.usesCustomFrame = false;
    ExtendDialog plain(&between, {}, enWidgetNormal); // stays where it is, and as small as it likes
    plain.setGeometry(10, 20, 190, 90);               // Windows does not let it be much narrower
    plain.show();
    QVERIFY(plain.geometry() == QRect(10, 20, 190, 90) && plain.minimumSize().isNull());

    CommonUtils::MoveCentre(nullptr);
    QDialog alone;
    alone.setGeometry(10, 10, 50, 50);
    CommonUtils::MoveCentre(&alone); // there is no main window
    QCOMPARE(log().count("Arg is NULL: {time}: {file}: MoveCentre {n}"), 2);
    QCOMPARE(alone.pos(), QPoint(10, 10));
    CommonUtils::MoveRelatedCentre(&alone, &main);
    QCOMPARE(alone.pos(), CommonUtils::GetCentrePoint(&main, {50, 50}));
    publish(makeContainer({{PluginIds::MainFrame, "TestMainFrame"}}));
    recorder().setAnswer("TestMainFrame.GetMainWindow", QVariant::fromValue<QObject*>(&plain));
    CommonUtils::MoveCentre(&alone);
    QCOMPARE(alone.pos(), CommonUtils::GetCentrePoint(&plain, {50, 50}));
}

void TestExtendDialog::closing()
{
    ExtendDialog dialog(nullptr, AllButtons, enWidgetNormal);
    QSignalSpy closed(&dialog, &ExtendDialog::dlgCloseEvent);
    dialog.EnableCloseButton(false);
    QVERIFY(!dialog.GetTileBar()->IsCloseButtonEnable());
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(dialog.isVisible());
    QKeyEvent other(QEvent::KeyPress, Qt::Key_F2, Qt::NoModifier);
    QCoreApplication::sendEvent(&dialog, &other);
    QVERIFY(!other.isAccepted());     // left to the base, which has no use for it
    dialog.GetTileBar()->showSmall(); // kept until the dialog may be closed

    QTest::keyPress(&dialog, Qt::Key_F4, Qt::AltModifier); // sets the modifiers that the close event looks at
    QCOMPARE(dialog.close(), false);
    QTest::keyPress(&dialog, Qt::Key_F4, Qt::AltModifier | Qt::ShiftModifier); // not exactly Alt
    QVERIFY(dialog.close());
    QCOMPARE(closed.count(), 1);
    dialog.EnableCloseButton(true);
    VERIFY_LOGGED_IN_ORDER(
        "{file}, EnableCloseButton : grabKeyboard() call", "{file}, showEvent : grabKeyBoard() called",
        "key press 16777216", "{file}, keyPressEvent : Escape key pressed",
        "{file}, closeEvent : close event ignored", "{file}, closeEvent : releaseKeyboard() call",
        "{file}, closeEvent : emit dlgCloseEvent ()", "{file}, hideEvent : entered",
        "{file}, hideEvent : releaseKeyboard() called",
        "{file}, EnableCloseButton : releaseKeyboard() called");
    QVERIFY(dialog.GetTileBar()->IsCloseButtonEnable());
    dialog.show();
    dialog.GetTileBar()->showSmall();
    const QRect tile = dialog.geometry();
    QVERIFY(dialog.close()); // gives its tile back
    ExtendDialog next(nullptr, AllButtons, enWidgetNormal);
    next.show();
    next.GetTileBar()->showSmall();
    QCOMPARE(next.geometry(), tile);
    next.GetTileBar()->SetMinimizeBehavior(true);
    QVERIFY(next.close()); // keeps its tile
    ExtendDialog last(nullptr, AllButtons, enWidgetNormal);
    last.show();
    last.GetTileBar()->showSmall();
    QVERIFY(last.geometry() != tile);
    QTest::keyClick(&last, Qt::Key_Escape);
    QVERIFY(!last.isVisible());
    QCOMPARE(log().count("key press {n}"), 7); // with the modifiers, without the last one
}

void TestExtendDialog::showMessage_data()
{
    const auto row = dataTable<bool, bool, QString, int>("ownFrame", "canClose", "answer", "result");
    row("second", false, true, "No", 1);
    row("third", true, false, "Cancel", 2);
    row("Escape", true, true, "Escape", 2);
    row("closed", true, true, "", -1);
    row("the parent is deleted", true, true, "delete", -1);
    row("the box is deleted", true, true, "delete box", -1);
    row("a single OK", false, true, "OK", 0);
}

void TestExtendDialog::showMessage()
{
    QFETCH(bool, ownFrame);
    QFETCH(bool, canClose);
    QFETCH(QString, answer);
    m_mainFrame.usesCustomFrame = ownFrame;
    const QPointer<QWidget> parent = new QWidget;
    QStringList buttons;
    QTimer::singleShot(0, this, [&] {
        auto* const dialog = qobject_cast<ExtendDialog*>(QApplication::activeModalWidget());
        auto* const box = qobject_cast<DkMessageBox*>(dialog->GetMainWidget());
        QCOMPARE(dialog->windowTitle() + box->text(), "TitleText");
        QTest::keyClick(box, answer == "Escape" || !canClose ? Qt::Key_Escape : Qt::Key_Shift);
        QCOMPARE(box->isHidden(), answer == "Escape");
        QCOMPARE(dialog->size(), box->size() + (ownFrame ? QSize(10, 45) : QSize(0, 0)));
        for (QAbstractButton* button : box->buttons())
            buttons += button->text().remove('&') + ':' + QString::number(box->buttonRole(button));
        for (QAbstractButton* button : box->buttons())
            if (button->text().remove('&') == answer)
                button->click();
        if (answer.startsWith("delete"))
            delete (answer == "delete" ? parent.data() : box);
        if (answer != "delete")
            dialog->close();
    });
    const QStringList texts = answer == "OK" ? QStringList() : QStringList{"Yes", "No", "Cancel", "More"};
    QTEST(CommonUtils::ShowMessage(parent, "Title", "Text", texts, QMessageBox::Question, canClose),
          "result");
    QCOMPARE(CommonUtils::ShowMessageCustomize(nullptr, "Title", nullptr), -1);
    buttons.sort();
    QCOMPARE(buttons.join(' '), answer == "OK" ? "OK:0" : "Cancel:1 No:6 Yes:5");
    delete parent;
}

void TestExtendDialog::fader()
{
    QWidget covered;
    covered.resize(40, 30);
    covered.show();
    FaderWidget fader(&covered);
    QCOMPARE(fader.size(), covered.size());
    auto* const timer = fader.findChild<QTimer*>();
    const auto checkColors = [&](QColor color, int interval) {
        QCOMPARE(timer->interval(), interval);
        for (int alpha = 255; alpha > 0; alpha -= 25) {
            QImage image(1, 1, QImage::Format_ARGB32);
            image.fill(Qt::transparent);
            QVERIFY(!fader.isHidden());
            fader.render(&image, {}, {0, 0, 1, 1}, QWidget::RenderFlags());
            color.setAlpha(alpha);
            QCOMPARE(image.pixelColor(0, 0), color);
        }
        QVERIFY(fader.isHidden() && !timer->isActive());
    };
    fader.start();
    checkColors(Qt::white, 100);
    fader.start(Qt::blue, 200);
    checkColors(Qt::blue, 20);
    fader.start(Qt::black, 0); // as short as possible
    checkColors(Qt::black, 1);
    fader.start(Qt::white, 0);
    QTRY_VERIFY_WITH_TIMEOUT(fader.isHidden(), 30000); // by its own clock
}

void TestExtendDialog::lineEdit()
{
    QApplication::setLayoutDirection(Qt::RightToLeft);
    const ExtendLineEdit mirrored;
    const ExtendLineEdit named("text");
    QApplication::setLayoutDirection(Qt::LeftToRight);
    QVERIFY(mirrored.testAttribute(Qt::WA_SetLayoutDirection) && mirrored.isRightToLeft());
    QVERIFY(named.text() == "text" && !named.testAttribute(Qt::WA_SetLayoutDirection));
    QVERIFY(!ExtendLineEdit().testAttribute(Qt::WA_SetLayoutDirection));
}

QTEST_MAIN(TestExtendDialog)

#include "tst_extenddialog.moc"
