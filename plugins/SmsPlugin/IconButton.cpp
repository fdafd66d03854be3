#include "IconButton.h"

#include "common/CommonUtils.h"
#include "support/Text.h"

#include <QToolButton>

QString pluginFile(const QString& name)
{
    return QStringLiteral("%1/plugins/%2/%3").arg(CommonUtils::GetPluginLibraryPath(), thisPlugin(), name);
}

void nameButton(QToolButton* button, const Caption& parts)
{
    const QString keys = parts.shortcut.toString(QKeySequence::NativeText);
    button->setText(parts.text);
    button->setAccessibleName(parts.text);
    button->setToolTip(keys.isEmpty() ? parts.text : QStringLiteral("%1 (%2)").arg(parts.text, keys));
    button->setShortcut(parts.shortcut);
}
