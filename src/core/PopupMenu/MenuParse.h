#pragma once

#include "PopupMenu/MenuXmlInfo.h"
#include "skylume_global.h"

#include <QList>
#include <QString>

class QXmlStreamReader;

namespace MENU {

/// Reads the menus of a plugin from its menu file, changed as the file says for the modem's customisation
/// name. The tree belongs to the parser. Used on one thread at a time.
///
/// The reader uses the editing operations itself; plugins may change the tree with them.
class SKYLUME_EXPORT MenuParse
{
public:
    MenuParse(); ///< without menus

    /// Reads a file. A missing or faulty one leaves the menus that were read before the fault.
    /// @param folder name of the plugin's folder below "plugins"
    /// @param file   name of the file in it
    MenuParse(QString folder, QString file);
    ~MenuParse();

    /// Asks the device service for the customisation name and remembers it.
    /// @return empty when there is none
    QString GetOperator();

    /// The menus in file order. The list and its records stay the parser's.
    QList<STMENUINFO*>* GetMenuInfoList() const { return m_pMenuInfoList; }

    /// Deletes all menus.
    void release();

    // ---- Reading. Except for LoadFile(), each operation reads on from the reader's current position.

    /// Adds the menus of a file, see the constructor.
    /// @return false if the file cannot be read, but also for every file with the element "qrvldoc"; of no
    ///         use to callers
    bool LoadFile(QString folder, QString file);

    /// Adds the menus of all elements "qrvldoc".
    /// @return false without a device, after a fault and after every "qrvldoc"
    bool ReadFile(QXmlStreamReader& reader);

    /// Adds the menus up to the end of the document.
    /// @return always false
    bool ReadInfo(QXmlStreamReader& reader);

    /// Adds the menus up to the end of the customisation part, and applies the block of the customisation
    /// name. Reads to the end of the document if there is none.
    void ReadMenuItem(QXmlStreamReader& reader);

    /// Moves to the block of the customisation name: the first element, from the current one on, with this
    /// attribute "name".
    /// @return false when there is none
    bool CustomizeOperator(QXmlStreamReader& reader);

    /// Applies a block, up to the end tag "customize".
    /// @return always true
    bool CustomizeItemParse(QXmlStreamReader& reader);

    // ---- Editing

    /// Appends an entry to a menu.
    /// @param menuName name of the menu
    /// @param parent   name of one of its sub-menus, or "null" for the menu itself
    /// @param type     MenuXmlInfo::Item or MenuXmlInfo::Separator; others leave the entry's type unset
    /// @return the entry, which belongs to the menu; null when menu or sub-menu do not exist
    MenuXmlInfo* AddMenuType(QString menuName, QString parent, int type);
    MenuXmlInfo* AddMenuItem(QString menuName, QString parent);      ///< AddMenuType() for an item
    MenuXmlInfo* AddMenuSeparator(QString menuName, QString parent); ///< AddMenuType() for a separator

    /// Appends an empty sub-menu to a menu.
    /// @return the sub-menu, which belongs to the menu; null when there is no such menu
    MenuXmlInfo* AddMenuPopup(QString menuName);

    /// Deletes the first entry with this string identifier.
    /// @param parent name of the sub-menu that holds it, or "null"
    void DeleteMenuItem(QString id, QString parent, QString menuName);

    /// Deletes the first sub-menu with this string identifier, and its entries.
    void DeleteMenuPopup(QString id, QString menuName);

private:
    Q_DISABLE_COPY_MOVE(MenuParse)

    struct Position;
    void readItem(QXmlStreamReader& reader, const Position& position);
    void customizeItem(QXmlStreamReader& reader, const Position& position);
    void addNamedEntry(QXmlStreamReader& reader, const QString& id, MenuXmlInfo* entry);
    void beginMenu(QXmlStreamReader& reader, Position& position);

    STMENUINFO* findMenu(const QString& name) const;
    QList<MenuXmlInfo*>* entriesOf(const QString& menuName, const QString& parent);

    QList<STMENUINFO*>* m_pMenuInfoList;
    QString m_strFileName; ///< loaded last
    QString m_strOperator; ///< customisation name

    // Where the last parent was found, so that its next child is added without a search.
    const STMENUINFO* m_pLastMenu = nullptr;
    int m_iLastPopup = 0; ///< index in the menu
};

} // namespace MENU
