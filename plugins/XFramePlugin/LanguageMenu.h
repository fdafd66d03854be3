#pragma once

#include <QMenu>

/// The languages to choose from, each under its own name: whoever cannot read the current one finds his.
class LanguageMenu : public QMenu
{
    Q_OBJECT

public:
    explicit LanguageMenu(QWidget* parent);

Q_SIGNALS:
    void chosen(const QString& code);

private:
    void fill();
};
