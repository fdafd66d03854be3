#pragma once

#include <QString>

class QToolButton;

/// One button of a toolbar, as its file describes it.
struct ToolItem
{
    int id = 0;       ///< in the button group
    QString resource; ///< holds "SEARCH" for the button of the search box
    QString enabled;  ///< file name of the icon of the enabled button
    QString disabled; ///< file name of the icon of the disabled button
    bool isSearch = false;
    QToolButton* button = nullptr; ///< null until the toolbar is created; belongs to its parent widget
};
