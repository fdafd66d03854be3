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
    /// @param installation folder of the launcher
    explicit Application(const QString& installation = usualInstallation())
        : m_installation(installation)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QRVL_USER_DIR", m_home.path());
        environment.insert("QT_LOGGING_TO_CONSOLE", "1");
        m_process.setProcessEnvironment(environment);
    }

    /// Kills the program if it still runs, and shows its latest lines when the test has failed.
    ~Application()
    {
        m_process.kill();
        waitForEnd();
        if (QTest::currentTestFailed())
            qInfo("%s", qUtf8Printable(lines().mid(qMax(0, lines().size() - 60)).join('\n')));
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

    void start(const QStringList& arguments) { m_process.start(program("skylume"), arguments); }

    /// Starts the program once more, for the same user, and ends it when it has written the text.
    /// @return whether it has
    bool startAgain(const QStringList& arguments, const QString& text) const
    {
        QProcess again;
        again.setProcessEnvironment(m_process.processEnvironment());
        again.setProcessChannelMode(QProcess::MergedChannels);
        again.start(program("skylume"), arguments);
        QString output;
        while (!output.contains(text) && again.waitForReadyRead(LongestWait))
            output += QString::fromUtf8(again.readAll());
        again.terminate();
        again.waitForFinished(LongestWait);
        return output.contains(text);
    }

    /// Whether a line that contains the text has been written since the last mark; waits for it.
    bool waitFor(const QString& text)
    {
        QElapsedTimer timer;
        timer.start();
        while (!hasWritten(text)) {
            if (timer.hasExpired(LongestWait) || m_process.state() == QProcess::NotRunning)
                return false;
            m_process.waitForReadyRead(100);
            readMore();
        }
        return true;
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
        const bool hasEnded = m_process.waitForFinished(LongestWait);
        readMore();
        return hasEnded && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }

    /// Asks the program to end, as the desktop's session does, and waits for that.
    int close()
    {
        m_process.terminate();
        return waitForEnd();
    }

    /// What came on either stream; of standard error the lines alone.
    QString output() const { return m_output; }
    QStringList lines() const { return m_log.split('\n'); }

    /// Runs the modem tool on this application's modems. False when it reports an error.
    bool modem(const QStringList& arguments) const
    {
        QProcess tool;
        tool.setProcessEnvironment(m_process.processEnvironment());
        tool.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        tool.start(program("skylume-modem"), arguments);
        return tool.waitForFinished(LongestWait) && tool.exitStatus() == QProcess::NormalExit &&
               tool.exitCode() == 0;
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
