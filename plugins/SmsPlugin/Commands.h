#pragma once

#include "Message.h"

/// What can be done with a message. The numbers are those of the buttons in SmsToolBar.xml.
enum class Command { Open = 1, Write, Reply, Call, VideoCall, Delete, Search, Copy, MarkAllRead };

struct CommandInfo
{
    Command command;
    const char* id;       ///< string: label and shortcut
    const char* menuName; ///< of the entry in MessageMenu.xml
};

constexpr CommandInfo CommandInfos[] = {
    {Command::Open, "IDS_SMS_OPEN", "Open"},
    {Command::Write, "IDS_SMS_WRITE", "Write"},
    {Command::Reply, "IDS_SMS_REPLY", "Reply"},
    {Command::Call, "IDS_SMS_CALL", "Call"},
    {Command::VideoCall, "IDS_SMS_VIDEO", "Video"},
    {Command::Delete, "IDS_SMS_DELETE", "Delete"},
    {Command::Search, "IDS_MENU_SEARCH", "Search"},
    {Command::Copy, "IDS_SMS_COPY", "Copy"},
    {Command::MarkAllRead, "IDS_SMS_MARK_ALL", "MarkAllRead"},
};

/// What commands are for.
struct CommandContext
{
    const Message* message; ///< the current one; null without one
    QString address; ///< of that message, or of the current conversation if it has only a draft; may be empty
    bool hasUnread;  ///< whether all messages are known and some of them are unread
};

/// Whether a command makes sense.
bool isPossible(Command command, const CommandContext& context);
