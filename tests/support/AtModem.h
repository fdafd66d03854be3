#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QMap>

#include <mutex>
#include <thread>

/// A modem that understands AT commands, behind an abstract socket, for the test mode of ModemManager. It has a
/// SIM with a PIN, is registered in a network, and stores, sends and receives text messages. Thread-safe.
class AtModem
{
public:
    struct Sim
    {
        QByteArray pin; ///< asked for if not empty
        int pinTries = 3;
        int pukTries = 10;
        bool isInserted = true;
        QByteArray imsi = "262011234567890";
        QByteArray gid = "4E542D474F4C44FF"; ///< EF_GID1 in hexadecimal digits; empty: there is none
    };

    /// Listens at once. The name must be unique on this machine.
    AtModem(const QByteArray& name, const Sim& sim);
    ~AtModem();
    AtModem(const AtModem&) = delete;
    AtModem& operator=(const AtModem&) = delete;

    /// The name of the port for ModemManager.
    QByteArray port() const { return m_port; }

    /// From now on the modem answers the command with these lines and "OK", or with an error ("+CME ERROR: 10").
    /// "AT+CMGS" stands for all messages that are sent, which an error refuses; "+CUSD" for what the network
    /// answers to service codes.
    void setReply(const QByteArray& command, const QByteArray& reply);

    /// The modem reports something by itself, such as "+CREG: 1".
    void announce(const QByteArray& line);

    /// A text message arrives: a PDU with the length of the service centre's address in front. Returns
    /// the report that announces it, to be repeated: ModemManager overlooks one that comes while it reads another message.
    QByteArray receive(const QByteArray& pdu);

    /// Messages that were sent, as PDUs.
    QByteArrayList sent() const;

    /// Stops answering.
    void hang();

private:
    void serve();
    void talk(int connection);
    QByteArray answer(const QByteArray& command);
    QByteArray answerPin(const QByteArray& command);
    QByteArray pinState() const;
    QByteArray storedMessages() const;
    QByteArray describe(const QByteArray& pdu) const;
    QByteArray take(const QByteArray& pdu);
    int endOfCommand(const QByteArray& input) const;

    const QByteArray m_port;
    int m_listener = -1;
    int m_end[2] = {-1, -1}; // a pipe that ends the thread

    mutable std::mutex m_mutex; // guards what follows
    Sim m_sim;
    bool m_isUnlocked = false;
    bool m_isHanging = false;
    bool m_isAwaitingPdu = false;
    int m_connection = -1;
    QByteArray m_operatorFormat = "0";
    QHash<QByteArray, QByteArray> m_replies;
    QMap<int, QByteArray> m_stored; // by index
    int m_lastIndex = 0;
    QByteArrayList m_sent;

    std::thread m_thread;
};
