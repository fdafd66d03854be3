#pragma once

#include "support/BackgroundWork.h"

#include <QString>

/// The names of mobile networks. All plugins share one copy of the lists. It is read in the background if no plugin has
/// done so; finished() is emitted when the names are available. GUI thread only.
class OperatorNames : public BackgroundWork
{
    Q_OBJECT

public:
    explicit OperatorNames(QObject* parent);
    ~OperatorNames() override;

    /// The name of the network in which a modem is registered, in the current language.
    /// @param network  MCC and MNC in one string
    /// @param imsi     of the SIM: names the operator if an unlisted network is the SIM's home network
    /// @param reported what the modem calls the network; used if the network is not listed
    /// @return for an unlisted network without another name its country and number, else the code; empty while
    ///         the lists are read
    QString nameOf(const QString& network, const QString& imsi, const QString& reported) const;

protected:
    void work() override;
};
