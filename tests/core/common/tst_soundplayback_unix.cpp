// Sounds that are really played, and heard in a recording of what a sound server puts out.
#include "common/DkSoundWin.h"

#include "CoreTest.h"
#include "SoundServer.h"
#include "platform/MediaControl_p.h"
#include "platform/WindowProcedure_p.h"

#include <QDir>
#include <QSignalSpy>

#include <malloc.h>

class TestSoundPlayback : public CoreTest
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_server.start()); }
    void oneAfterTheOther();
    void notices();
    void fileIsRemoved();
    void interrupted();
    void manyShortSounds();
    void frozenServer();
    void serverEnds();

private:
    /// Writes a sound file.
    QString tone(int frequency, int milliseconds) const
    {
        const QString file = path(QString("%1 Hz.wav").arg(frequency));
        writeFile(file, waveFile(frequency, milliseconds));
        return file;
    }

    SoundServer m_server;
};

namespace {

constexpr int LongestWait = 30000; // milliseconds

const QString Failure = "{file}: takeEnd: {*}: err({n}) {*}";

QVector<quintptr> outcomes; ///< reported to the window of the test

qintptr recordOutcome(WId, quint32 message, quintptr outcome, qintptr)
{
    if (message == Platform::MediaNotification)
        outcomes.append(outcome);
    return 0;
}

void playToEnd(DkSound& sound)
{
    QSignalSpy finished(&sound, &DkSound::finished);
    QVERIFY(sound.Play());
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, LongestWait);
    QVERIFY(!sound.IsPlaying() && !sound.Stop());
}

/// Open files and threads of this process.
int handles()
{
    const auto count = [](const char* folder) {
        return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System).size();
    };
    return count("/proc/self/fd") + count("/proc/self/task");
}

} // namespace

// Tones and their lengths, although event sounds are switched off. The notice comes on the GUI thread, when all has
// been heard.
void TestSoundPlayback::oneAfterTheOther()
{
    QCOMPARE(QProcess::execute("paplay", {"--property=media.role=event", tone(2000, 200)}), 0);
    DkSound sound(tone(440, 400));
    connect(&sound, &DkSound::finished, [] { QCOMPARE(QThread::currentThread(), qApp->thread()); });
    playToEnd(sound);
    QTRY_VERIFY(m_server.heard(440) > 0.3);
    sound.SetSoundFile(tone(700, 600));
    playToEnd(sound);
    QTRY_VERIFY(m_server.heard(700) > 0.5);
    QVERIFY2(m_server.heard(440) < 0.45 && m_server.heard(700) < 0.65,
             qPrintable(QString("%1 %2").arg(m_server.heard(440)).arg(m_server.heard(700))));
    QCOMPARE(m_server.heard(2000), 0.0);
}

// What the window is told: each command that plays is answered once, after it has returned.
void TestSoundPlayback::notices()
{
    using namespace Platform;
    QWidget window;
    QVERIFY(setMessageHandler(window.winId(), &recordOutcome));
    MediaOpenParameters open = {};
    const QString file = tone(450, 100);
    open.elementName = reinterpret_cast<const char16_t*>(file.utf16());
    QCOMPARE(sendMediaCommand(0, MediaOpen, MediaWait | MediaOpenElement, &open), 0u);
    const quint32 device = open.deviceId;
    MediaPlayParameters play = {};
    play.callback = window.winId();
    const auto send = [&](quint32 command, quint32 flags = MediaNotify) {
        return sendMediaCommand(device, command, flags, &play);
    };
    QVERIFY(send(MediaPlay) == 0 && send(MediaPlay) == 0 && outcomes.isEmpty());
    using Outcomes = QVector<quintptr>;
    QTRY_COMPARE_WITH_TIMEOUT(outcomes, Outcomes({MediaSuperseded, MediaSuccessful}), LongestWait);
    QVERIFY(send(MediaPlay) == 0 && send(MediaPlay, 0) == 0); // the second one is not to be answered
    QTRY_COMPARE(outcomes.mid(2), Outcomes({MediaSuperseded}));
    QVERIFY(send(MediaPlay) == 0 && send(0x807) == MediaBadCommand && send(MediaClose) == 0);
    QCOMPARE(send(MediaClose), quint32(MediaInvalidDevice));
    QTRY_COMPARE(outcomes.mid(3), Outcomes({MediaAborted}));
}

