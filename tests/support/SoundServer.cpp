#include "SoundServer.h"

#include "TestFiles.h"

#include <QtEndian>
#include <QtTest>

#include <cmath>
#include <complex>

namespace {

constexpr int LongestWait = 20000;  // milliseconds
constexpr int WindowSize = 441;     // samples in which a tone is looked for: 20 ms
constexpr double Quiet = 0.01;      // power of a window that counts as silence, of 1
constexpr double Dominant = 0.5;    // share of a window's power that a tone must have
constexpr double FullScale = 32768; // of a sample

/// Whether a window is not silent, and most of its power is at this frequency.
bool isTone(int frequency, const qint16* samples)
{
    double power = 0;
    std::complex<double> tone;
    for (int at = 0; at < WindowSize; ++at) {
        const double value = samples[at] / FullScale;
        power += value * value / WindowSize;
        tone += value / WindowSize * std::polar(1.0, 2 * M_PI * frequency * at / SoundServer::Rate);
    }
    return power > Quiet && 2 * std::norm(tone) > Dominant * power;
}

} // namespace

SoundServer::SoundServer()
{
    writeFile(m_folder.filePath("client.conf"), "autospawn=no\nenable-shm=no\n");
    writeFile(m_folder.filePath("volumes"), "sink-input-by-media-role:event -200\n");
    const QByteArray folder = QFile::encodeName(m_folder.path());
    for (const char* const variable : {"HOME", "XDG_RUNTIME_DIR", "PULSE_RUNTIME_PATH", "PULSE_STATE_PATH"})
        qputenv(variable, folder);
    qputenv("PULSE_CLIENTCONFIG", folder + "/client.conf");
    qputenv("PULSE_SERVER", "unix:" + folder + "/native");
    qputenv("ALSA_CONFIG_PATH", "/dev/null"); // otherwise it takes over while there is no server
    qunsetenv("CANBERRA_DRIVER");
}

bool SoundServer::start()
{
    const QString socket = m_folder.filePath("native");
    m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_server.run({"pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
                  "--disable-shm=yes", "--log-level=error", "-L", "module-null-sink sink_name=null", "-L",
                  "module-stream-restore restore_device=no fallback_table=" + m_folder.filePath("volumes"),
                  "-L", "module-native-protocol-unix auth-anonymous=1 socket=" + socket});
    if (!m_server.waitForStarted() || !QTest::qWaitFor([&] { return QFile::exists(socket); }, LongestWait)) {
        qWarning("pulseaudio: %s", qUtf8Printable(m_server.errorString()));
        return false;
    }
    m_recorder.run({"parec", "--device=null.monitor", "--raw", "--format=s16le", "--channels=1",
                    "--latency-msec=20", "--rate=" + QString::number(Rate)});
    return QTest::qWaitFor([this] { return m_recorder.bytesAvailable() > 0; }, LongestWait);
}

void SoundServer::signalServer(int signal) const
{
    ::kill(pid_t(m_server.processId()), signal);
}

double SoundServer::heard(int frequency)
{
    m_recorded += m_recorder.readAllStandardOutput();
    const auto* const samples = reinterpret_cast<const qint16*>(m_recorded.constData());
    const int windows = m_recorded.size() / int(sizeof(qint16)) / WindowSize;
    auto& [searched, found] = m_searches[frequency];
    for (; searched < windows; ++searched)
        found += isTone(frequency, samples + searched * WindowSize);
    return double(found) * WindowSize / Rate;
}

void SoundServer::forget()
{
    m_recorder.readAllStandardOutput();
    m_recorded.clear();
    m_searches.clear();
}

QString SoundServer::list(const QString& kind) const
{
    QProcess tool;
    tool.start("pactl", {"list", kind});
    tool.waitForFinished();
    return QString::fromUtf8(tool.readAllStandardOutput());
}

QByteArray waveFile(int frequency, int milliseconds)
{
    const auto bytes = [](auto number) {
        number = qToLittleEndian(number);
        return QByteArray(reinterpret_cast<const char*>(&number), sizeof number);
    };
    constexpr quint16 pcm = 1, oneChannel = 1, sampleSize = 2, bitsOfSample = 16;
    const QByteArray format = bytes(pcm) + bytes(oneChannel) + bytes(SoundServer::Rate) +
                              bytes(SoundServer::Rate * sampleSize) + bytes(sampleSize) + bytes(bitsOfSample);
    QByteArray samples;
    for (int at = 0; at < SoundServer::Rate * milliseconds / 1000; ++at)
        samples += bytes(qint16(FullScale / 2 * std::sin(2 * M_PI * frequency * at / SoundServer::Rate)));
    const QByteArray content =
        "WAVEfmt " + bytes(format.size()) + format + "data" + bytes(samples.size()) + samples;
    return "RIFF" + bytes(content.size()) + content;
}
