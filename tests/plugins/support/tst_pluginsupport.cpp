// What plugins share, without a plugin.
#include "TestHome.h"
#include "support/BackgroundWork.h"
#include "support/DeviceEvents.h"
#include "support/Dialog.h"
#include "support/ModemInUse.h"
#include "support/Requests.h"
#include "support/Secret.h"

#include <qrvl.h>

#include <QLineEdit>
#include <QScreen>

#include <memory>
#include <stdexcept>

namespace {

const TestHome Home;

} // namespace

class TestPluginSupport : public QObject
{
    Q_OBJECT

private slots:
    void requestEnds();
    void requestWithoutReceiver();
    void modemsInUse();
    void secrets();
    void largeDialog();
    void throwingWork();

private:
    /// Starts a request that ends before its operation returns, as can happen with another thread.
    Requests::Start endingAtOnce(quint32 number)
    {
        return [this, number](quint32* request) {
            *request = number;
            const auto end = [this, number] {
                emit m_events.requestEnded(number, int(number), "text");
            };
            QMetaObject::invokeMethod(&m_events, end, Qt::QueuedConnection);
            return long(QRVL_OK);
        };
    }

    static long refuse(quint32*) { return QRVL_ERROR_BUSY; }

    DeviceEvents m_events;
    Requests m_requests{&m_events};
};

void TestPluginSupport::requestEnds()
{
    QStringList ends;
    for (const Requests::Start& start : {endingAtOnce(7), endingAtOnce(8), Requests::Start(&refuse)}) {
        m_requests.start(start, this,
                         [&ends](const RequestEnd& end) { ends << QString::number(end.result) + end.text; });
    }
    QVERIFY(ends.isEmpty()); // the caller is not called while it is still asking
    QTRY_COMPARE(ends, QStringList({"7text", "8text", QString::number(QRVL_ERROR_BUSY)}));
    emit m_events.requestEnded(7, 0, {}); // of somebody else
    QCOMPARE(ends.size(), 3);
}

void TestPluginSupport::requestWithoutReceiver()
{
    int calls = 0;
    const auto count = [&calls](const RequestEnd&) {
        ++calls;
    };
    auto receiver = std::make_unique<QObject>();
    m_requests.start(endingAtOnce(1), receiver.get(), count);
    m_requests.start(&refuse, receiver.get(), count);
    receiver.reset();
    m_requests.start(endingAtOnce(2), this, count);
    QTRY_COMPARE(calls, 1);
}

void TestPluginSupport::modemsInUse()
{
    const auto modem = [](quint32 id, const char* name, const char* port) {
        return Modem{id, name, {}, {}, {}, port};
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
    QByteArray bytes(4, '1');
    const QByteArray sharing = bytes;
    wipe(bytes);
    QVERIFY(bytes.isEmpty() && sharing == QByteArray(4, '\0'));
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

void TestPluginSupport::throwingWork()
{
    struct Throwing : BackgroundWork
    {
        using BackgroundWork::BackgroundWork;
        ~Throwing() override { stop(); }
        void work() override { throw std::runtime_error("no memory"); }
    };
    QTest::ignoreMessage(QtWarningMsg, "work: plugin tst_pluginsupport threw: no memory");
    Throwing worker("throws");
    worker.begin();
    QVERIFY(worker.wait(60000));
}

QTEST_MAIN(TestPluginSupport)
#include "tst_pluginsupport.moc"
