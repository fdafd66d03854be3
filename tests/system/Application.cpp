#include "Application.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QStandardPaths>
#include <QtTest>

constexpr int longestWait = 20000; // milliseconds; much more than any step takes, on a busy machine too

Application::Application(const QString& installation)
    : m_installation(installation)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QRVL_USER_DIR", m_home.path());
    environment.insert("QT_LOGGING_TO_CONSOLE", "1");
    m_process.setProcessEnvironment(environment);
}

Application::~Application()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished();
    }
    readMore(0);
    if (QTest::currentTestFailed())
        qInfo("%s", qUtf8Printable(lines().mid(qMax(0, lines().size() - 60)).join('\n')));
}

QString Application::builtInstallation()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + "/../../app");
}

QString Application::program(const QString& name) const
{
    return QStandardPaths::findExecutable(name, {m_installation});
}

void Application::start(const QStringList& arguments)
{
    m_process.start(program("skylume"), arguments);
}

bool Application::waitFor(const QString& text)
{
    QElapsedTimer timer;
    timer.start();
    while (!hasWritten(text)) {
        if (timer.hasExpired(longestWait) || m_process.state() == QProcess::NotRunning)
            return false;
        readMore(100);
    }
    return true;
}

bool Application::hasWritten(const QString& text) const
{
    return m_log.indexOf(text, m_mark) >= 0;
}

void Application::mark()
{
    readMore(0);
    m_mark = m_log.size();
}

int Application::waitForEnd()
{
    const bool hasEnded = m_process.waitForFinished(longestWait);
    readMore(0);
    return hasEnded && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

int Application::close()
{
    m_process.terminate();
    return waitForEnd();
}

bool Application::modem(const QStringList& arguments)
{
    QProcess tool;
    tool.setProcessEnvironment(m_process.processEnvironment());
    tool.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    tool.start(program("skylume-modem"), arguments);
    return tool.waitForFinished(longestWait) && tool.exitStatus() == QProcess::NormalExit &&
           tool.exitCode() == 0;
}

void Application::readMore(int milliseconds)
{
    if (milliseconds > 0 && m_process.state() != QProcess::NotRunning)
        m_process.waitForReadyRead(milliseconds);
    m_output += QString::fromUtf8(m_process.readAllStandardOutput()).remove(QLatin1Char('\r'));
    m_log += QString::fromUtf8(m_process.readAllStandardError()).remove(QLatin1Char('\r'));
}
