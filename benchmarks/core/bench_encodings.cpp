// Base64 and hexadecimal digits, compared with those of OpenSSL and Qt. The argument is the size in bytes.
#include "CipherPeers.h"
#include "CipherSamples.h"

#include "common/ByteStrings.h"
#include "common/ciphers/Base64.h"

#include <QByteArray>

namespace {

// ---- Base64

Bytes base64Text(std::size_t size)
{
    const QByteArray bytes = QByteArray::fromStdString(sampleText(size)).toBase64();
    return {bytes.constData(), bytes.constData() + bytes.size() + 1};
}

void base64Encode(benchmark::State& state)
{
    measure(state, sample(sizeOf(state)), 2 * sizeOf(state) + 8,
            [&](const unsigned char* in, unsigned char* out) {
                unsigned size = 1;
                cl_base64Encode(in, unsigned(state.range(0)), out, &size);
            });
}

void base64EncodeOpenSsl(benchmark::State& state)
{
    measure(state, sample(sizeOf(state)), 2 * sizeOf(state) + 8,
            [&](const unsigned char* in, unsigned char* out) {
                CipherPeers::openSslBase64Encode(in, sizeOf(state), out);
            });
}

void base64EncodeQt(benchmark::State& state)
{
    measure(state, sample(sizeOf(state)), 1, [&](const unsigned char* in, unsigned char*) {
        const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(in), int(state.range(0)));
        benchmark::DoNotOptimize(bytes.toBase64());
    });
}

void base64Decode(benchmark::State& state)
{
    measure(state, base64Text(sizeOf(state)), sizeOf(state), [](const unsigned char* in, unsigned char* out) {
        unsigned size = 1;
        cl_base64Decode(in, 1, out, &size);
    });
}

/// A space replaces every tenth character.
void base64DecodeDirty(benchmark::State& state)
{
    Bytes text = base64Text(sizeOf(state));
    for (std::size_t i = 0; i + 4 < text.size(); i += 10)
        text[i] = ' ';
    measure(state, text, sizeOf(state), [](const unsigned char* in, unsigned char* out) {
        unsigned size = 1;
        cl_base64Decode(in, 1, out, &size);
    });
}

void base64DecodeOpenSsl(benchmark::State& state)
{
    const Bytes text = base64Text(sizeOf(state));
    measure(state, text, sizeOf(state) + 8, [&text](const unsigned char* in, unsigned char* out) {
        CipherPeers::openSslBase64Decode(in, text.size() - 1, out);
    });
}

// ---- Hexadecimal digits

void hexEncode(benchmark::State& state)
{
    const std::string bytes = sampleText(sizeOf(state));
    for (auto _ : state)
        benchmark::DoNotOptimize(StrToHex(bytes));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void hexDecode(benchmark::State& state)
{
    const std::string digits = StrToHex(sampleText(sizeOf(state)));
    for (auto _ : state)
        benchmark::DoNotOptimize(HexToStr(digits));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void hexEncodeOpenSsl(benchmark::State& state)
{
    measure(state, sample(sizeOf(state)), 2 * sizeOf(state) + 1,
            [&](const unsigned char* in, unsigned char* out) {
                CipherPeers::openSslHexEncode(in, sizeOf(state), reinterpret_cast<char*>(out));
            });
}

void hexDecodeOpenSsl(benchmark::State& state)
{
    const std::string digits = StrToHex(sampleText(sizeOf(state)));
    measure(state, {}, sizeOf(state), [&](const unsigned char*, unsigned char* out) {
        CipherPeers::openSslHexDecode(digits.c_str(), out, sizeOf(state));
    });
}

void useBase64Sizes(benchmark::internal::Benchmark* registered)
{
    registered->Arg(16)->Arg(64 << 10);
}

void useHexSizes(benchmark::internal::Benchmark* registered)
{
    registered->Arg(32)->Arg(64 << 10);
}

} // namespace

BENCHMARK(base64Encode)->Name("base64_encode/ours")->Apply(useBase64Sizes);
BENCHMARK(base64EncodeOpenSsl)->Name("base64_encode/peer_openssl")->Apply(useBase64Sizes);
BENCHMARK(base64EncodeQt)->Name("base64_encode/peer_qt")->Apply(useBase64Sizes);
BENCHMARK(base64Decode)->Name("base64_decode/ours")->Apply(useBase64Sizes);
BENCHMARK(base64DecodeDirty)->Name("base64_decode/ours_dirty")->Arg(64 << 10);
BENCHMARK(base64DecodeOpenSsl)->Name("base64_decode/peer_openssl")->Apply(useBase64Sizes);

BENCHMARK(hexEncode)->Name("hex_encode/ours")->Apply(useHexSizes);
BENCHMARK(hexEncodeOpenSsl)->Name("hex_encode/peer_openssl")->Apply(useHexSizes);
BENCHMARK(hexDecode)->Name("hex_decode/ours")->Apply(useHexSizes);
BENCHMARK(hexDecodeOpenSsl)->Name("hex_decode/peer_openssl")->Apply(useHexSizes);

int main(int argc, char** argv)
{
    runAll(argc, argv);
}
