#pragma once

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

/// The launcher as a user starts it, with a home of its own: nothing of the user's is read or written.
class Application
{
public:
    enum User { NewUser, SameUser };

    /// @param installation folder of the launcher
    /// @param user         whether it has a home of its own, or that of the application before
    explicit Application(const QString& installation = usualInstallation(), User user = NewUser)
        : m_installation(installation)
    {
        if (user == NewUser)
            qputenv("QRVL_USER_DIR", m_home.path().toLocal8Bit());
        qputenv("QT_LOGGING_TO_CONSOLE", "1");
    }

    /// Kills the program if it still runs, and shows its latest lines when the test has failed.
    ~Application()
    {
        m_process.kill();
        waitForEnd();
        if (QTest::currentTestFailed())
            qInfo("%s", qUtf8Printable(m_log.section('\n', -60)));
    }

    /// The installation that the build made, or the installed copy if the environment asks for it.
    static QString usualInstallation()
    {
        const QString folder = qEnvironmentVariableIsSet("INSTALLED_COPY") ? INSTALLED_COPY : "../../app";
        return QDir::cleanPath(QCoreApplication::applicationDirPath() + '/' + folder);
    }

    /// Writes a file of the user's settings and modems.
    bool write(const QString& name, const QByteArray& content) const
    {
        QFile file(m_home.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
    }

    void start(const QStringList& arguments, const QString& name = "skylume")
    {
        m_process.start(program(name), arguments);
    }

    /// Whether a line that contains the text has been written since the last mark; waits for it.
    bool waitFor(const QString& text)
    {
        const auto isOver = [&] {
            readMore();
            return hasWritten(text) || m_process.state() == QProcess::NotRunning;
        };
        return QTest::qWaitFor(isOver, LongestWait) && hasWritten(text);
    }
    bool hasWritten(const QString& text) const { return m_log.indexOf(text, m_mark) >= 0; }

    /// Lines written before now count no more for waitFor() and hasWritten().
    void mark()
    {
        readMore();
        m_mark = m_log.size();
    }

    /// Waits until the program has ended.
    /// @return its exit code; -1 when it crashed or had to be killed
    int waitForEnd()
    {
        m_process.waitForFinished(LongestWait); // at once if it has ended already
        readMore();
        const bool hasEnded =
            m_process.state() == QProcess::NotRunning && m_process.error() != QProcess::FailedToStart;
        return hasEnded && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }

    /// Asks the program to end, as the desktop's session does, and waits for that.
    int close()
    {
        m_process.terminate();
        return waitForEnd();
    }

    void closeInput() { m_process.closeWriteChannel(); }

    /// What came on either stream; of standard error the lines alone.
    QString output() const { return m_output; }
    QString log() const { return m_log; }

    /// Runs the modem tool on this application's modems. False when it reports an error.
    bool modem(const QStringList& arguments) const
    {
        return QProcess::execute(program("skylume-modem"), arguments) == 0;
    }

private:
    static constexpr int LongestWait = 20000; // milliseconds; any step takes much less, on a busy machine too

    QString program(const QString& name) const
    {
        return QStandardPaths::findExecutable(name, {m_installation});
    }

    void readMore()
    {
        m_output += QString::fromUtf8(m_process.readAllStandardOutput()).remove('\r');
        m_log += QString::fromUtf8(m_process.readAllStandardError()).remove('\r');
    }

    QString m_installation;
    QTemporaryDir m_home;
    QProcess m_process;
    QString m_output;
    QString m_log;
    int m_mark = 0;
};
