#include "AtModem.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr char EndOfPdu = 0x1a;

/// The answers of a modem with nothing special about it.
const std::pair<const char*, const char*> UsualReplies[] = {
    {"AT+GCAP", "+GCAP: +CGSM,+DS,+ES"},
    {"ATI", "Lume\r\nLume AT1\r\nRevision 1.0"},
    {"AT+CGMI", "Lume"},
    {"AT+CGMM", "Lume AT1"},
    {"AT+CGMR", "1.0.7"},
    {"AT+CGSN", "351234567890123"},
    {"AT+WS46=?", "+WS46: (12,22,25)"},
    {"AT+WS46?", "+WS46: 25"},
    {"AT+CGDCONT=?", "+CGDCONT: (1-11),\"IP\",,,(0-2),(0-4)"},
    {"AT+CFUN?", "+CFUN: 1"},
    {"AT+CSCS=?", "+CSCS: (\"IRA\",\"UCS2\",\"GSM\")"},
    {"AT+CSCS?", "+CSCS: \"UCS2\""},
    {"AT+CREG=?", "+CREG: (0-2)"},
    {"AT+CGREG=?", "+CGREG: (0-2)"},
    {"AT+CREG?", "+CREG: 2,1,\"0001\",\"00000001\""},
    {"AT+CGREG?", "+CGREG: 2,1,\"0001\",\"00000001\",2"},
    {"AT+COPS? 2", "+COPS: 0,2,\"26201\",2"},
    {"AT+COPS? 0", "+COPS: 0,0,\"006E006F00720074006800740065006C\",2"},
    {"AT+CSQ", "+CSQ: 20,99"},
    {"AT+CNUM", "+CNUM: \"\",\"+491701234567\",145"},
    {"AT+CMGF=?", "+CMGF: (0,1)"},
    {"AT+CMGF?", "+CMGF: 0"},
    {"AT+CPMS=?", "+CPMS: (\"SM\"),(\"SM\"),(\"SM\")"},
    {"AT+CPMS?", "+CPMS: \"SM\",0,50,\"SM\",0,50,\"SM\",0,50"},
    {"AT+CNMI=?", "+CNMI: (0-2),(0-3),(0-3),(0-2),(0-1)"},
    {"AT+CUSD=?", "+CUSD: (0-2)"},
    {"AT+CRSM=176,12258,0,0,10", "+CRSM: 144,0,\"98940000000000000010\""},
    {"AT+CRSM=176,28589,0,0,4", "+CRSM: 144,0,\"00000002\""},
};

/// The beginnings of commands that are only confirmed.
const char* const ConfirmedCommands[] = {
    "AT+CREG=", "AT+CGREG=", "AT+CSCS=",  "AT+CFUN=", "AT+CMGF=", "AT+CNMI=", "AT+CPMS=",
    "AT+COPS=", "AT+CMEE=",  "AT+CLIP=",  "AT+CCWA=", "ATE0",     "ATV1",     "ATX4",
    "AT&C1",    "AT+CUSD=2", "AT+CUSD=1", "ATZ",      "AT+CRC="};

QByteArray ok(const QByteArray& lines = {})
{
    return (lines.isEmpty() ? QByteArray() : "\r\n" + lines + "\r\n") + "\r\nOK\r\n";
}

QByteArray error(int number)
{
    return "\r\n+CME ERROR: " + QByteArray::number(number) + "\r\n";
}

/// How many bytes of a PDU follow the address of the service centre.
int lengthOf(const QByteArray& pdu)
{
    return pdu.size() / 2 - 1 - pdu.left(2).toInt(nullptr, 16);
}

sockaddr_un addressOf(const QByteArray& name, socklen_t& size)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path + 1, name.constData(), std::size_t(name.size()));
    size = socklen_t(offsetof(sockaddr_un, sun_path) + 1 + std::size_t(name.size()));
    return address;
}

void writeAll(int connection, const QByteArray& bytes)
{
    if (connection >= 0 && !bytes.isEmpty())
        send(connection, bytes.constData(), std::size_t(bytes.size()), MSG_NOSIGNAL);
}

} // namespace

AtModem::AtModem(const QByteArray& name, const Sim& sim)
    : m_port("abstract:" + name)
    , m_sim(sim)
    , m_isUnlocked(sim.pin.isEmpty())
{
    socklen_t size = 0;
    const sockaddr_un address = addressOf(m_port, size); // the prefix is part of the name
    m_listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (bind(m_listener, reinterpret_cast<const sockaddr*>(&address), size) != 0 ||
        listen(m_listener, 4) != 0 || pipe2(m_end, O_CLOEXEC) != 0)
        qFatal("The port %s cannot be opened", m_port.constData());
    for (const auto& [command, reply] : UsualReplies)
        m_replies.insert(command, reply);
    m_replies.insert("AT+CIMI", sim.imsi);
    if (!sim.gid.isEmpty())
        m_replies.insert("AT+CRSM=176,28478,0,0,0", "+CRSM: 144,0,\"" + sim.gid + "\"");
    m_thread = std::thread([this] { serve(); });
}

AtModem::~AtModem()
{
    close(m_end[1]);
    m_thread.join();
    close(m_end[0]);
    close(m_listener);
}

void AtModem::setReply(const QByteArray& command, const QByteArray& reply)
{
    const std::lock_guard lock(m_mutex);
    m_replies.insert(command, reply);
}

void AtModem::announce(const QByteArray& line)
{
    const std::lock_guard lock(m_mutex);
    writeAll(m_connection, "\r\n" + line + "\r\n");
}

