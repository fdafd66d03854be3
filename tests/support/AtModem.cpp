#include "AtModem.h"

#include "Samples.h"

#include <QLocalSocket>
#include <QRegularExpression>

#include <algorithm>
#include <cstddef>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>

namespace {

/// Commands that are only confirmed.
const char Confirmed[] = "^AT(E0|V1|X4|&C1|[+](CGREG|CMEE|CMGF|CMGL|CNMI|COPS|CPMS|CREG|CSCS|CUSD)=)";

/// Listens at a name that is not in the file system, which QLocalServer cannot do by itself.
int listenAt(const QByteArray& name)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path + 1, name.constData(), std::size_t(name.size()));
    const auto size = offsetof(sockaddr_un, sun_path) + 1 + std::size_t(name.size());
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), socklen_t(size)) != 0 ||
        listen(listener, 4) != 0)
        qFatal("The port %s cannot be opened", name.constData());
    return listener;
}

/// A stored message, after how many of its bytes follow the address of the service centre.
QByteArray describe(const QByteArray& pdu)
{
    return QByteArray::number(pdu.size() / 2 - 1 - pdu.left(2).toInt(nullptr, 16)) + "\r\n" + pdu;
}

} // namespace

AtModem::AtModem(const QByteArray& name, const Sim& sim)
    : m_port("abstract:" + name)
    , m_sim(sim)
    , m_isUnlocked(sim.pin.isEmpty())
{
    for (const Sample& usual : samplesIn(SERVICE_TEMPLATES "/at_modem.txt"))
        setReply(usual.name, usual.text.trimmed().replace("\n", "\r\n"));
    setReply("AT+CIMI", sim.imsi);
    m_server.listen(listenAt(m_port)); // the prefix is part of the name
    QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] {
        m_connection = m_server.nextPendingConnection();
        QObject::connect(m_connection, &QLocalSocket::readyRead, &m_server, [this] { talk(); });
    });
}

void AtModem::announce(const QByteArray& line)
{
    if (m_connection)
        m_connection->write("\r\n" + line + "\r\n");
}

QByteArray AtModem::receive(const QByteArray& pdu)
{
    m_stored.insert(++m_lastIndex, pdu);
    const QByteArray report = "+CMTI: \"SM\"," + QByteArray::number(m_lastIndex);
    announce(report);
    return report;
}

/// Commands end with CR, the PDU of a message that is sent with Ctrl-Z. The next one usually comes soon, while tests look
/// at events seldom.
void AtModem::talk()
{
    do {
        m_input += m_connection->readAll().replace('\x1a', '\r');
        for (int end = m_input.indexOf('\r'); end >= 0; end = m_input.indexOf('\r')) {
            const QByteArray command = m_input.left(end).trimmed();
            m_input.remove(0, end + 1);
            if (!command.isEmpty())
                reply(command);
        }
    } while (m_connection->waitForReadyRead(20));
}

void AtModem::reply(const QByteArray& command)
{
    const QByteArray lines = answer(command);
    if (!lines.isEmpty())
        announce(lines);
    if (!lines.contains("ERROR") && lines != "> ")
        announce("OK");
    if (command.startsWith("AT+CUSD=1,")) // and not "AT+CUSD=1", which enables it
        announce("+CUSD: " + m_replies["+CUSD"]);
}

/// The lines before "OK", or an error.
QByteArray AtModem::answer(const QByteArray& command)
{
    const int number = command.mid(8).toInt(); // of "AT+XXXX=1"
    if (command == "AT+CPIN?")
        return pinState();
    if (command.startsWith("AT+CPIN=") || command.startsWith("AT+CSIM="))
        return answerPin(command);
    if (command.startsWith("AT+CMGS="))
        return "> ";
    if (!command.startsWith("AT"))
        return m_replies.value("AT+CMGS", "+CMGS: " + QByteArray::number(++m_sent));
    if (command.startsWith("AT+CMGR="))
        return "+CMGR: 1,," + describe(m_stored.value(number));
    if (command.startsWith("AT+CMGD="))
        return m_stored.remove(number) > 0 ? "" : "+CME ERROR: 21";
    if (command.startsWith("AT+COPS=3,"))
        m_operatorFormat = command.right(1);
    const QByteArray full = command == "AT+COPS?" ? command + ' ' + m_operatorFormat : command;
    const bool isConfirmed = QRegularExpression(Confirmed).match(command).hasMatch();
    return m_replies.value(full, isConfirmed ? "" : "ERROR");
}

QByteArray AtModem::pinState() const
{
    if (!m_sim.isInserted)
        return "+CME ERROR: 10";
    if (m_isUnlocked)
        return "+CPIN: READY";
    return m_sim.pinTries > 0 ? "+CPIN: SIM PIN" : "+CPIN: SIM PUK";
}

/// Tries codes, or says how many tries are left.
QByteArray AtModem::answerPin(const QByteArray& command)
{
    const QByteArrayList codes = QByteArray(command.mid(8)).replace('"', "").split(',');
    const bool isPuk = command.startsWith("AT+CSIM=") ? codes[1].startsWith("002C") : codes.size() > 1;
    int& tries = isPuk ? m_pukTries : m_sim.pinTries;
    if (command.startsWith("AT+CSIM="))
        return "+CSIM: 4,\"63C" + QByteArray::number(tries, 16).toUpper() + '"';
    if (tries == 0 || codes[0] != (isPuk ? "12345678" : m_sim.pin)) {
        tries = std::max(tries - 1, 0);
        return m_sim.pinTries == 0 ? "+CME ERROR: 12" : "+CME ERROR: 16";
    }
    m_sim.pinTries = 3;
    m_isUnlocked = true;
    return {};
}
