#pragma once

#include "EventSettings.h"
#include "support/Page.h"

class EventSounds;
class QComboBox;
class QGridLayout;

/// The page of the settings dialog: a sound for each event, with a button to hear it, and a switch for all.
/// Choices are stored at once.
class SoundsPage : public Page
{
    Q_OBJECT

public:
    /// @param sounds plays the tests; must outlive the page
    SoundsPage(EventSounds& sounds, QWidget* parent);

private:
    QWidget* makeMuteSwitch();
    void addRow(QGridLayout* rows, Event event);

    EventSounds& m_sounds;
};
