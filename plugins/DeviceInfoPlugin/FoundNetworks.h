#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// A network that a modem has found.
struct FoundNetwork
{
    QString code;  ///< MCC and MNC
    QString state; ///< current, available, forbidden or unknown
    QStringList technologies;
    QString name; ///< as the modem reports it; may be empty
};

/// Reads what QRVL_DevSrv_ScanNetworks() reports. Each network is there once, the usable ones first.
QVector<FoundNetwork> readNetworks(const QString& lines);
