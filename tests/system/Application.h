#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// The launcher as a user starts it, with a home of its own: nothing of the user's is read or written.
class Application
{
public:
    /// @param installation folder of the launcher
    explicit Application(const QString& installation = builtInstallation());

    /// Kills the program if it still runs, and shows its latest lines when the test has failed.
    ~Application();

    /// The installation that the build made.
    static QString builtInstallation();

    /// A file of the user's settings and modems.
    QString userFile(const QString& name) const { return m_home.filePath(name); }

    void start(const QStringList& arguments);

    /// Whether a line that contains the text has been written since the last mark; waits for it.
    bool waitFor(const QString& text);
    bool hasWritten(const QString& text) const;

    /// Lines written before now count no more for waitFor() and hasWritten().
    void mark();

    /// Waits until the program has ended.
    /// @return its exit code; -1 when it crashed or had to be killed
    int waitForEnd();

    /// Asks the program to end, as the desktop's session does, and waits for that.
    int close();

    /// What came on either stream; of standard error the lines alone.
    QString output() const { return m_output; }
    QStringList lines() const { return m_log.split(QLatin1Char('\n')); }

    /// Runs the modem tool on this application's modems. False when it reports an error.
    bool modem(const QStringList& arguments);

private:
    QString program(const QString& name) const;
    void readMore(int milliseconds);

    QString m_installation;
    QTemporaryDir m_home;
    QProcess m_process;
    QString m_output;
    QString m_log;
    int m_mark = 0;
};
