#pragma once

#include "support/Page.h"

/// The window's own page, for a window that would otherwise be empty: the plugins and why none of them has a
/// page.
class PluginsPage : public Page
{
    Q_OBJECT

public:
    explicit PluginsPage(QWidget* parent);
};
