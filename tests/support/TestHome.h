#pragma once

#include "TestFiles.h"

#include <QTemporaryDir>
#include <QtTest>

/// An empty home for what runs in this process. Create it before QApplication.
class TestHome
{
public:
    /// @param settings content of the user's settings file
    explicit TestHome(const QByteArray& settings = {})
    {
        qputenv("QRVL_USER_DIR", m_folder.path().toLocal8Bit());
        writeFile(m_folder.filePath("settings.ini"), settings);
    }

private:
    QTemporaryDir m_folder;
};

/// The path of a file of the user's.
inline QString homeFile(const QString& name)
{
    return QString::fromLocal8Bit(qgetenv("QRVL_USER_DIR")) + '/' + name;
}

/// Lets the device service find this in its simulator's file.
inline void simulate(const QByteArray& modems)
{
    // Otherwise a request that ends now could bring back the modems before.
    QLockFile lock(homeFile("simulator.ini.lock"));
    QVERIFY(lock.lock());
    // On Windows the file cannot be replaced while the service reads it.
    QVERIFY(QTest::qWaitFor([&modems] {
        QSaveFile file(homeFile("simulator.ini"));
        return file.open(QIODevice::WriteOnly) && file.write(modems) == modems.size() && file.commit();
    }));
}
