// Ciphers and hashes, compared with those of OpenSSL, libgcrypt, nettle and Qt. The argument is the size in
// bytes.
#include "CipherPeers.h"
#include "CipherSamples.h"

#include "common/ByteStrings.h"
#include "common/ciphers/CipherContext.h"
#include "common/ciphers/ProcessorPaths_p.h"
#include "common/ciphers/Sha256.h"

#include <QByteArray>
#include <QCryptographicHash>

namespace {

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

int main(int argc, char** argv)
{
    registerPaths();
    runAll(argc, argv);
}