QByteArray AtModem::receive(const QByteArray& pdu)
{
    QByteArray report;
    {
        const std::lock_guard lock(m_mutex);
        m_stored.insert(++m_lastIndex, pdu);
        report = "+CMTI: \"SM\"," + QByteArray::number(m_lastIndex);
    }
    announce(report);
    return report;
}

QByteArrayList AtModem::sent() const
{
    const std::lock_guard lock(m_mutex);
    return m_sent;
}

void AtModem::hang()
{
    const std::lock_guard lock(m_mutex);
    m_isHanging = true;
}

void AtModem::serve()
{
    std::array<pollfd, 2> waits = {{{m_listener, POLLIN, 0}, {m_end[0], POLLIN, 0}}};
    while (poll(waits.data(), waits.size(), -1) > 0 && waits[1].revents == 0) {
        const int connection = accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        talk(connection);
        close(connection);
    }
}

/// Until the other side closes the connection, or the modem is destroyed.
void AtModem::talk(int connection)
{
    {
        const std::lock_guard lock(m_mutex);
        m_connection = connection;
    }
    std::array<pollfd, 2> waits = {{{connection, POLLIN, 0}, {m_end[0], POLLIN, 0}}};
    QByteArray input;
    while (poll(waits.data(), waits.size(), -1) > 0 && waits[1].revents == 0) {
        std::array<char, 1024> buffer;
        const ssize_t size = read(connection, buffer.data(), buffer.size());
        if (size <= 0)
            break;
        input.append(buffer.data(), int(size));
        const std::lock_guard lock(m_mutex);
        for (int end = endOfCommand(input); end >= 0; end = endOfCommand(input)) {
            const QByteArray command = input.left(end).trimmed();
            input.remove(0, end + 1);
            if (!m_isHanging && !command.isEmpty())
                writeAll(connection, m_isAwaitingPdu ? take(command) : answer(command));
        }
    }
    const std::lock_guard lock(m_mutex);
    m_connection = -1;
    m_isAwaitingPdu = false;
}

int AtModem::endOfCommand(const QByteArray& input) const
{
    return input.indexOf(m_isAwaitingPdu ? EndOfPdu : '\r');
}

QByteArray AtModem::answer(const QByteArray& command)
{
    if (command == "AT")
        return ok();
    if (command == "AT+CPIN?")
        return pinState();
    if (command.startsWith("AT+CPIN=") || command.startsWith("AT+CSIM="))
        return answerPin(command);
    if (command.startsWith("AT+CMGS=")) {
        m_isAwaitingPdu = true;
        return "\r\n> ";
    }
    if (command == "AT+CMGL=4")
        return ok(storedMessages());
    if (command.startsWith("AT+CMGR="))
        return ok("+CMGR: 1,," + describe(m_stored.value(command.mid(8).toInt())));
    if (command.startsWith("AT+CMGD="))
        return m_stored.remove(command.mid(8).toInt()) > 0 ? ok() : error(21);
    if (command.startsWith("AT+CUSD=1,")) // and not "AT+CUSD=1", which enables it
        return ok() + "\r\n+CUSD: " + m_replies.value("+CUSD") + "\r\n";
    if (command.startsWith("AT+COPS=3,"))
        m_operatorFormat = command.right(1);
    const auto reply =
        m_replies.constFind(command == "AT+COPS?" ? command + ' ' + m_operatorFormat : command);
    if (reply != m_replies.cend())
        return reply->startsWith("+CME ERROR") ? "\r\n" + *reply + "\r\n" : ok(*reply);
    for (const char* const beginning : ConfirmedCommands) {
        if (command.startsWith(beginning))
            return ok();
    }
    return "\r\nERROR\r\n";
}

QByteArray AtModem::pinState() const
{
    if (!m_sim.isInserted)
        return error(10);
    if (m_isUnlocked)
        return ok("+CPIN: READY");
    return ok(m_sim.pinTries > 0 ? "+CPIN: SIM PIN" : "+CPIN: SIM PUK");
}

/// Tries codes, or says how many tries are left.
QByteArray AtModem::answerPin(const QByteArray& command)
{
    if (command.startsWith("AT+CSIM=")) {
        const int tries = command.contains("\"002C") ? m_sim.pukTries : m_sim.pinTries;
        return ok("+CSIM: 4,\"63C" + QByteArray::number(tries, 16).toUpper() + '"');
    }
    const QByteArrayList codes = QByteArray(command.mid(8)).replace('"', "").split(',');
    int& tries = codes.size() > 1 ? m_sim.pukTries : m_sim.pinTries;
    const QByteArray right = codes.size() > 1 ? QByteArray("12345678") : m_sim.pin;
    if (tries == 0 || codes[0] != right) {
        tries = std::max(tries - 1, 0);
        return error(m_sim.pinTries == 0 ? 12 : 16);
    }
    m_sim.pinTries = 3;
    m_isUnlocked = true;
    return ok();
}

QByteArray AtModem::describe(const QByteArray& pdu) const
{
    return QByteArray::number(lengthOf(pdu)) + "\r\n" + pdu;
}

QByteArray AtModem::storedMessages() const
{
    QByteArrayList lines;
    for (auto message = m_stored.cbegin(); message != m_stored.cend(); ++message)
        lines << "+CMGL: " + QByteArray::number(message.key()) + ",1,," + describe(*message);
    return lines.join("\r\n");
}

/// A message is sent.
QByteArray AtModem::take(const QByteArray& pdu)
{
    m_isAwaitingPdu = false;
    const QByteArray refusal = m_replies.value("AT+CMGS");
    if (!refusal.isEmpty())
        return "\r\n" + refusal + "\r\n";
    m_sent.append(pdu);
    return ok("+CMGS: " + QByteArray::number(m_sent.size()));
}
