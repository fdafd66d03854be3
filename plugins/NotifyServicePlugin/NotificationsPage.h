#pragma once

#include "support/Page.h"

class EventSounds;

/// The page of the settings dialog: which notifications the desktop shows, and the sounds of events. Choices are
/// stored at once.
class NotificationsPage : public Page
{
    Q_OBJECT

public:
    /// @param sounds plays the tests; must outlive the page
    NotificationsPage(EventSounds& sounds, QWidget* parent);
};
