#include "support/UserFiles.h"

#include <QDir>
#include <QStandardPaths>

QString userFilesFolder()
{
    const QString chosen = qEnvironmentVariable("QRVL_USER_DIR");
    return chosen.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                                  QLatin1String("/skylume")
                            : QDir::fromNativeSeparators(chosen);
}
