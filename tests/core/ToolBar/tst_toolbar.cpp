#include "ToolBar/ToolBarLogic.h"

#include "CoreTest.h"
#include "Samples.h"
#include "ToolBar/SearchLineEdit.h"

#include <QApplication>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QToolButton>

namespace {

/// A picture with a red left and a blue right half.
void savePicture(const QString& path, Qt::GlobalColor left)
{
    QImage picture(20, 16, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QPainter(&picture).fillRect(0, 0, 10, 16, left);
    QVERIFY(QDir().mkpath(QFileInfo(path).path()) && picture.save(path));
}

QColor leftColour(const QToolButton& button, QIcon::Mode mode = QIcon::Active)
{
    return button.icon().pixmap(button.iconSize(), mode).toImage().pixelColor(1, 1);
}

} // namespace

class TestToolBar : public CoreTest
{
    Q_OBJECT

private slots:
    void reading();
    void plugins();
    void creating();
    void icons();
    void searchBox();
    void searchKeys();

private:
    /// The identifiers of the buttons in a file, with a mark at that of the search box.
    QString read(const QByteArray& content)
    {
        writeFile(path("toolbar.xml"), content);
        m_items = {ToolItem()};
        ToolBarLogic::GetXmlData(path("toolbar.xml"), m_items, m_groupInGroup, QString());
        QStringList ids;
        for (const ToolItem& item : qAsConst(m_items))
            ids += QString::number(item.id) + (item.isSearch ? "*" : "");
        return ids.join(' ');
    }

    QList<ToolItem> m_items;
    bool m_groupInGroup = false;
};

/// Samples give the buttons of a file, whether they are in a group, and the last line of the log.
void TestToolBar::reading()
{
    for (const Sample& sample : samplesIn(SAMPLES)) {
        log().clear();
        m_groupInGroup = !sample.body().contains("enable=\"2\""); // what the file says replaces it
        const QByteArray ids = read(sample.body()).toLatin1();
        const QByteArray result = "= " + ids + (m_groupInGroup ? " in a group: " : ": ");
        QVERIFY2(sample.firstLine().startsWith(result), sample.name + ": " + result);
        QVERIFY2(log().contains("{file}: {func}: " + sample.firstLine().mid(result.size())), sample.name);
    }
    QVERIFY(log().contains("Error: {*}"));
    QCOMPARE(m_items[0].resource + ' ' + m_items[0].enabled + ' ' + m_items[0].disabled,
             "RES on.png off.png");
    ToolBarLogic::GetXmlData(path("missing.xml"), m_items, m_groupInGroup, QString());
    QVERIFY(m_items.isEmpty() && log().contains("{file}: GetXmlData: Exit: XML File is not opened"));
}

void TestToolBar::plugins()
{
    QByteArray content = "<doc><ToolBar count='5'/>";
    int id = 0;
    for (const QByteArray name : {"CallUIPlugin", "VideoCallUIPlugin", "GammaPlugin", "", "DeltaPlugin"})
        content += "<item pluginname='" + name + "' id='" + QByteArray::number(++id) + "'/>";
    QCOMPARE(read(content), "4"); // there is no container
    QCOMPARE(log().count("{file}: getPlugin: Plugin container is null "), 4);
    publish(makeContainer(pluginLibraryXml({{"A", "TestAlpha"}, {"B", "TestBeta"}, {"C", "TestGamma"}})
                              .replace("AlphaPlugin", "CallUIPlugin")
                              .replace("BetaPlugin", "VideoCallUIPlugin"),
                          commonXml({"A", "B", "C"})));
    QCOMPARE(read(content), "3 4");
    QCOMPARE(log().count("{file}: getPlugin: plugin is not loaded "), 1);
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"0", "no1", "3 4"}, {"10", "0", "1 3 4"}, {"", "1 ", "2 3 4"}, {"1", "1", "1 2 3 4"}};
    for (const auto& [voice, video, ids] : rows) {
        service().setSetting("callui", "callvoice", voice);
        service().setSetting("callui", "callvideo", video);
        QCOMPARE(read(content), ids);
    }
    const auto host = std::move(m_host); // the one that was taken first is kept
    publish(nullptr);
    QCOMPARE(read(content), "1 2 3 4");
    QCOMPARE(ToolBarLogic::GetObjectName("X"), "ToolBar_X");
    VERIFY_LOGGED_IN_ORDER("{time}: {file}: GetObjectName Enter: plugin name:X",
                           "{time}: {file}: GetObjectName Exit: objectname:ToolBar_X");
}

