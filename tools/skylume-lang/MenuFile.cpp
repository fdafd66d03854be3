#include "MenuFile.h"

#include <QDir>
#include <QFile>
#include <QXmlStreamReader>

namespace {

MenuTexts startMenu(const QXmlStreamAttributes& attributes)
{
    const QString parent = attributes.value(QLatin1String("parent")).toString();
    const bool isTopLevel = parent == QLatin1String("null");
    return {isTopLevel ? attributes.value(QLatin1String("name")).toString() : parent, {}};
}

void readMenuFile(QXmlStreamReader& xml, QVector<MenuTexts>& menus)
{
    if (!xml.readNextStartElement() || xml.name() != QLatin1String("qrvldoc"))
        return;
    while (!xml.atEnd() && xml.name() != QLatin1String("customize")) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        const QString id = xml.attributes().value(QLatin1String("id")).toString();
        if (xml.name() == QLatin1String("menu"))
            menus.append(startMenu(xml.attributes()));
        else if (xml.name() == QLatin1String("item") && !menus.isEmpty() && !id.isEmpty())
            menus.last().ids.insert(id);
    }
}

} // namespace

QVector<MenuTexts> readMenus(const QString& folder)
{
    QVector<MenuTexts> menus;
    const QDir directory(folder);
    for (const QString& name : directory.entryList({QStringLiteral("*.xml")}, QDir::Files)) {
        QFile file(directory.filePath(name));
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
            continue;
        QXmlStreamReader xml(&file);
        readMenuFile(xml, menus);
    }
    return menus;
}
