#include "common/DkSoundWin.h"

#include "CoreTest.h"
#include "LogOrder.h"

#include <QSignalSpy>

class TestSound : public CoreTest
{
    Q_OBJECT

private slots:
    void cannotBePlayed();
};

void TestSound::cannotBePlayed()
{
    DkSound sound(path("missing.wav"));
    QSignalSpy finished(&sound, &DkSound::finished);
    QVERIFY(!sound.Stop() && !sound.IsPlaying());
    QVERIFY(!sound.Play());
    QVERIFY(!sound.Stop() && !sound.IsPlaying());
    VERIFY_LOGGED_IN_ORDER("{file}: sendString: hwnd = 0x{*}",
                           "{file}: sendString: err({n}) mciSendCommand failed ");
    QCOMPARE(log().count("{file}: sendString: {*}"), 3); // and the error in words; nothing else was sent
    sound.Done();
    QCOMPARE(finished.count(), 1);
    QVERIFY(!sound.isVisible());
}

QTEST_MAIN(TestSound)

#include "tst_sound.moc"