void TestToolBar::creating()
{
    savePicture(installed("plugins/P/on.png"), Qt::red);
    m_items = {{7, "", "on.png", "", true}, {3, "", "missing.png", "", false}};
    QWidget parent;
    QButtonGroup* group = nullptr;
    QVERIFY(!ToolBarLogic::CreateToolBar("P", nullptr, m_items, &group, nullptr, nullptr, nullptr));
    QHBoxLayout* searchLayout = nullptr;
    SearchLineEdit* edit = nullptr;
    QLabel* icon = nullptr;
    QVERIFY(ToolBarLogic::CreateToolBar("P", &parent, m_items, &group, &searchLayout, &edit, &icon));
    QWidget searchBox;
    searchBox.setLayout(searchLayout);
    const QToolButton& button = *m_items[0].button;
    QVERIFY(group->button(7) == &button && group->button(3) == m_items[1].button &&
            group->parent() == &parent);
    QVERIFY(button.size() == QSize(30, 30) && button.iconSize() == QSize(20, 16));
    QVERIFY(button.autoRaise() && button.objectName() == "ToolBar" && button.parentWidget() == &parent);
    const QLayout& column = *parent.layout();
    const QLayout& row = *column.itemAt(0)->layout();
    QCOMPARE(column.alignment(), Qt::AlignLeft | Qt::AlignTop);
    QVERIFY(column.sizeConstraint() == QLayout::SetFixedSize && column.contentsMargins().isNull());
    QVERIFY(column.spacing() == 0 && row.spacing() == 0);
    QCOMPARE(row.count(), 3); // two buttons and a spacer
    QVERIFY(row.contentsMargins().isNull() && row.itemAt(2)->sizeHint() == QSize(40, 20));
    QCOMPARE(row.itemAt(2)->expandingDirections(), Qt::Horizontal);
    QCOMPARE(icon->pixmap(Qt::ReturnByValue).size(), QSize(20, 16));

    ToolBarLogic::DestroyToolButtonGroup(m_items, &group);
    QVERIFY(!group && !m_items[0].button && !m_items[1].button);
    QVERIFY(!parent.findChild<QToolButton*>() && !parent.findChild<QButtonGroup*>());
    ToolBarLogic::DestroyToolButtonGroup(m_items, nullptr);
}

void TestToolBar::icons()
{
    savePicture(installed("plugins/P/on.png"), Qt::red);
    savePicture(installed("plugins/P/off.png"), Qt::green);
    m_items = {{3, "", "on.png", "off.png", true}, {7, "", "on.png", "off.png", false}};
    QWidget parent;
    QVERIFY(ToolBarLogic::CreateToolBar("P", &parent, m_items, nullptr, nullptr, nullptr, nullptr));
    const QToolButton& button = *m_items[1].button;
    QCOMPARE(leftColour(button), QColor(Qt::red));
    ToolBarLogic::EnableDisableItem("P", m_items, 7, false);
    QVERIFY(!button.isEnabled() && m_items[0].button->isEnabled());
    QCOMPARE(leftColour(button, QIcon::Disabled), QColor(Qt::green));
    ToolBarLogic::EnableDisableItem("P", m_items, 99, false);
    QLabel icon;
    QLabel* searchIcon = &icon;
    ToolBarLogic::ChangeToolBarIconDirection("P", m_items, true, &searchIcon);
    QCOMPARE(leftColour(button), QColor(Qt::blue));
    QCOMPARE(button.icon().availableSizes(QIcon::Active).size(), 1);
    QCOMPARE(button.icon().pixmap({20, 16}, QIcon::Active).toImage().pixelColor(19, 1), QColor(Qt::green));
    QCOMPARE(icon.pixmap(Qt::ReturnByValue).toImage().pixelColor(19, 1), QColor(Qt::red));
    QApplication::setLayoutDirection(Qt::RightToLeft);
    ToolBarLogic::EnableDisableItem("P", m_items, 7, true);
    QVERIFY(button.isEnabled());
    QCOMPARE(leftColour(button), QColor(Qt::blue));
    QApplication::setLayoutDirection(Qt::LeftToRight);
    ToolBarLogic::ChangeToolBarIconDirection("P", m_items, false, nullptr);
    QCOMPARE(leftColour(button), QColor(Qt::red));
    ToolBarLogic::setIcon(nullptr, true, "missing.png");
    ToolBarLogic::setMirrorIcon(m_items[1].button, true, "missing.png", true);
    QVERIFY(button.icon().isNull());
}

