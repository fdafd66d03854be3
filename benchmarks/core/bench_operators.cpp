// Operator names by code and by IMSI, compared with plain hashes; reading a large operator list, compared with
// only running Qt's reader over the same file.
#include "Installation.h"

#include "common/StatusBarOpListParse.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QHash>
#include <QXmlStreamReader>

namespace {

/// As in the shipped lists.
constexpr int NetworkCount = 818;

struct Network
{
    QString mcc;
    QString mnc;
    QString imsi;
    QString name;
};

/// One network code in ten has three digits.
Network network(int number)
{
    const QString mcc = QString::number(200 + number / 5);
    const QString mnc = QString::number(number % 10 ? 10 + number % 5 * 7 : 100 + number % 7);
    return {mcc, mnc, mcc + mnc + QStringLiteral("1234567890").left(15 - mcc.size() - mnc.size()),
            QStringLiteral("Operator %1").arg(number)};
}

QVector<Network> networks(int count)
{
    QVector<Network> all;
    for (int number = 0; number < count; ++number)
        all.append(network(number));
    return all;
}

/// Most short and full names are the same, as in the shipped list.
QByteArray operatorListXml(int count)
{
    QByteArray xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<OperatorList>\n <MccMnc>\n";
    for (const Network& n : networks(count)) {
        if (n.mnc == QLatin1String("10"))
            xml += "  <Region descr=\"Country " + n.mcc.toUtf8() + "\"/>\n";
        xml += "  <Item mcc=\"" + n.mcc.toUtf8() + "\" mnc=\"" + n.mnc.toUtf8() + "\" shortdescr=\"" +
               n.name.toUtf8() + "\" fulldescr=\"" + n.name.toUtf8() +
               (n.name.endsWith(QLatin1Char('7')) ? " Mobile" : "") + "\"/>\n";
    }
    return xml + " </MccMnc>\n</OperatorList>\n";
}

QByteArray imsiListXml()
{
    QByteArray xml = "<CPLMN>\n";
    for (const Network& n : networks(NetworkCount))
        xml += " <Item IMSI=\"" + (n.mcc + n.mnc).toUtf8() + "\" operator=\"" + n.name.toUtf8() + "\"/>\n";
    return xml + "</CPLMN>\n";
}

QString listPath(const char* name)
{
    return QCoreApplication::applicationDirPath() + QLatin1String("/plugins/StatusBarMgrPlugin/") +
           QLatin1String(name);
}

void writeList(const char* name, const QByteArray& content)
{
    QFile file(listPath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("Cannot write %s", name);
}

/// Looks up one network after the other.
template <typename LookUp>
void lookUp(benchmark::State& state, LookUp lookUp)
{
    const QVector<Network> all = networks(NetworkCount);
    int next = 0;
    for (auto _ : state) {
        const Network& n = all.at(next);
        benchmark::DoNotOptimize(lookUp(n));
        next = next + 1 == all.size() ? 0 : next + 1;
    }
    if (lookUp(all.at(7)) != all.at(7).name)
        state.SkipWithError("wrong name");
}

void byCodeOurs(benchmark::State& state)
{
    StatusBarOpListParse* const lists = StatusBarOpListParse::GetInstance();
    lookUp(state, [lists](const Network& n) { return lists->GetOperatorData(n.mcc, n.mnc).shortdescr; });
}

void byCodeHash(benchmark::State& state)
{
    QHash<QString, _ST_MCCMNC_ITEM> hash;
    for (const Network& n : networks(NetworkCount))
        hash.insert(n.mcc + n.mnc,
                    {n.name, n.name + QLatin1String(" Mobile"), QLatin1String("Country ") + n.mcc, {}});
    lookUp(state, [&hash](const Network& n) { return hash.value(n.mcc + n.mnc).shortdescr; });
}

void byImsiOurs(benchmark::State& state)
{
    StatusBarOpListParse* const lists = StatusBarOpListParse::GetInstance();
    lookUp(state, [lists](const Network& n) { return lists->GetCPLMNOperatorData(n.imsi); });
}

void byImsiHash(benchmark::State& state)
{
    QHash<QString, QString> hash;
    for (const Network& n : networks(NetworkCount))
        hash.insert(n.mcc + n.mnc, n.name);
    lookUp(state, [&hash](const Network& n) {
        for (QString prefix = n.imsi; prefix.size() > 4; prefix.chop(1)) {
            const auto found = hash.constFind(prefix);
            if (found != hash.cend())
                return *found;
        }
        return QString();
    });
}

void loadOurs(benchmark::State& state)
{
    writeList("Large.xml", operatorListXml(12000));
    for (auto _ : state) {
        StatusBarOpListParse::GetInstance()->LoadFile(QStringLiteral("Large.xml"));
        state.PauseTiming();
        StatusBarOpListParse::GetInstance()->ReleaseData();
        state.ResumeTiming();
    }
    StatusBarOpListParse::DestroyInstance();
}

void loadBarePass(benchmark::State& state)
{
    writeList("Large.xml", operatorListXml(12000));
    for (auto _ : state) {
        QFile file(listPath("Large.xml"));
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
            state.SkipWithError("cannot read the file");
        QXmlStreamReader reader(&file);
        while (!reader.atEnd())
            benchmark::DoNotOptimize(reader.readNext());
    }
}

} // namespace

BENCHMARK(byCodeOurs)->Name("operator_by_code/ours");
BENCHMARK(byCodeHash)->Name("operator_by_code/peer_hash");
BENCHMARK(byImsiOurs)->Name("operator_by_imsi/ours");
BENCHMARK(byImsiHash)->Name("operator_by_imsi/peer_hash");
BENCHMARK(loadOurs)->Name("load_operators/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(loadBarePass)->Name("load_operators/peer_reader")->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    return runBenchmarks(argc, argv, [](const Installation&) {
        QDir().mkpath(listPath(""));
        writeList("OperatorList.xml", operatorListXml(NetworkCount));
        writeList("CPLMNOpList.xml", imsiListXml());
    });
}
