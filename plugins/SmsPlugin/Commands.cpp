#include "Commands.h"

bool isPossible(Command command, const CommandContext& context)
{
    switch (command) {
    case Command::Write:
    case Command::Search:
        return true;
    case Command::Reply:
    case Command::Call:
    case Command::VideoCall:
        return context.message && isNumber(context.message->address);
    case Command::MarkAllRead:
        return context.hasUnread;
    default:
        return context.message;
    }
}
