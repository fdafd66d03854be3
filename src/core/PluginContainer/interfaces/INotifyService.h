#pragma once

#include "skylume_global.h"

#include <QtPlugin>

/// The notification service: asks the worker threads of all plugins to finish when the application closes, plays
/// the sounds of events and shows notifications on the desktop.
/// Obtained with GetPlugin(PluginIds::NotifyService, PluginIds::NotifyStopService).
///
/// ### How a worker is asked to finish
///
/// The plugin publishes a second object under PluginIds::FirstService, which workers use. It is a QObject
/// without an interface of its own:
///
/// | member | meaning |
/// | --- | --- |
/// | property `stopping` (bool) | true once the application is closing; never reset. Readable on any thread. |
/// | signal `stopRequested()` | emitted once, when `stopping` becomes true, on the thread that closes the application |
/// | slot `playSound(QString)` | GUI thread: plays the sound that the user has chosen for "message", "call" or "connection-lost" |
/// | slot `showNotice(QString, QString, QString, QString)` | GUI thread: shows a title and a text on the desktop; a click shows the page of the plugin with that clsid. The last argument may be left out; it names an event such as "data-limit", whose notifications the setting `show-` and its name can switch off. The strings are copied, so they may be literals of a plugin |
///
/// Start workers on the GUI thread. Connect the signal directly, because the thread of a worker may not run an
/// event loop:
///
///     IPluginContainer* const container = Startup::GetPluginContainer();
///     QObject* const notifier = container->GetPlugin(PluginIds::NotifyService, PluginIds::FirstService);
///     if (notifier && notifier->property("stopping").toBool())
///         return; // too late to start
///     worker->start(); // a QThread with the slot finish(), which calls requestInterruption()
///     if (notifier)
///         QObject::connect(notifier, SIGNAL(stopRequested()), worker, SLOT(finish()), Qt::DirectConnection);
///
/// The worker calls CommonUtils::ThreadCountInc() when it starts and CommonUtils::ThreadCountDec() when it
/// ends. The closing application waits up to 10 seconds for all workers together, before the first plugin is
/// destroyed. The class BackgroundWork of the library Skylume::PluginSupport does all of this.
class SKYLUME_EXPORT INotifyService
{
public:
    virtual ~INotifyService();

    /// Asks every connected worker to finish soon: sets `stopping` and emits `stopRequested()`. Returns
    /// without waiting for the workers. Further calls do nothing.
    virtual void StopThreads() = 0;
};

Q_DECLARE_INTERFACE(INotifyService, "com.velquor.skylume.plugin.INotifyService")
