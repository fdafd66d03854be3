// Ciphers, hashes and encodings, compared with those of OpenSSL, libgcrypt, nettle and Qt. The argument is the
// size in bytes.
#include "CipherPeers.h"

#include "common/ByteStrings.h"
#include "common/CommonUtils.h"
#include "common/ciphers/Base64.h"
#include "common/ciphers/CipherContext.h"
#include "common/ciphers/ProcessorPaths_p.h"
#include "common/ciphers/Sha256.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QCryptographicHash>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <string>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

const std::string Key = "0123456789abcdefghijklmn";
const std::string Iv = "initial.";

const unsigned char* bytesOf(const std::string& text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

Bytes sample(std::size_t size)
{
    Bytes bytes(size);
    std::uint32_t state = 1;
    for (unsigned char& byte : bytes)
        byte = static_cast<unsigned char>((state = state * 1664525 + 1013904223) >> 24);
    return bytes;
}

std::string sampleText(std::size_t size)
{
    const Bytes bytes = sample(size);
    return {bytes.begin(), bytes.end()};
}

/// Measures a function of an input and an output buffer.
template <typename Function>
void measure(benchmark::State& state, const Bytes& in, std::size_t outSize, Function function)
{
    Bytes out(outSize);
    for (auto _ : state) {
        function(in.data(), out.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

std::size_t sizeOf(const benchmark::State& state)
{
    return std::size_t(state.range(0));
}

// ---- Triple DES: short inputs including the key schedule, long ones without it

template <bool Encrypt>
void shortText(benchmark::State& state)
{
    const std::string text = sampleText(sizeOf(state));
    for (auto _ : state)
        benchmark::DoNotOptimize(des3(text, Key, Iv, Encrypt));
}

template <bool Encrypt>
void shortTextOpenSsl(benchmark::State& state)
{
    measure(state, sample(sizeOf(state)), sizeOf(state),
            [&state](const unsigned char* in, unsigned char* out) {
                CipherPeers::openSslTripleDes(bytesOf(Key), bytesOf(Iv), in, out, sizeOf(state), Encrypt);
            });
}

template <bool Encrypt>
void longText(benchmark::State& state)
{
    CipherContext* const context = crypto_cipher_init(CipherTripleDes, bytesOf(Iv), bytesOf(Key), 24);
    const auto process = Encrypt ? crypto_cipher_encrypt : crypto_cipher_decrypt;
    measure(state, sample(sizeOf(state)), sizeOf(state), [&](const unsigned char* in, unsigned char* out) {
        process(context, in, out, int(state.range(0)));
    });
    crypto_cipher_deinit(context);
}

template <typename Peer, bool Encrypt>
void longTextPeer(benchmark::State& state)
{
    Peer peer(bytesOf(Key), bytesOf(Iv));
    measure(state, sample(sizeOf(state)), sizeOf(state), [&](const unsigned char* in, unsigned char* out) {
        peer.process(in, out, sizeOf(state), Encrypt);
    });
}

/// Every implementation of decryption that this processor can run.
void decryptPath(benchmark::State& state, const TripleDesCbc::Path* path)
{
    Des3Schedule schedule;
    des3_key_setup(bytesOf(Key), &schedule);
    Bytes chain(8);
    measure(state, sample(sizeOf(state)), sizeOf(state), [&](const unsigned char* in, unsigned char* out) {
        if (path)
            TripleDesCbc::decryptBitsliced(*path, schedule, chain.data(), in, out, sizeOf(state) / 8);
        else
            TripleDesCbc::decryptByTables(schedule, chain.data(), in, out, sizeOf(state) / 8);
    });
}

// ---- SHA-256

void hash(benchmark::State& state)
{
    measure(state, sample(sizeOf(state)), 32, [&state](const unsigned char* in, unsigned char* out) {
        sha256(in, unsigned(state.range(0)), out);
    });
}

template <auto Peer>
void hashPeer(benchmark::State& state)
{
    measure(state, sample(sizeOf(state)), 32,
            [&state](const unsigned char* in, unsigned char* out) { Peer(in, sizeOf(state), out); });
}

void hashQt(benchmark::State& state)
{
    measure(state, sample(sizeOf(state)), 32, [&state](const unsigned char* in, unsigned char*) {
        const auto text = QByteArray::fromRawData(reinterpret_cast<const char*>(in), int(state.range(0)));
        benchmark::DoNotOptimize(QCryptographicHash::hash(text, QCryptographicHash::Sha256));
    });
}

void compressPath(benchmark::State& state, Sha256Blocks::Compress* compress)
{
    std::uint32_t words[8] = {};
    measure(state, sample(sizeOf(state)), 1,
            [&](const unsigned char* in, unsigned char*) { compress(words, in, sizeOf(state) / 64); });
}

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

// ---- Files, compared with the cipher and the encoding in memory

QString writeFile(const QTemporaryDir& folder, const std::string& text)
{
    QFile file(folder.filePath(QStringLiteral("file")));
    file.open(QIODevice::WriteOnly);
    file.write(text.data(), qint64(text.size()));
    return file.fileName();
}

std::string printable(std::size_t size)
{
    std::string text = sampleText(size);
    for (char& character : text)
        character = char('a' + (character & 0xf));
    return text;
}

void file(benchmark::State& state, int operation)
{
    const QTemporaryDir folder;
    const QByteArray in = QFile::encodeName(writeFile(folder, printable(sizeOf(state))));
    const QByteArray crypt = QFile::encodeName(folder.filePath(QStringLiteral("crypt")));
    const QByteArray out = QFile::encodeName(folder.filePath(QStringLiteral("out")));
    CommonUtils::FileCrypt(1, in, crypt);
    for (auto _ : state)
        CommonUtils::FileCrypt(operation, operation == 2 ? crypt : in, out);
}

void fileAlone(benchmark::State& state, int operation)
{
    const std::string text = printable(sizeOf(state)), crypt = StrToHex(des3(text, Key, Iv, true));
    Bytes digest(32);
    for (auto _ : state) {
        if (operation == 1)
            benchmark::DoNotOptimize(StrToHex(des3(text, Key, Iv, true)));
        else if (operation == 2)
            benchmark::DoNotOptimize(des3(HexToStr(crypt), Key, Iv, false));
        else
            sha256(bytesOf(text), unsigned(text.size()), digest.data());
    }
}

constexpr std::int64_t KiB = 1024, MiB = 1024 * KiB;

void registerPaths()
{
    using benchmark::RegisterBenchmark;
    RegisterBenchmark("des3_decrypt_path/tables", decryptPath, nullptr)->Arg(256)->Arg(64 * KiB);
    ProcessorPaths::forEachAvailable(ProcessorPaths::tripleDes(), [](const TripleDesCbc::Path& path) {
        RegisterBenchmark((std::string("des3_decrypt_path/") + path.name).c_str(), decryptPath, &path)
            ->Arg(int(8 * path.fewestBlocks))
            ->Arg(64 * KiB);
    });
    RegisterBenchmark("sha256_path/portable", compressPath, Sha256Blocks::compressPortable)->Arg(64 * KiB);
    ProcessorPaths::forEachAvailable(ProcessorPaths::sha256(), [](const Sha256Blocks::Path& path) {
        RegisterBenchmark((std::string("sha256_path/") + path.name).c_str(), compressPath, path.compress)
            ->Arg(64 * KiB);
    });
}

using benchmark::internal::Benchmark;

void useCipherSizes(Benchmark* registered)
{
    registered->Arg(KiB)->Arg(4 * KiB)->Arg(64 * KiB);
}

void useHashSizes(Benchmark* registered)
{
    registered->Arg(16)->Arg(64)->Arg(64 * KiB)->Arg(MiB);
}

void useBase64Sizes(Benchmark* registered)
{
    registered->Arg(16)->Arg(64 * KiB);
}

void useHexSizes(Benchmark* registered)
{
    registered->Arg(32)->Arg(64 * KiB);
}

void useFileSize(Benchmark* registered)
{
    registered->Arg(64 * MiB)->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK(shortText<true>)->Name("des3_short_encrypt/ours")->Arg(16);
BENCHMARK(shortTextOpenSsl<true>)->Name("des3_short_encrypt/peer_openssl")->Arg(16);
BENCHMARK(shortText<false>)->Name("des3_short_decrypt/ours")->Arg(16);
BENCHMARK(shortTextOpenSsl<false>)->Name("des3_short_decrypt/peer_openssl")->Arg(16);

BENCHMARK(longText<true>)->Name("des3_encrypt/ours")->Apply(useCipherSizes);
BENCHMARK_TEMPLATE(longTextPeer, CipherPeers::OpenSsl, true)
    ->Name("des3_encrypt/peer_openssl")
    ->Apply(useCipherSizes);
BENCHMARK_TEMPLATE(longTextPeer, CipherPeers::Gcrypt, true)
    ->Name("des3_encrypt/peer_gcrypt")
    ->Apply(useCipherSizes);
BENCHMARK_TEMPLATE(longTextPeer, CipherPeers::Nettle, true)
    ->Name("des3_encrypt/peer_nettle")
    ->Apply(useCipherSizes);
BENCHMARK(longText<false>)->Name("des3_decrypt/ours")->Apply(useCipherSizes);
BENCHMARK_TEMPLATE(longTextPeer, CipherPeers::OpenSsl, false)
    ->Name("des3_decrypt/peer_openssl")
    ->Apply(useCipherSizes);
BENCHMARK_TEMPLATE(longTextPeer, CipherPeers::Gcrypt, false)
    ->Name("des3_decrypt/peer_gcrypt")
    ->Apply(useCipherSizes);
BENCHMARK_TEMPLATE(longTextPeer, CipherPeers::Nettle, false)
    ->Name("des3_decrypt/peer_nettle")
    ->Apply(useCipherSizes);

BENCHMARK(hash)->Name("sha256/ours")->Apply(useHashSizes);
BENCHMARK(hashPeer<CipherPeers::openSslSha256>)->Name("sha256/peer_openssl")->Apply(useHashSizes);
BENCHMARK(hashPeer<CipherPeers::gcryptSha256>)->Name("sha256/peer_gcrypt")->Apply(useHashSizes);
BENCHMARK(hashPeer<CipherPeers::nettleSha256>)->Name("sha256/peer_nettle")->Apply(useHashSizes);
BENCHMARK(hashQt)->Name("sha256/peer_qt")->Apply(useHashSizes);

BENCHMARK(base64Encode)->Name("base64_encode/ours")->Apply(useBase64Sizes);
BENCHMARK(base64EncodeOpenSsl)->Name("base64_encode/peer_openssl")->Apply(useBase64Sizes);
BENCHMARK(base64EncodeQt)->Name("base64_encode/peer_qt")->Apply(useBase64Sizes);
BENCHMARK(base64Decode)->Name("base64_decode/ours")->Apply(useBase64Sizes);
BENCHMARK(base64DecodeDirty)->Name("base64_decode/ours_dirty")->Arg(64 * KiB);
BENCHMARK(base64DecodeOpenSsl)->Name("base64_decode/peer_openssl")->Apply(useBase64Sizes);

BENCHMARK(hexEncode)->Name("hex_encode/ours")->Apply(useHexSizes);
BENCHMARK(hexEncodeOpenSsl)->Name("hex_encode/peer_openssl")->Apply(useHexSizes);
BENCHMARK(hexDecode)->Name("hex_decode/ours")->Apply(useHexSizes);
BENCHMARK(hexDecodeOpenSsl)->Name("hex_decode/peer_openssl")->Apply(useHexSizes);

BENCHMARK_CAPTURE(file, encrypt, 1)->Name("file_encrypt/ours")->Apply(useFileSize);
BENCHMARK_CAPTURE(fileAlone, encrypt, 1)->Name("file_encrypt/peer_without_files")->Apply(useFileSize);
BENCHMARK_CAPTURE(file, decrypt, 2)->Name("file_decrypt/ours")->Apply(useFileSize);
BENCHMARK_CAPTURE(fileAlone, decrypt, 2)->Name("file_decrypt/peer_without_files")->Apply(useFileSize);
BENCHMARK_CAPTURE(file, fingerprint, 3)->Name("file_fingerprint/ours")->Apply(useFileSize);
BENCHMARK_CAPTURE(fileAlone, fingerprint, 3)->Name("file_fingerprint/peer_without_files")->Apply(useFileSize);

int main(int argc, char** argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    registerPaths();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
