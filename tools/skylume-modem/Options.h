#pragma once

#include <QMap>
#include <QString>

class QCommandLineParser;

/// What was asked for on the command line.
struct Request
{
    QString command;
    QString modem;
    QString newName;
    QMap<QString, QString> values;  ///< of the modem
    QMap<QString, QString> message; ///< values of a message
};

/// The options and arguments of the tool.
namespace Options {

void define(QCommandLineParser& parser);
Request read(const QCommandLineParser& parser);

} // namespace Options
