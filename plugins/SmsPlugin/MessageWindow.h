#pragma once

#include "ExtendDialog/ExtendDialog.h"
#include "Message.h"

/// A message in a window of its own, which can be minimised to a tile. Deleted when it is closed.
class MessageWindow : public ExtendDialog
{
    Q_OBJECT

public:
    /// Shows a message. If it already has a window, that one comes to the front.
    static void open(const Message& message, QWidget* parent);

private:
    MessageWindow(const Message& message, QWidget* parent);
};
