#pragma once

#include "support/BackgroundWork.h"

#include <QString>

#include <atomic>

/// The names of mobile networks. Their lists are read in the background; the thread's finished() tells when
/// names can be had.
class OperatorNames : public BackgroundWork
{
    Q_OBJECT

public:
    explicit OperatorNames(QObject* parent);
    ~OperatorNames() override;

    /// The name of the network that a modem is registered in, in the current language.
    /// @param network MCC and MNC in one text
    /// @param imsi    of the SIM: at home its operator tells more than a network that is not listed
    /// @return for an unlisted network its country and number, else the code; empty while the lists are read
    QString nameOf(const QString& network, const QString& imsi) const;

protected:
    void work() override;

private:
    std::atomic<bool> m_areRead{false};
};
