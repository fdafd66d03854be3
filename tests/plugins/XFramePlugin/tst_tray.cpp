// What the icon in the notification area says about simulated modems, and starting with the computer.
#include "Autostart.h"
#include "DataTable.h"
#include "TestHome.h"
#include "TrayState.h"
#include "UnreadCount.h"
#include "support/AccessPoint.h"
#include "support/Look.h"

#include <QApplication>
#include <QSettings>
#include <QWidget>

#include <memory>

class TestTray : public QObject
{
    Q_OBJECT

private slots:
    void states_data();
    void states();
    void pictures();
    void unread();
    void autostart();
};

void TestTray::states_data()
{
    const QByteArray modem = "[modem M]\nmodel=M\nstate=attached\nimsi=262011234567890\n";
    const QByteArray online = modem + "network=26201\nsignal=60\n";
    const auto row =
        dataTable<QByteArray, int, bool, bool, int>("modems", "state", "canConnect", "canDisconnect", "bars");
    row("no modem", {}, int(TrayState::NoModem), false, false, 0);
    row("rejected", "[modem M]\nmodel=M\nstate=rejected\n", int(TrayState::Warning), false, false, 0);
    row("no SIM", "[modem M]\nmodel=M\nstate=attached\n", int(TrayState::Warning), false, false, 0);
    row("locked", online + "sim=pin\n", int(TrayState::Warning), false, false, 0);
    row("searching", modem, int(TrayState::Searching), false, false, 0);
    row("denied", modem + "registration=denied\n", int(TrayState::Warning), false, false, 0);
    row("connected", online, int(TrayState::Connected), false, true, 2);
    row("weak signal", QByteArray(online).replace("60", "1"), int(TrayState::Connected), false, true, 1);
    row("not connected", online + "connection=disconnected\n", int(TrayState::NotConnected), true, false, 2);
    row("roaming excluded",
        QByteArray(online).replace("60", "1") + "connection=disconnected\nregistration=roaming\n",
        int(TrayState::NotConnected), false, false, 1);
    row("connection lost", online + "connection=disconnected\nconnection.error=15\n", int(TrayState::Warning),
        true, false, 2);
}

void TestTray::states()
{
    QFETCH(QByteArray, modems);
    AccessPoint homeOnly;
    homeOnly.isHomeOnly = true;
    homeOnly.save({1, {}, "262011234567890", {}, {}, {}});
    simulate(modems);
    QFETCH(int, state);
    QFETCH(int, bars);
    QTRY_VERIFY(int(readTrayStatus().state) == state && readTrayStatus().bars == bars);
    QTEST(readTrayStatus().canConnect, "canConnect");
    QTEST(readTrayStatus().canDisconnect, "canDisconnect");
}

/// No two states look alike, not even in the smallest size.
void TestTray::pictures()
{
    QVector<QImage> seen;
    for (const TrayState state : {TrayState::NoModem, TrayState::Searching, TrayState::Warning,
                                  TrayState::Connected, TrayState::NotConnected}) {
        const bool hasBars = state == TrayState::Connected || state == TrayState::NotConnected;
        for (int bars = 0; bars <= (hasBars ? Look::SignalBars : 0); ++bars) {
            TrayStatus status;
            status.state = state;
            status.bars = bars;
            const QImage image = trayPicture(status).pixmap(16, 16).toImage();
            QVERIFY(!image.isNull() && !seen.contains(image));
            seen.append(image);
        }
    }
}

/// The badge of the page, as long as there is the page.
void TestTray::unread()
{
    UnreadCount count;
    QVector<int> reported;
    connect(&count, &UnreadCount::changed, this, [&reported](int unread) { reported.append(unread); });
    auto page = std::make_unique<QWidget>();
    for (const int badge : {3, 5}) {
        page->setProperty("badge", badge);
        count.follow(page.get());
    }
    page.reset();
    QCOMPARE(reported, QVector<int>({3, 5, 0}));
}

void TestTray::autostart()
{
    QVERIFY(!Autostart::isOn());
    for (const bool isOn : {true, true, false, false}) {
        QVERIFY(Autostart::setOn(isOn));
        QCOMPARE(Autostart::isOn(), isOn);
    }
#ifdef Q_OS_UNIX
    QFile folder(QString::fromLocal8Bit(qgetenv("XDG_CONFIG_HOME")) + "/autostart");
    QFile entry(folder.fileName() + '/' + QCoreApplication::applicationName() + ".desktop");
    const QByteArray command =
        "\nExec=\"" + QCoreApplication::applicationFilePath().toUtf8() + "\" --background\n";
    // The desktop has switched it off, and another copy of the application is started.
    for (const QByteArray& changed :
         {command + "Hidden=true\n", command + "X-GNOME-Autostart-enabled=false\n",
          QByteArray(command).replace("Exec=\"", "Exec=\"/old")}) {
        QVERIFY(Autostart::setOn(true) && Autostart::isOn() && entry.open(QIODevice::ReadWrite));
        const QByteArray written = entry.readAll();
        QVERIFY(written.contains(command) && entry.seek(0));
        QVERIFY(entry.write(QByteArray(written).replace(command, changed)) > 0);
        entry.close();
        QVERIFY(!Autostart::isOn());
    }
    QVERIFY(entry.remove() && QDir().rmdir(folder.fileName()) && folder.open(QIODevice::WriteOnly));
    QVERIFY(!Autostart::setOn(true) && !Autostart::isOn());
#else
    QSettings approved(
        "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\StartupApproved\\Run",
        QSettings::NativeFormat);
    QVERIFY(Autostart::setOn(true));
    approved.setValue("tst_tray",
                      QString(QChar(3)) + QString(5, QChar(0))); // switched off in the Task Manager
    approved.sync();
    QVERIFY(!Autostart::isOn() && Autostart::setOn(true) && Autostart::isOn() && Autostart::setOn(false));
#endif
}

int main(int argc, char** argv)
{
    const TestHome home;
    qputenv("XDG_CONFIG_HOME", qgetenv("QRVL_USER_DIR"));
    QApplication application(argc, argv);
    QGuiApplication::setApplicationDisplayName("tst_tray");
    TestTray test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_tray.moc"
