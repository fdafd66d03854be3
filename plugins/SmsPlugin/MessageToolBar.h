#pragma once

#include "Commands.h"
#include "ToolBar/ToolItem.h"

#include <QWidget>

class QButtonGroup;
class QHBoxLayout;
class QLabel;
class SearchLineEdit;

/// The page's toolbar from the file SmsToolBar.xml, with the search box. GUI thread only.
class MessageToolBar : public QWidget
{
    Q_OBJECT

public:
    explicit MessageToolBar(QWidget* parent = nullptr);
    ~MessageToolBar() override;

    /// Whether a new toolbar would have other buttons: the plugin for calls comes and goes with the modem.
    bool isOutdated() const;

    /// Enables the buttons of the commands that make sense.
    void enableFor(const CommandContext& context);

    /// Shows the search box and gives it the focus.
    void openSearch();
    void closeSearch();

Q_SIGNALS:
    /// A button other than that of the search box was pressed.
    void pressed(Command command);

    void searchChanged(const QString& text);
    void nextWanted(); ///< the user wants the next message that contains the text
    void searchClosed();

protected:
    void changeEvent(QEvent* event) override;

private:
    void setUpSearch();
    void translate();

    QList<ToolItem> m_items;
    QButtonGroup* m_group = nullptr;
    QHBoxLayout* m_searchLayout = nullptr; ///< has a parent while the box is shown
    SearchLineEdit* m_searchEdit = nullptr;
    QLabel* m_searchIcon = nullptr;
};
