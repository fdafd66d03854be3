#pragma once

#include "backends/Backend.h"
#include "backends/simulator/SimulatedTasks.h"
#include "files/FileWatch.h"
#include "files/KnownFile.h"

#include <QHash>
#include <QPair>
#include <QStringList>

#include <vector>

/// Modems that exist only in a file, see SimulatorFile. Requests change the file, so that all processes see the
/// same modems.
class Simulator : public Backend
{
public:
    /// The first of the files that exists is used. The first one is written.
    explicit Simulator(const QStringList& files);

    /// No modems if there is no file. While the file is broken, perhaps because it is being edited, the modems
    /// stay as they were.
    DeviceState look() override;

    bool wait(Clock::time_point until) override;
    void wake() override { m_watch.wake(); }
    void start(Request request) override;
    QVector<RequestEnd> takeEnds() override;

private:
    /// The delivery of a message.
    struct Delivery
    {
        Clock::time_point due;
        QString message;
    };

    void adopt(Modems modems);
    void forgetRequestsOfMissing();
    quint32 idOf(const Modem& modem);
    void startCounters(Modem& modem, Clock::time_point now) const;
    const Modem* modemWithId(quint32 id) const;
    Clock::time_point nextTask();
    RequestEnd carryOut(const Request& request);
    void deliver(const QString& message);
    ModemValues valuesDuringRequests(const Modem& modem);

    const QStringList m_files;
    FileWatch m_watch; // before the file, so that no change after the first look is missed
    KnownFile m_file;
    Modems m_modems;
    QHash<QPair<QString, QString>, quint32> m_ids; // by name and model: another model is another modem
    QHash<quint32, QString> m_dialogues;           // service codes by modem
    std::vector<Delivery> m_deliveries;
    SimulatedTasks m_tasks;
};
