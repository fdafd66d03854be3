#include "Commands.h"

bool isPossible(Command command, const Message* message)
{
    switch (command) {
    case Command::Write:
    case Command::Search:
        return true;
    case Command::Reply:
    case Command::Call:
    case Command::VideoCall:
        return message && isNumber(message->address);
    default:
        return message;
    }
}