// The second Play() lets the sound go on: it is heard once, and its end is reported once.
void TestSoundPlayback::fileIsRemoved()
{
    const QString file = tone(500, 3000);
    DkSound sound(file);
    QSignalSpy finished(&sound, &DkSound::finished);
    QVERIFY(sound.Play());
    QTRY_VERIFY_WITH_TIMEOUT(m_server.heard(500) > 0, LongestWait);
    QVERIFY(QFile::remove(file) && sound.Play());
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, LongestWait);
    QTRY_VERIFY(m_server.heard(500) > 2.9);
    QVERIFY(m_server.heard(500) < 3.1);
    QVERIFY(!sound.Play());
}

// Of half a minute only the beginning is heard, and the end is not reported.
void TestSoundPlayback::interrupted()
{
    for (const auto& [frequency, isDestroyed] : {std::pair(900, false), std::pair(1100, true)}) {
        auto sound = std::make_unique<DkSound>(tone(frequency, 30000));
        QSignalSpy finished(sound.get(), &DkSound::finished);
        QVERIFY(sound->Play());
        QTRY_VERIFY_WITH_TIMEOUT(m_server.heard(frequency) > 0, LongestWait);
        if (isDestroyed)
            sound.reset();
        else
            QVERIFY(sound->Stop());
        DkSound next(tone(frequency + 500, 300));
        playToEnd(next);
        QTRY_VERIFY(m_server.heard(frequency + 500) > 0.2);
        QVERIFY(m_server.heard(frequency) < 20);
        QVERIFY(finished.isEmpty());
        QTRY_VERIFY(!m_server.list("sink-inputs").contains(QString("%1 Hz").arg(frequency)));
    }
}

void TestSoundPlayback::manyShortSounds()
{
    const QString file = tone(600, 5);
    const auto playSeveral = [&](int count) {
        for (int times = 0; times < count; times += 5) {
            DkSound sounds[] = {DkSound(file), DkSound(file), DkSound(file), DkSound(file), DkSound(file)};
            for (DkSound& sound : sounds)
                QVERIFY(sound.Play());
            for (DkSound& sound : sounds)
                QTRY_VERIFY_WITH_TIMEOUT(!sound.IsPlaying(), LongestWait);
        }
        QVERIFY(!log().contains(Failure));
        log().clear();
        m_server.forget();
    };
    playSeveral(100);
    const int handlesBefore = handles();
    const std::size_t bytesBefore = mallinfo2().uordblks;
    playSeveral(1000);
    QTRY_VERIFY2(handles() <= handlesBefore + 5, qPrintable(QString::number(handles())));
    const qint64 growth = qint64(mallinfo2().uordblks) - qint64(bytesBefore);
    QVERIFY2(growth < 100000, qPrintable(QString::number(growth))); // less than any object for each sound
}

// A server that does not answer does not block the caller.
void TestSoundPlayback::frozenServer()
{
    DkSound sound(tone(800, 300)), stopped(tone(1000, 300));
    QSignalSpy finished(&sound, &DkSound::finished);
    m_server.freeze();
    QVERIFY(sound.Play() && stopped.Play() && sound.IsPlaying());
    QVERIFY(stopped.Stop());
    m_server.thaw();
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, LongestWait);
    QTRY_VERIFY(m_server.heard(800) > 0.2);
    QCOMPARE(m_server.heard(1000), 0.0);
}

// Without a success there is no finished(); the sound stays open until it is stopped.
void TestSoundPlayback::serverEnds()
{
    DkSound sound(tone(1200, 30000));
    QSignalSpy finished(&sound, &DkSound::finished);
    QVERIFY(sound.Play());
    QTRY_VERIFY_WITH_TIMEOUT(m_server.heard(1200) > 0, LongestWait);
    m_server.kill();
    QTRY_COMPARE_WITH_TIMEOUT(log().count(Failure), 1, LongestWait);
    QVERIFY(sound.IsPlaying() && sound.Stop());
    for (int times = 2; times <= 3; ++times) {
        QVERIFY(sound.Play()); // tries again
        QTRY_COMPARE_WITH_TIMEOUT(log().count(Failure), times, LongestWait);
    }
    QVERIFY(sound.Stop() && finished.isEmpty());
}

QTEST_MAIN(TestSoundPlayback)

#include "tst_soundplayback_unix.moc"
