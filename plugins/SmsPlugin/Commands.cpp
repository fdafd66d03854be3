#include "Commands.h"

bool isPossible(Command command, const CommandContext& context)
{
    switch (command) {
    case Command::Write:
    case Command::Search:
        return true;
    case Command::Reply:
        return isNumber(context.address) || (!context.message && !context.address.isEmpty());
    case Command::Call:
    case Command::VideoCall:
        return isNumber(context.address);
    case Command::MarkAllRead:
        return context.hasUnread;
    default:
        return context.message;
    }
}
