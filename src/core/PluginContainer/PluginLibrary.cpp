#include "PluginContainer/PluginLibrary_p.h"

#include "common/GuardedCall.h"

#include <QCoreApplication>
#include <QFile>
#include <QLibrary>
#include <QPluginLoader>
#include <QtEndian>

namespace {

using Fault = PluginStatus::Fault;

constexpr int HeaderSize = 4096; ///< holds what platformOf() reads of every usual library

// What platformOf() returns of an ELF file, after the magic number: class, byte order and machine.
constexpr int ElfByteOrder = 5;
constexpr int ElfMachine = 6;
constexpr char BigEndian = 2;

// What it returns of a PE file: the machine follows the signature.
constexpr int PeMachine = 4;
constexpr int PeSize = 6;

/// Identifies the processor and the system that an ELF or PE file is built for; empty for other files and for
/// one that is cut off.
QByteArray platformOf(const QString& path)
{
    constexpr int elfMachineOffset = 18;
    constexpr int peOffsetOffset = 60;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray header = file.read(HeaderSize);
    if (header.startsWith("\x7F\x45LF"))
        return header.size() < elfMachineOffset + 2
                   ? QByteArray()
                   : header.left(ElfMachine) + header.mid(elfMachineOffset, 2);
    if (!header.startsWith("MZ") || header.size() < peOffsetOffset + 4)
        return {};
    const auto offset = qFromLittleEndian<quint32>(header.constData() + peOffsetOffset);
    const QByteArray platform =
        offset < HeaderSize ? header.mid(static_cast<int>(offset), PeSize) : QByteArray();
    return platform.size() == PeSize ? platform : QByteArray();
}

struct Machine
{
    bool isElf;
    quint16 code;
    const char* name;
};

constexpr Machine Machines[] = {
    {true, 3, "x86"},       {true, 40, "ARM"},         {true, 62, "x86-64"},
    {true, 183, "ARM64"},   {true, 243, "RISC-V"},     {false, 0x014C, "x86"},
    {false, 0x01C4, "ARM"}, {false, 0x8664, "x86-64"}, {false, 0xAA64, "ARM64"},
};

quint16 machineCode(const QByteArray& platform, bool isElf)
{
    const char* const machine = platform.constData() + (isElf ? ElfMachine : PeMachine);
    const bool isBigEndian = isElf && platform[ElfByteOrder] == BigEndian;
    return isBigEndian ? qFromBigEndian<quint16>(machine) : qFromLittleEndian<quint16>(machine);
}

/// The result of platformOf() in words.
/// @param platform not empty
QString describePlatform(const QByteArray& platform)
{
    const bool isElf = platform.startsWith('\x7F');
    const quint16 code = machineCode(platform, isElf);
    QString processor = QStringLiteral("processor %1").arg(code);
    for (const Machine& machine : Machines)
        if (machine.isElf == isElf && machine.code == code)
            processor = QLatin1String(machine.name);
    return (isElf ? QStringLiteral("a Linux library for ") : QStringLiteral("a Windows library for ")) +
           processor;
}

PluginFault faultOf(const QPluginLoader& loader)
{
    const QString error = loader.errorString();
    const QByteArray platform = platformOf(loader.fileName());
    const QByteArray ours = platformOf(QCoreApplication::applicationFilePath());
    if (!platform.isEmpty() && !ours.isEmpty() && platform != ours)
        return {Fault::OtherPlatform, error, loader.fileName(), describePlatform(ours),
                describePlatform(platform)};
    if (loader.metaData().isEmpty())
        return {Fault::NotAPlugin, error, loader.fileName(), QStringLiteral("a Qt plugin"),
                QStringLiteral("a file without the data of one")};
    return {Fault::NotLoadable, error, loader.fileName(),
            QStringLiteral("all libraries and symbols that it uses"), error};
}

} // namespace

std::unique_ptr<QPluginLoader> PluginLibrary::open(const QString& path, PluginFault& fault)
{
    auto loader = std::make_unique<QPluginLoader>(path);
    // With this hint a missing symbol makes loading fail, not a later call. It replaces Qt's default hint, which
    // would prevent unloading.
    loader->setLoadHints(QLibrary::ResolveAllSymbolsHint);
    QObject* root = nullptr;
    const auto onException = [&fault, &loader](const QString& text) {
        fault = {Fault::ConstructorThrew, QStringLiteral("The plugin's constructor threw: ") + text,
                 loader->fileName(), QStringLiteral("a constructor that returns"), text};
    };
    if (!guardedCall(
            "load", path, [&] { root = loader->instance(); }, onException)) {
        loader->unload();
        return nullptr;
    }
    if (root)
        return loader;
    fault = faultOf(*loader);
    return nullptr;
}
