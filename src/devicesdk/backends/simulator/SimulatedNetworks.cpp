#include "backends/simulator/SimulatedNetworks.h"

#include "backends/simulator/FileModem.h"

#include <algorithm>

namespace {

constexpr int CountryDigits = 3; // of a network's code

struct Network
{
    QString code;
    QString name;
    QString technology;
    bool isForbidden = false;
};

Network networkAt(const IniDocument& document, const QString& section)
{
    const auto value = [&](const char* key) {
        const QString* const found = document.find(section, QLatin1String(key));
        return found ? *found : QString();
    };
    return {section.mid(SimulatorFile::networkSectionOf({}).size()), value("name"), value("technology"),
            value("forbidden") == QLatin1String("true")};
}

/// The networks that the modem can receive, among them the one in which it is registered.
QVector<Network> networksAround(const FileModem& modem)
{
    const QString current = modem.value("network");
    QVector<Network> networks;
    for (const QString& section : modem.document().sections()) {
        if (section.startsWith(SimulatorFile::networkSectionOf(current.left(CountryDigits))))
            networks.append(networkAt(modem.document(), section));
    }
    const bool isListed = std::any_of(networks.cbegin(), networks.cend(),
                                      [&](const Network& network) { return network.code == current; });
    if (!isListed && !current.isEmpty())
        networks.prepend({current, modem.value("network-name"), modem.value("technology")});
    return networks;
}

QString lineOf(const Network& network, const QString& current)
{
    QString state = network.isForbidden ? QStringLiteral("forbidden") : QStringLiteral("available");
    if (network.code == current)
        state = QStringLiteral("current");
    return QStringList({network.code, state, network.technology, network.name}).join(QLatin1Char('\t'));
}

/// The network with that code or, if that is empty, the one that the modem would choose: its own, the one in
/// which it is, or the first that is not forbidden. Null if there is none.
const Network* choose(const QVector<Network>& networks, const QString& code, const FileModem& modem)
{
    const QString imsi = modem.value("imsi");
    const auto likeness = [&](const Network& network) {
        if (!code.isEmpty())
            return network.code == code ? 1 : 0;
        if (network.isForbidden)
            return 0;
        return 1 + int(network.code == modem.value("network")) + 2 * int(imsi.startsWith(network.code));
    };
    const auto* const best =
        std::max_element(networks.cbegin(), networks.cend(),
                         [&](const Network& a, const Network& b) { return likeness(a) < likeness(b); });
    return best == networks.cend() || likeness(*best) == 0 ? nullptr : best;
}

} // namespace

RequestEnd SimulatedNetworks::scan(const Request& request, const FileModem& modem)
{
    const long result = modem.simResult();
    if (result != QRVL_OK)
        return {request.number, result, {}};
    QStringList lines;
    const QString current = modem.value("network");
    for (const Network& network : networksAround(modem))
        lines.append(lineOf(network, current));
    return {request.number, QRVL_OK, lines.join(QLatin1Char('\n'))};
}

RequestEnd SimulatedNetworks::registerIn(const Request& request, FileModem& modem)
{
    const long simResult = modem.simResult();
    if (simResult != QRVL_OK)
        return {request.number, simResult, {}};
    const QVector<Network> networks = networksAround(modem);
    const Network* const network = choose(networks, request.target, modem);
    if (!network)
        return {request.number, QRVL_ERROR_NO_COVERAGE, {}};
    if (network->isForbidden)
        return {request.number, QRVL_ERROR_REFUSED, {}};
    modem.set("network", network->code);
    modem.set("network-name", network->name);
    modem.set("technology", network->technology);
    modem.set("network-choice",
              request.target.isEmpty() ? QStringLiteral("automatic") : QStringLiteral("manual"));
    modem.set("registration", QString());
    return {request.number, QRVL_OK, {}};
}
