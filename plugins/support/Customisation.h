#pragma once

#include <QObject>

/// Says when the main frame has customised the application, for pages that embed or ask other plugins: device events come
/// earlier, while the plugins for the new modem are not loaded yet. GUI thread only.
///
///     connect(&m_customisation, &Customisation::applied, this, &HelloPage::refresh);
class Customisation : public QObject
{
    Q_OBJECT

public:
    /// Create it after the main frame, as pages are. With a main frame that does not say when, it never emits anything.
    explicit Customisation(QObject* parent = nullptr);

Q_SIGNALS:
    /// The plugins for the attached modems have been loaded and all others unloaded, and the main window shows their pages.
    /// Emitted at the end of the start and after each change of modems, also if that changed no plugin.
    void applied();
};
