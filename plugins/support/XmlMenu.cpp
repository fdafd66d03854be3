#include "support/XmlMenu.h"

#include "PopupMenu/QBuildMenu.h"
#include "common/CommonUtils.h"
#include "common/Log.h"
#include "support/Text.h"

#include <QAction>
#include <QMenu>

namespace {

void openAddress(QAction* action, const QString& address)
{
    QObject::connect(action, &QAction::triggered, action, [address] { CommonUtils::OpenUrl(address); });
}

/// Connects an action that still has the entry's name as its text.
void prepare(QAction* action, const MenuCommands& commands)
{
    const QString name = action->text();
    const int nameEnd = name.indexOf(QLatin1Char(':')) + 1;
    const QString key = nameEnd > 0 ? name.left(nameEnd) : name;
    if (const MenuCommand command = commands.value(key)) {
        command(action, name.mid(key.size()));
    } else if (!action->menu()) {
        LOG_WARNING("%s: %s: there is no command for the menu entry %s", LOG_FILE, LOG_FUNCTION,
                    qUtf8Printable(name));
        action->setEnabled(false);
    }
}

/// An entry without a string keeps its name, so that the author of the file notices; one whose string names no shortcut
/// keeps that of its command.
void translate(const MENU::QActionInfo& entry)
{
    const QByteArray id = entry.textID.toLatin1();
    if (text(id.constData()).isEmpty())
        return;
    const QKeySequence shortcut = entry.action->shortcut();
    setCaption(entry.action, id.constData());
    if (entry.action->shortcut().isEmpty())
        entry.action->setShortcut(shortcut);
}

} // namespace

XmlMenu::XmlMenu(const QString& file, const QString& menuName, const MenuCommands& commands, QWidget* parent)
    : QWidget(parent)
{
    hide();
    MenuCommands known = commands;
    known.insert(QStringLiteral("url:"), openAddress);
    QList<MENU::QActionInfo> entries;
    MENU::QBuildMenu builder(thisPlugin(), file);
    m_menu = reinterpret_cast<QMenu*>(builder.CreateMenuBar(menuName, this, &entries));
    for (const MENU::QActionInfo& entry : qAsConst(entries)) {
        prepare(entry.action, known);
        m_actions.append(entry.action);
    }
    keepTranslated(this, [entries] {
        for (const MENU::QActionInfo& entry : entries)
            translate(entry);
    });
}

void XmlMenu::useShortcutsIn(QWidget* window)
{
    window->addActions(m_actions);
}
