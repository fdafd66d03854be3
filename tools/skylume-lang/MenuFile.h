#pragma once

#include <QStringList>
#include <QVector>

/// The text identifiers that stand in one menu.
struct MenuTexts
{
    QString name;
    QStringList ids;
};

/// The menus and sub-menus of every menu definition file in a folder. What customisations add is left out: it
/// never stands in one menu all at once.
QVector<MenuTexts> readMenus(const QString& folder);
