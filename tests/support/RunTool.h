#pragma once

#include <QProcess>
#include <QtTest>

/// Runs a tool of the built installation, which reads `input`; the test fails unless it ends with this exit code.
/// @return what it wrote on standard output and error
inline QByteArray runTool(const QString& name, const QStringList& arguments, int exitCode,
                          const QByteArray& input = {})
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(QCoreApplication::applicationDirPath() + "/../../app/" + name, arguments);
    tool.write(input);
    tool.closeWriteChannel();
    const bool hasEnded = tool.waitForFinished() && tool.exitStatus() == QProcess::NormalExit;
    const QByteArray output = tool.readAll().replace("\r\n", "\n");
    if (!hasEnded || tool.exitCode() != exitCode)
        QTest::qFail("The tool ended with " + QByteArray::number(tool.exitCode()) + ": " + output, __FILE__,
                     __LINE__);
    return output;
}
