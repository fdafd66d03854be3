// What plugins share, without a plugin.
#include "support/DeviceEvents.h"
#include "support/Dialog.h"
#include "support/ModemInUse.h"
#include "support/Requests.h"
#include "support/Secret.h"

#include <qrvl.h>

#include <QLineEdit>
#include <QScreen>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

class TestPluginSupport : public QObject
{
    Q_OBJECT

private slots:
    void requestEnds();
    void refusedRequest();
    void requestWithoutReceiver();
    void modemsInUse();
    void secrets();
    void largeDialog();
};

namespace {

/// Starts a request that ends before its operation returns, as can happen with another thread.
Requests::Start endingAtOnce(DeviceEvents& events, quint32 number, int result)
{
    return [&events, number, result](quint32* request) {
        *request = number;
        QMetaObject::invokeMethod(
            &events, [&events, number, result] { emit events.requestEnded(number, result, "text"); },
            Qt::QueuedConnection);
        return long(QRVL_OK);
    };
}

} // namespace

void TestPluginSupport::requestEnds()
{
    DeviceEvents events;
    Requests requests(&events);
    QStringList ends;
    for (const quint32 number : {7U, 8U}) {
        requests.start(endingAtOnce(events, number, int(number)), this,
                       [&ends](const RequestEnd& end) { ends << QString::number(end.result) + end.text; });
    }
    QVERIFY(ends.isEmpty());
    QTRY_COMPARE(ends, QStringList({"7text", "8text"}));
    emit events.requestEnded(7, 0, {}); // of somebody else
    QCOMPARE(ends.size(), 2);
}

void TestPluginSupport::refusedRequest()
{
    DeviceEvents events;
    Requests requests(&events);
    int result = -1;
    requests.start([](quint32*) { return long(QRVL_ERROR_BUSY); }, this,
                   [&result](const RequestEnd& end) { result = end.result; });
    QCOMPARE(result, -1); // the caller is not called while it is still asking
    QTRY_COMPARE(result, int(QRVL_ERROR_BUSY));
}

void TestPluginSupport::requestWithoutReceiver()
{
    DeviceEvents events;
    Requests requests(&events);
    int calls = 0;
    const auto count = [&calls](const RequestEnd&) {
        ++calls;
    };
    auto receiver = std::make_unique<QObject>();
    requests.start(endingAtOnce(events, 1, QRVL_OK), receiver.get(), count);
    requests.start([](quint32*) { return long(QRVL_ERROR_BUSY); }, receiver.get(), count);
    receiver.reset();
    requests.start(endingAtOnce(events, 2, QRVL_OK), this, count);
    QTRY_COMPARE(calls, 1);
}

void TestPluginSupport::modemsInUse()
{
    const auto modem = [](quint32 id, const char* name, const char* port) {
        Modem made;
        made.id = id;
        made.name = name;
        made.port = port;
        return made;
    };
    const Modems modems = {modem(1, "A", "p1"), modem(2, "B", "p2"), modem(3, "B", "p3"), modem(4, "C", "")};
    QCOMPARE(modemInUse(modems).id, 1U);
    for (const Modem& chosen : modems) {
        rememberModem(chosen);
        QCOMPARE(modemInUse(modems).id, chosen.id);
        QCOMPARE(lastUsedModem(), chosen.name);
    }
    rememberModem(modem(9, "B", "p9")); // has been plugged in elsewhere since
    QCOMPARE(modemInUse(modems).id, 2U);
    QCOMPARE(modemInUse({modems.last()}).id, 4U);
}

void TestPluginSupport::secrets()
{
    const QString none(4, QChar(0));
    QString secret = QString::number(1234);
    const QString copy = secret;
    wipe(secret);
    QVERIFY(secret.isEmpty());
    QCOMPARE(copy, none);
    wipe(secret); // nothing to do
    QLineEdit field;
    QTest::keyClicks(&field, "5678");
    const QString typed = field.text();
    wipe(&field);
    QVERIFY(field.text().isEmpty());
    QCOMPARE(typed, none);
}

void TestPluginSupport::largeDialog()
{
    ExtendDialog dialog(nullptr, {}, enWidgetNormal);
    fillDialog(&dialog, new QWidget, {9000, 9000});
    QCOMPARE(dialog.size(), dialog.screen()->availableGeometry().size());
}

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    qputenv("QRVL_USER_DIR", home.path().toLocal8Bit());
    QApplication application(argc, argv);
    TestPluginSupport test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_pluginsupport.moc"
