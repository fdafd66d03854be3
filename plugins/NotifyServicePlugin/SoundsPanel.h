#pragma once

#include "EventSettings.h"

#include <QWidget>

class EventSounds;
class QGridLayout;

/// Chooses a sound for each event, with a button to hear it. Choices are stored at once.
class SoundsPanel : public QWidget
{
    Q_OBJECT

public:
    /// @param sounds plays the tests; must outlive the panel
    explicit SoundsPanel(EventSounds& sounds, QWidget* parent = nullptr);

private:
    void addRow(QGridLayout* rows, Event event);

    EventSounds& m_sounds;
};
