#pragma once

#include <QMenu>

/// The languages that the main window has a file for, sorted by their own names.
QStringList availableLanguages();

/// A menu of the available languages. Each is listed by its own name, so that users find theirs even if they
/// cannot read the current one.
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
