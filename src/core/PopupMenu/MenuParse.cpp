// Reads menu files.
#include "PopupMenu/MenuParse.h"

#include "common/CommonUtils.h"
#include "common/Log.h"
#include "common/files/XmlFile_p.h"

#include <qrvl.h>

#include <QFile>
#include <QXmlStreamReader>

#include <array>

using namespace MENU;

namespace {

constexpr QLatin1String NoParent("null");
constexpr QLatin1String MenuElement("menu");
constexpr QLatin1String ItemElement("item");
constexpr QLatin1String CustomizeElement("customize");

struct TypeName
{
    QLatin1String name;
    MenuXmlInfo::Type type;
};

constexpr TypeName TypeNames[] = {
    {QLatin1String("ITEM"), MenuXmlInfo::Item},
    {QLatin1String("POPUP"), MenuXmlInfo::Popup},
    {QLatin1String("SEPERATOR"), MenuXmlInfo::Separator},
};

QString attribute(const QXmlStreamReader& reader, const char* name)
{
    return reader.attributes().value(QLatin1String(name)).toString();
}

MenuXmlInfo::Type typeOf(const QXmlStreamReader& reader)
{
    const QXmlStreamAttributes attributes = reader.attributes();
    const QStringRef wanted = attributes.value(QLatin1String("type"));
    for (const TypeName& candidate : TypeNames)
        if (wanted == candidate.name)
            return candidate.type;
    return MenuXmlInfo::Unset;
}

} // namespace

/// The menu and the sub-menu to which the reader adds entries.
struct MenuParse::Position
{
    QString menu;
    QString parent;
};

MenuParse::MenuParse()
    : m_pMenuInfoList(new QList<STMENUINFO*>)
{
}

MenuParse::MenuParse(QString folder, QString file)
    : MenuParse()
{
    GetOperator();
    LoadFile(std::move(folder), std::move(file));
}

MenuParse::~MenuParse()
{
    release();
    delete m_pMenuInfoList;
}

void MenuParse::release()
{
    m_pLastMenu = nullptr;
    qDeleteAll(*m_pMenuInfoList);
    m_pMenuInfoList->clear();
}

QString MenuParse::GetOperator()
{
    std::array<char, QRVL_CUSTOMIZE_NAME_SIZE> name{};
    m_strOperator.clear();
    if (QRVL_DevSrv_GetCustomizeName(name.data()) == QRVL_OK)
        m_strOperator = QString::fromUtf8(name.data(), static_cast<int>(qstrnlen(name.data(), name.size())));
    return m_strOperator;
}

bool MenuParse::LoadFile(QString folder, QString file)
{
    const QString path =
        CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/") + folder + QLatin1Char('/') + file;
    QFile device(path);
    if (!device.exists()) {
        LOG_DEBUG("File %s does not exist", qUtf8Printable(path));
        return false;
    }
    if (!device.open(QIODevice::ReadOnly | QIODevice::Text)) {
        LOG_DEBUG("%s : %s: %s: file open error", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        m_strFileName.clear();
        return false;
    }
    QXmlStreamReader reader(&device);
    const bool result = ReadFile(reader);
    XmlFile::logFault(reader, path, XmlFile::Texts());
    m_strFileName = std::move(file);
    return result;
}

bool MenuParse::ReadFile(QXmlStreamReader& reader)
{
    if (!reader.device())
        return false;
    bool result = true;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (reader.hasError())
            return false;
        if (token == QXmlStreamReader::StartElement && reader.name() == QLatin1String("qrvldoc")) {
            reader.readNext();
            result = ReadInfo(reader);
        }
    }
    return result;
}

bool MenuParse::ReadInfo(QXmlStreamReader& reader)
{
    while (!reader.atEnd()) {
        if (reader.isStartElement() && reader.name() == MenuElement) {
            LOG_DEBUG("%s: %s:open file ", LOG_FILE, LOG_FUNCTION);
            ReadMenuItem(reader);
        }
        reader.readNext();
    }
    return false;
}

void MenuParse::ReadMenuItem(QXmlStreamReader& reader)
{
    Position position;
    for (; !reader.atEnd(); reader.readNext()) {
        if (!reader.isStartElement())
            continue;
        if (reader.name() == MenuElement) {
            beginMenu(reader, position);
        } else if (reader.name() == ItemElement) {
            readItem(reader, position);
        } else if (reader.name() == CustomizeElement) {
            LOG_DEBUG("%s: %s:read traymenu customization ", LOG_FILE, LOG_FUNCTION);
            if (CustomizeOperator(reader)) {
                reader.readNext();
                CustomizeItemParse(reader);
            }
            return;
        }
    }
}

void MenuParse::beginMenu(QXmlStreamReader& reader, Position& position)
{
    position.parent = attribute(reader, "parent");
    if (position.parent != NoParent)
        return;
    position.menu = attribute(reader, "name");
    auto* const menu = new STMENUINFO;
    menu->name = position.menu;
    m_pMenuInfoList->append(menu);
}

void MenuParse::readItem(QXmlStreamReader& reader, const Position& position)
{
    const QString id = attribute(reader, "id");
    switch (typeOf(reader)) {
    case MenuXmlInfo::Popup:
        addNamedEntry(reader, id, AddMenuPopup(position.menu));
        break;
    case MenuXmlInfo::Item:
        addNamedEntry(reader, id, AddMenuItem(position.menu, position.parent));
        break;
    case MenuXmlInfo::Separator:
        AddMenuSeparator(position.menu, position.parent);
        break;
    case MenuXmlInfo::Unset:
        break;
    }
}

/// Gives an entry the identifier and the name of the item that the reader is at.
/// @param entry null when there is no place for it
void MenuParse::addNamedEntry(QXmlStreamReader& reader, const QString& id, MenuXmlInfo* entry)
{
    const QString name = reader.readElementText(QXmlStreamReader::SkipChildElements);
    if (!entry)
        return;
    entry->SetMenuTextID(id);
    entry->SetMenuName(name);
}

bool MenuParse::CustomizeOperator(QXmlStreamReader& reader)
{
    for (; !reader.atEnd(); reader.readNext())
        if (attribute(reader, "name") == m_strOperator)
            return true;
    return false;
}

bool MenuParse::CustomizeItemParse(QXmlStreamReader& reader)
{
    LOG_DEBUG("%s: %s:ReadMenuItem ", LOG_FILE, LOG_FUNCTION);
    Position position;
    for (; !reader.atEnd(); reader.readNext()) {
        if (reader.isEndElement() && reader.name() == CustomizeElement)
            break;
        if (!reader.isStartElement())
            continue;
        if (reader.name() == MenuElement)
            position = {attribute(reader, "name"), attribute(reader, "parent")};
        else if (reader.name() == ItemElement)
            customizeItem(reader, position);
    }
    return true;
}

void MenuParse::customizeItem(QXmlStreamReader& reader, const Position& position)
{
    const QString action = attribute(reader, "action");
    const MenuXmlInfo::Type type = typeOf(reader);
    if (type == MenuXmlInfo::Separator || action == QLatin1String("add")) {
        readItem(reader, position);
    } else if (action == QLatin1String("rem")) {
        const QString id = attribute(reader, "id");
        if (type == MenuXmlInfo::Popup)
            DeleteMenuPopup(id, position.menu);
        else if (type == MenuXmlInfo::Item)
            DeleteMenuItem(id, position.parent, position.menu);
    }
}
