#pragma once

#include "PopupMenu/MenuXmlInfo.h"
#include "skylume_global.h"

#include <QList>
#include <QString>

class QXmlStreamReader;

namespace MENU {

/// Reads the menus of a plugin from its menu file, changed as the file says for the modem's customisation name.
/// The tree belongs to the parser. Used on one thread at a time.
///
/// The editing operations are what the reader itself uses; plugins may change the tree with them.
class SKYLUME_EXPORT MenuParse
{
public:
    MenuParse();

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

    // ---- Reading; each step goes on from where the reader is

    /// Adds the menus of a file.
    /// @return false for a file that cannot be read, but also for every file with the element "qrvldoc"; of no
    ///         use to callers
    bool LoadFile(QString folder, QString file);
    bool ReadFile(QXmlStreamReader& reader);
    bool ReadInfo(QXmlStreamReader& reader);
    void ReadMenuItem(QXmlStreamReader& reader);

    /// Moves to the block of the customisation name.
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
    MenuXmlInfo* AddMenuItem(QString menuName, QString parent);
    MenuXmlInfo* AddMenuSeparator(QString menuName, QString parent);

    /// Appends an empty sub-menu to a menu.
    /// @return null when there is no such menu
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
    bool beginMenu(QXmlStreamReader& reader, Position& position);
    bool customize(QXmlStreamReader& reader);

    STMENUINFO* findMenu(const QString& name) const;
    QList<MenuXmlInfo*>* entriesOf(const QString& menuName, const QString& parent);

    QList<STMENUINFO*>* m_pMenuInfoList;
    QString m_strFileName;               ///< loaded last
    QString m_strOperator;               ///< customisation name
    MenuXmlInfo* m_pLastPopup = nullptr; ///< found last, to spare the search for the next of its children
    QString m_strLastPopup;              ///< the names it was found by
};

} // namespace MENU
