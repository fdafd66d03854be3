// Encrypted files, compared with the cipher and the encoding in memory.
#include "CipherSamples.h"

#include "common/ByteStrings.h"
#include "common/CommonUtils.h"
#include "common/ciphers/Sha256.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

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

void useFileSize(benchmark::internal::Benchmark* registered)
{
    registered->Arg(64 << 20)->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK_CAPTURE(file, encrypt, 1)->Name("file_encrypt/ours")->Apply(useFileSize);
BENCHMARK_CAPTURE(fileAlone, encrypt, 1)->Name("file_encrypt/peer_without_files")->Apply(useFileSize);
BENCHMARK_CAPTURE(file, decrypt, 2)->Name("file_decrypt/ours")->Apply(useFileSize);
BENCHMARK_CAPTURE(fileAlone, decrypt, 2)->Name("file_decrypt/peer_without_files")->Apply(useFileSize);
BENCHMARK_CAPTURE(file, fingerprint, 3)->Name("file_fingerprint/ours")->Apply(useFileSize);
BENCHMARK_CAPTURE(fileAlone, fingerprint, 3)->Name("file_fingerprint/peer_without_files")->Apply(useFileSize);

int main(int argc, char** argv)
{
    runAll(argc, argv);
}
