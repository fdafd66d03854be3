// Compiled into each plugin that uses the library: SKYLUME_PLUGIN_NAME is the name of that plugin.
#include "support/Text.h"

QString thisPlugin()
{
    return QString::fromLatin1(SKYLUME_PLUGIN_NAME);
}
