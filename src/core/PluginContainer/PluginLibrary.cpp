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

/// Identifies the processor and the system that an ELF or PE file is built for; empty for other files.
QByteArray platformOf(const QString& path)
{
    constexpr int elfMachineOffset = 18;
    constexpr int peOffsetOffset = 60;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray header = file.read(HeaderSize);
    if (header.startsWith("\x7F\x45LF")) // its class and byte order follow the magic number
        return header.left(6) + header.mid(elfMachineOffset, 2);
    if (!header.startsWith("MZ") || header.size() < peOffsetOffset + 4)
        return {};
    const auto offset = qFromLittleEndian<quint32>(header.constData() + peOffsetOffset);
    return offset < HeaderSize ? header.mid(static_cast<int>(offset), 6) : QByteArray();
}

Fault reasonOfFailure(const QPluginLoader& loader)
{
    const QByteArray platform = platformOf(loader.fileName());
    if (!platform.isEmpty() && platform != platformOf(QCoreApplication::applicationFilePath()))
        return Fault::OtherPlatform;
    return loader.metaData().isEmpty() ? Fault::NotAPlugin : Fault::NotLoadable;
}

} // namespace

std::unique_ptr<QPluginLoader> PluginLibrary::open(const QString& path, PluginFault& fault)
{
    auto loader = std::make_unique<QPluginLoader>(path);
    // A missing symbol is to fail here, not in the call that needs it. Without the hint that Qt sets by
    // default the library can be unloaded.
    loader->setLoadHints(QLibrary::ResolveAllSymbolsHint);
    QObject* root = nullptr;
    const auto onException = [&fault](const QString& text) {
        fault = {Fault::ConstructorThrew, QStringLiteral("The plugin's constructor threw: ") + text};
    };
    if (!guardedCall(
            "load", path, [&] { root = loader->instance(); }, onException)) {
        loader->unload();
        return nullptr;
    }
    if (root)
        return loader;
    fault = {reasonOfFailure(*loader), loader->errorString()};
    return nullptr;
}
