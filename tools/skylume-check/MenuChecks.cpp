// Checks of menu files: what the parser of menus drops without a message, and where its search for an operator's block
// may surprise.
#include "Checks.h"

#include "Findings.h"
#include "Installation.h"

#include <QSet>

namespace {

constexpr QLatin1String NoParent("null");

/// The entries of a file's menus, as they become known to the parser.
struct Menus
{
    QSet<QString> names;
    QSet<QPair<QString, QString>> popups;                  ///< menu, name
    QSet<std::pair<QPair<QString, QString>, QString>> ids; ///< (menu, parent), identifier

    bool hasParent(const QString& menu, const QString& parent) const
    {
        return parent == NoParent || popups.contains({menu, parent});
    }
};

/// Names of operators, which blocks are looked up by.
QSet<QString> operatorNames(const Installation& installation)
{
    QSet<QString> names{installation.operatorName()};
    for (const IniLine& line : installation.modems().lines())
        if (line.key == QLatin1String("customize"))
            names.insert(line.value);
    names.remove({});
    return names;
}

class MenuCheck
{
public:
    MenuCheck(const Installation& installation, const InstalledXml& file, const QSet<QString>& operators,
              Findings& findings)
        : m_installation(installation)
        , m_file(file)
        , m_tree(file.tree)
        , m_operators(operators)
        , m_findings(findings)
    {
    }

    void run();

private:
    void checkPlainMenu(int menu);
    void checkMenu(int menu, bool isChange);
    void checkItem(int item, const QString& menu, const QString& parent, bool isChange);
    void checkRemoval(int item, const QString& menu, const QString& place);
    void checkText(const XmlNode& item);
    void checkCustomization(int customize);
    void checkBlock(int block, bool isLast);
    QString attribute(int node, const char* name) const
    {
        return m_tree[node].attribute(QLatin1String(name));
    }
    void add(Kind kind, int node, const QString& message)
    {
        m_findings.add(kind, m_file.path, m_tree[node].line, message);
    }

    const Installation& m_installation;
    const InstalledXml& m_file;
    const XmlTree& m_tree;
    QSet<QString> m_operators;
    Findings& m_findings;
    Menus m_menus;
    QString m_current;      ///< the menu that was named last
    QSet<QString> m_blocks; ///< names of the blocks so far
    bool m_hasBlocks = false;
};

void MenuCheck::run()
{
    for (const int root : m_tree.named(QStringLiteral("qrvldoc")))
        for (const int child : m_tree[root].children) {
            if (m_tree[child].name == QLatin1String("menu"))
                checkPlainMenu(child);
            else if (m_tree[child].name == QLatin1String("customize"))
                checkCustomization(child);
        }
}

void MenuCheck::checkPlainMenu(int menu)
{
    if (m_hasBlocks)
        add(Kind::MenuAfterBlocks, menu, QStringLiteral("there is a menu after \"customize\""));
    checkMenu(menu, false);
}

void MenuCheck::checkMenu(int menu, bool isChange)
{
    const QString parent = attribute(menu, "parent");
    if (isChange || parent == NoParent)
        m_current = attribute(menu, "name");
    if (isChange && !m_menus.names.contains(m_current))
        return add(Kind::UnknownMenu, menu, QStringLiteral("there is no menu \"%1\"").arg(m_current));
    m_menus.names.insert(m_current);
    if (!m_menus.hasParent(m_current, parent))
        return add(Kind::UnknownParent, menu,
                   QStringLiteral("the menu \"%1\" has no sub-menu \"%2\"").arg(m_current, parent));
    for (const int item : m_tree[menu].children)
        checkItem(item, m_current, parent, isChange);
}

void MenuCheck::checkItem(int item, const QString& menu, const QString& parent, bool isChange)
{
    const QString type = attribute(item, "type");
    const QString action = attribute(item, "action");
    if (type == QLatin1String("SEPERATOR"))
        return;
    const bool isPopup = type == QLatin1String("POPUP");
    const QString place = isPopup ? NoParent : parent;
    if (isChange && action.isEmpty())
        return add(Kind::NoAction, item,
                   QStringLiteral("the entry \"%1\" has no action").arg(m_tree[item].text));
    if (isChange && action == QLatin1String("rem"))
        return checkRemoval(item, menu, place);
    checkText(m_tree[item]);
    m_menus.ids.insert({{menu, place}, attribute(item, "id")});
    if (isPopup)
        m_menus.popups.insert({menu, m_tree[item].text});
}

void MenuCheck::checkRemoval(int item, const QString& menu, const QString& place)
{
    const QString id = attribute(item, "id");
    if (!m_menus.ids.contains({{menu, place}, id}))
        add(Kind::NothingToRemove, item, QStringLiteral("there is no entry \"%1\" in \"%2\"").arg(id, menu));
}

void MenuCheck::checkText(const XmlNode& item)
{
    const QString id = item.attribute(QStringLiteral("id"));
    if (!id.isEmpty() && !m_installation.hasText(m_file.plugin, id))
        m_findings.add(Kind::UnknownText, m_file.path, item.line,
                       QStringLiteral("no language file of %1 has the text \"%2\"").arg(m_file.plugin, id));
}

void MenuCheck::checkCustomization(int customize)
{
    const QVector<int>& blocks = m_tree[customize].children;
    m_hasBlocks = true;
    for (const int block : blocks)
        m_operators.insert(attribute(block, "name"));
    m_operators.remove({});
    for (const int block : blocks)
        checkBlock(block, block == blocks.last());
}

void MenuCheck::checkBlock(int block, bool isLast)
{
    const QString name = attribute(block, "name");
    if (name.isEmpty() || m_tree[block].name == QLatin1String("menu"))
        return add(Kind::NamelessBlock, block,
                   QStringLiteral("\"%1\" is no operator's block").arg(m_tree[block].name));
    m_blocks.insert(name);
    if (!isLast)
        add(Kind::BlockRunsOn, block, QStringLiteral("the block of \"%1\" is not the last one").arg(name));
    for (const int menu : m_tree[block].children) {
        const QString menuName = attribute(menu, "name");
        if (m_operators.contains(menuName) && !m_blocks.contains(menuName))
            add(Kind::HiddenBlock, menu,
                QStringLiteral("the menu \"%1\" is named like an operator").arg(menuName));
        checkMenu(menu, true);
    }
}

} // namespace

void checkMenus(const Installation& installation, Findings& findings)
{
    const QSet<QString> operators = operatorNames(installation);
    installation.forEach(Format::Menu, [&](const InstalledXml& file) {
        MenuCheck(installation, file, operators, findings).run();
    });
}
