// Opening and closing of sounds, and the notices that end them; nothing of this needs a sound system.
#include "common/DkSoundWin.h"

#include "CoreTest.h"
#include "Silence.h"
#include "platform/MediaControl_p.h"
#include "platform/WindowProcedure_p.h"

#include <QSignalSpy>

class TestSound : public CoreTest
{
    Q_OBJECT

private slots:
    void cannotBePlayed();
    void notices();
    void closing();

private:
    /// @return the file's path
    QString write(const QString& name, const QByteArray& content)
    {
        writeFile(path(name), content);
        return QDir::toNativeSeparators(path(name));
    }
    QString writeSilence() { return write("Süd west.wav", silence()); }
};

void TestSound::cannotBePlayed()
{
    const QString files[] = {path("missing.wav"), path("."), QString(), write("empty.wav", {}),
                             write("text.wav", QByteArray("RIFF no sound ").repeated(500))};
    for (const QString& file : files) {
        log().clear();
        DkSound sound(file);
        QSignalSpy finished(&sound, &DkSound::finished);
        QVERIFY(!sound.Stop() && !sound.IsPlaying());
        QVERIFY2(!sound.Play(), qUtf8Printable(file));
        QVERIFY(!sound.Stop() && !sound.IsPlaying());
        VERIFY_LOGGED_IN_ORDER("{file}: sendString: hwnd = 0x{*}",
                               "{file}: sendString: err({n}) mciSendCommand failed ");
        sound.Done();
        QCOMPARE(finished.count(), 1);
        QCOMPARE(log().count("{file}: sendString: {*}"), 3); // and the error in words; nothing else was sent
        QVERIFY(!sound.isVisible());
        sound.SetSoundFile(writeSilence()); // it stays usable
        QVERIFY(sound.Play() && sound.IsPlaying() && sound.Stop());
        QVERIFY(QFile::remove(path("Süd west.wav"))); // it is closed
    }
}

// Only the notice that the sound was played to its end closes the sound.
void TestSound::notices()
{
    DkSound sound(writeSilence()), silent({});
    QSignalSpy finished(&sound, &DkSound::finished);
    const auto notify = [](const QWidget& window, quint32 message, quintptr outcome) {
        Platform::sendMessage(window.winId(), message, outcome, 0);
    };
    for (int times = 1; times <= 2; ++times) {
        QVERIFY(sound.Play());
        for (const auto outcome : {Platform::MediaSuperseded, Platform::MediaAborted, Platform::MediaFailure})
            notify(sound, Platform::MediaNotification, outcome);
        notify(sound, Platform::MediaNotification + 1, Platform::MediaSuccessful);
        notify(silent, Platform::MediaNotification, Platform::MediaSuccessful);
        QVERIFY(sound.IsPlaying() && finished.count() == times - 1);
        notify(sound, Platform::MediaNotification, Platform::MediaSuccessful);
        QVERIFY(!sound.IsPlaying() && !sound.Stop());
        QCOMPARE(finished.count(), times);
    }
    notify(sound, Platform::MediaNotification, Platform::MediaSuccessful); // it is closed already
    QCOMPARE(finished.count(), 3);
    connect(&sound, &DkSound::finished, &sound, &DkSound::Play); // repeats the sound
    QVERIFY(sound.Play());
    notify(sound, Platform::MediaNotification, Platform::MediaSuccessful);
    QVERIFY(sound.IsPlaying());
}

// What is sent to the media control, as far as the log tells it: opening and playing, only playing, closing.
void TestSound::closing()
{
    const QString sent = "{file}: sendString: Play Return = 0 ";
    DkSound sound(writeSilence());
    QVERIFY(sound.Play());
    VERIFY_LOGGED_IN_ORDER("{file}: sendString: hwnd = 0x{*}", sent, sent);
    QVERIFY(sound.Play());
    QCOMPARE(log().count("{file}: sendString: hwnd = 0x{*}"), 1);
    QCOMPARE(log().count(sent), 3);
    sound.SetSoundFile(path("missing.wav"));
    QVERIFY(sound.Play() && sound.IsPlaying()); // the file is still open
    QSignalSpy finished(&sound, &DkSound::finished);
    QVERIFY(sound.Stop());
    QVERIFY(!sound.IsPlaying() && !sound.Play() && finished.isEmpty());
    QCOMPARE(log().count(sent), 4 + 2); // stopping is logged, too
}

QTEST_MAIN(TestSound)

#include "tst_sound.moc"
