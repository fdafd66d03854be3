#pragma once

#include <QSet>
#include <QString>
#include <QVector>

/// The identifiers of the strings in one menu.
struct MenuTexts
{
    QString name;
    QSet<QString> ids;
};

/// The menus and sub-menus of every menu definition file in a folder, without the entries of customisations,
/// which are never all in the menu at once.
QVector<MenuTexts> readMenus(const QString& folder);
