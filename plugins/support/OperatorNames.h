#pragma once

#include "support/BackgroundWork.h"

#include <QString>

#include <atomic>

/// The names of mobile networks. The lists are read in the background; finished() is emitted when the names
/// are available.
class OperatorNames : public BackgroundWork
{
    Q_OBJECT

public:
    explicit OperatorNames(QObject* parent);
    ~OperatorNames() override;

    /// The name of the network in which a modem is registered, in the current language.
    /// @param network  MCC and MNC in one string
    /// @param imsi     of the SIM: in its home country it names the operator of a network that is not listed
    /// @param reported what the modem calls the network; used if the network is not listed
    /// @return for an unlisted network without another name its country and number, else the code; empty while
    ///         the lists are read
    QString nameOf(const QString& network, const QString& imsi, const QString& reported) const;

protected:
    void work() override;

private:
    std::atomic<bool> m_areRead{false};
};
