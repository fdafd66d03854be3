// An installed copy, started where it was installed.
#include "Application.h"

#include <QCoreApplication>
#include <QDir>
#include <QtTest>

class TestInstallation : public QObject
{
    Q_OBJECT

private slots:
    void version();
    void startAndEnd();

private:
    const QString m_installation =
        QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral(INSTALLED_APP));
};

void TestInstallation::version()
{
    Application application(m_installation);
    application.start({"--version"});
    QCOMPARE(application.waitForEnd(), 0);
    QVERIFY2(application.output().startsWith("skylume "), qUtf8Printable(application.output()));
}

// Libraries, plugins, configuration, the device service's defaults and the modem tool are all found.
void TestInstallation::startAndEnd()
{
    Application application(m_installation);
    application.start({"--verbose", "--no-splash"});
    QVERIFY(application.waitFor("Loaded plugin: SimInfoPlugin."));
    QVERIFY(application.modem({"detach"}));
    QVERIFY(application.waitFor("Unload plugin SimInfoPlugin bUnloaded 1"));
    QCOMPARE(application.close(), 0);
}

QTEST_GUILESS_MAIN(TestInstallation)
#include "tst_installation.moc"
