#pragma once

#include <QProcess>
#include <QStringList>
#include <QtTest>

/// Compares files with a schema of docs/schemas. On Windows, where there is no xmllint, nothing is done.
/// @param schema   name without a suffix
/// @param areValid whether all files are to be valid, or not all
inline void checkSchema(const QString& schema, const QStringList& files, bool areValid)
{
#ifndef Q_OS_WIN
    QProcess validator;
    validator.setProcessChannelMode(QProcess::MergedChannels);
    validator.start("xmllint", QStringList{"--noout", "--schema", SCHEMAS "/" + schema + ".xsd"} + files);
    QVERIFY2(validator.waitForFinished(), "xmllint is missing");
    QVERIFY2((validator.exitCode() == 0) == areValid, validator.readAll());
#else
    Q_UNUSED(schema)
    Q_UNUSED(files)
    Q_UNUSED(areValid)
#endif
}
