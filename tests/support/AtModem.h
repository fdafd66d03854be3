#pragma once

#include <QByteArray>
#include <QHash>
#include <QLocalServer>
#include <QMap>

/// A modem that understands AT commands, behind an abstract socket, for the test mode of ModemManager. It has a
/// SIM with a PIN, is registered in a network, and stores, sends and receives text messages. It answers while the
/// event loop of its thread runs.
class AtModem
{
public:
    struct Sim
    {
        QByteArray pin; ///< asked for if not empty
        int pinTries = 3;
        bool isInserted = true;
        QByteArray imsi = "262011234567890";
    };

    /// Listens at once. The name must be unique on this machine.
    AtModem(const QByteArray& name, const Sim& sim);

    /// The name of the port for ModemManager.
    QByteArray port() const { return m_port; }

    /// From now on the modem answers the command with these lines and "OK", or with an error ("+CME ERROR: 10").
    /// "AT+CMGS" stands for all messages that are sent, which an error refuses; "+CUSD" for what the network
    /// answers to service codes.
    void setReply(const QByteArray& command, const QByteArray& reply) { m_replies[command] = reply; }

    /// The modem reports something by itself, such as "+CREG: 1".
    void announce(const QByteArray& line);

    /// A text message arrives: a PDU with the length of the service centre's address in front. Returns
    /// the report that announces it, to be repeated: ModemManager overlooks one that comes while it reads another message.
    QByteArray receive(const QByteArray& pdu);

    /// How many messages were sent.
    int sent() const { return m_sent; }

private:
    void talk();
    void reply(const QByteArray& command);
    QByteArray answer(const QByteArray& command);
    QByteArray answerPin(const QByteArray& command);
    QByteArray pinState() const;

    const QByteArray m_port;
    QLocalServer m_server;
    QLocalSocket* m_connection = nullptr;
    QByteArray m_input;
    Sim m_sim;
    int m_pukTries = 10;
    bool m_isUnlocked;
    QByteArray m_operatorFormat = "0";
    QHash<QByteArray, QByteArray> m_replies;
    QMap<int, QByteArray> m_stored; // by index
    int m_lastIndex = 0;
    int m_sent = 0;
};