void TestToolBar::searchBox()
{
    QWidget window;
    auto* const place = new QGridLayout(&window);
    window.show();
    QHBoxLayout* layout = nullptr;
    SearchLineEdit* edit = nullptr;
    QLabel* icon = nullptr;
    QVERIFY(!ToolBarLogic::createSearchBox(nullptr, &edit, {}, &icon));
    QVERIFY(!ToolBarLogic::createSearchBox(&layout, nullptr, {}, &icon));
    QVERIFY(ToolBarLogic::createSearchBox(&layout, &edit, {}, &icon));
    QCOMPARE(edit->size(), QSize(300, 19));
    QVERIFY(edit->maxLength() == 48 && !edit->acceptDrops() && edit->focusWidget() == edit);
    QVERIFY(layout->contentsMargins() == QMargins(0, 0, 0, 3) && layout->spacing() == 1);
    QVERIFY(layout->itemAt(0)->widget() == icon && layout->itemAt(1)->widget() == edit);
    QVERIFY(layout->count() == 3 && layout->itemAt(2)->spacerItem());

    edit->setText("old");
    for (int i = 0; i < 2; ++i)
        ToolBarLogic::ShowHideSearchBox(&window, layout, edit, true);
    QCOMPARE(place->count(), 1);
    QVERIFY(edit->isVisible() && edit->isEnabled() && edit->text().isEmpty());
    QCOMPARE(window.focusWidget(), edit);
    ToolBarLogic::ShowHideSearchBox(&window, layout, edit, false);
    QCOMPARE(place->count(), 0);
    QVERIFY(!edit->isVisible() && !edit->isEnabled());
    const std::unique_ptr<QHBoxLayout> owned(layout); // back with its owner
    QWidget bare;
    ToolBarLogic::ShowHideSearchBox(&bare, layout, edit, true);
    ToolBarLogic::ShowHideSearchBox(&window, nullptr, edit, true);
    ToolBarLogic::ShowHideSearchBox(&window, layout, nullptr, true);
    ToolBarLogic::ShowHideSearchBox(nullptr, layout, edit, true);
    QVERIFY(!edit->isEnabled());
}

void TestToolBar::searchKeys()
{
    SearchLineEdit edit;
    QString emitted;
    connect(&edit, &SearchLineEdit::controlN, this, [&] { emitted += 'N'; });
    connect(&edit, &SearchLineEdit::controlF, this, [&] { emitted += 'F'; });
    const std::tuple<Qt::Key, Qt::KeyboardModifier, int, QString> rows[] = {
        {Qt::Key_Up, Qt::NoModifier, 1, ""},        {Qt::Key_Down, Qt::NoModifier, 3, ""},
        {Qt::Key_Left, Qt::ControlModifier, 0, ""}, {Qt::Key_Up, Qt::ControlModifier, 0, ""},
        {Qt::Key_N, Qt::ControlModifier, 2, "N"},   {Qt::Key_F, Qt::ControlModifier, 2, "F"},
        {Qt::Key_N, Qt::NoModifier, 3, ""},         {Qt::Key_F, Qt::NoModifier, 3, ""}};
    for (const auto& [key, modifier, position, signal] : rows) {
        edit.setText("abcd");
        edit.setCursorPosition(2);
        emitted.clear();
        QTest::keyClick(&edit, key, modifier);
        QCOMPARE(edit.cursorPosition(), position);
        QCOMPARE(emitted, signal);
        QKeyEvent event(QEvent::KeyPress, key, modifier);
        edit.event(&event);
        QVERIFY(signal.isEmpty() || !event.isAccepted()); // the line edit had no use for it
    }
    const QString line = "{time}: {file}: keyPressEvent Cntrl %1 pressed in the Search Edit Box";
    VERIFY_LOGGED_IN_ORDER(line.arg('N'), line.arg('F'));
}

QTEST_MAIN(TestToolBar)

#include "tst_toolbar.moc"
