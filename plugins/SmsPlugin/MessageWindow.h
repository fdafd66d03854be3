#pragma once

#include "ExtendDialog/ExtendDialog.h"
#include "MessageReader.h"

/// A message in a window of its own, which can be minimised to a tile. Deleted when it is closed.
class MessageWindow : public ExtendDialog
{
    Q_OBJECT

public:
    /// Shows a message. If it already has a window, that one comes to the front.
    /// @param page closes the window when it is deleted, as it is before the plugin is unloaded
    static void open(const Message& message, QWidget* parent, const QObject* page);

private:
    MessageWindow(const Message& message, QWidget* parent);
};
