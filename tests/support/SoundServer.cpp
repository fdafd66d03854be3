#include "SoundServer.h"

#include "TestFiles.h"

#include <QDataStream>
#include <QtTest>

#include <cmath>
#include <csignal>

namespace {

constexpr int LongestWait = 20000;  // milliseconds
constexpr int WindowSize = 441;     // samples in which a tone is looked for: 20 ms
constexpr double Quiet = 0.01;      // power of a window that counts as silence, of 1
constexpr double Dominant = 0.5;    // share of a window's power that a tone must have
constexpr double FullScale = 32768; // of a sample

/// Power of one frequency in a window, by Goertzel's algorithm; 0.5 for a full tone.
double powerAt(double frequency, const qint16* samples)
{
    const double factor = 2 * std::cos(2 * M_PI * frequency / SoundServer::Rate);
    double last = 0, secondLast = 0;
    for (int at = 0; at < WindowSize; ++at) {
        const double next = samples[at] / FullScale + factor * last - secondLast;
        secondLast = last;
        last = next;
    }
    const double power = last * last + secondLast * secondLast - factor * last * secondLast;
    return 2 * power / (double(WindowSize) * WindowSize);
}

double powerOf(const qint16* samples)
{
    double sum = 0;
    for (int at = 0; at < WindowSize; ++at)
        sum += (samples[at] / FullScale) * (samples[at] / FullScale);
    return sum / WindowSize;
}

} // namespace

SoundServer::SoundServer()
{
    const auto inFolder = [this](const char* name) {
        return QFile::encodeName(m_folder.filePath(name));
    };
    writeFile(m_folder.filePath("client.conf"), "autospawn=no\nenable-shm=no\n");
    writeFile(m_folder.filePath("volumes"), "sink-input-by-media-role:event -200\n");
    qputenv("HOME", QFile::encodeName(m_folder.path()));
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder.path()));
    qputenv("PULSE_CLIENTCONFIG", inFolder("client.conf"));
    qputenv("PULSE_RUNTIME_PATH", inFolder("run"));
    qputenv("PULSE_STATE_PATH", inFolder("state"));
    qputenv("PULSE_SERVER", "unix:" + inFolder("native"));
    qputenv("ALSA_CONFIG_PATH", "/dev/null"); // otherwise it takes over while there is no server
    qunsetenv("CANBERRA_DRIVER");
}

SoundServer::~SoundServer()
{
    m_recorder.kill();
    m_recorder.waitForFinished();
    kill();
}

bool SoundServer::start()
{
    // It must not outlive a test that crashes.
    m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_server.start(
        "setpriv",
        {"--pdeathsig=KILL", "pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
         "--disable-shm=yes", "--log-level=error", "-L", "module-null-sink sink_name=null", "-L",
         "module-stream-restore restore_device=no fallback_table=" + m_folder.filePath("volumes"), "-L",
         "module-native-protocol-unix auth-anonymous=1 socket=" + m_folder.filePath("native")});
    const QString socket = m_folder.filePath("native");
    const auto isSettled = [&] {
        return QFile::exists(socket) || m_server.state() == QProcess::NotRunning;
    };
    if (!m_server.waitForStarted() || !QTest::qWaitFor(isSettled, LongestWait) || !QFile::exists(socket)) {
        qWarning("pulseaudio: %s", qUtf8Printable(m_server.errorString()));
        return false;
    }
    m_recorder.start("parec", {"--device=null.monitor", "--raw", "--format=s16le", "--channels=1",
                               "--latency-msec=20", "--rate=" + QString::number(Rate)});
    return QTest::qWaitFor([this] { return m_recorder.bytesAvailable() > 0; }, LongestWait);
}

void SoundServer::kill()
{
    m_server.kill();
    m_server.waitForFinished();
}

void SoundServer::freeze()
{
    signalServer(SIGSTOP);
}

void SoundServer::thaw()
{
    signalServer(SIGCONT);
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
    Search& search = m_searches[frequency];
    for (; search.windows < windows; ++search.windows) {
        const qint16* const start = samples + search.windows * WindowSize;
        const double power = powerOf(start);
        search.found += power > Quiet && powerAt(frequency, start) > Dominant * power;
    }
    return double(search.found) * WindowSize / Rate;
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
    constexpr quint32 headerSize = 36;
    constexpr quint16 pcm = 1, oneChannel = 1, sampleSize = 2, bitsOfSample = 16;
    const int count = SoundServer::Rate * milliseconds / 1000;
    QByteArray content;
    QDataStream out(&content, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    const auto tag = [&out](const char* name) {
        out.writeRawData(name, 4);
    };
    tag("RIFF");
    out << quint32(headerSize + sampleSize * count);
    tag("WAVE");
    tag("fmt ");
    out << quint32(16) << pcm << oneChannel << quint32(SoundServer::Rate)
        << quint32(SoundServer::Rate * sampleSize) << sampleSize << bitsOfSample;
    tag("data");
    out << quint32(sampleSize * count);
    for (int at = 0; at < count; ++at)
        out << qint16(FullScale / 2 * std::sin(2 * M_PI * frequency * at / SoundServer::Rate));
    return content;
}
