#pragma once

#include "support/Look.h"

#include <QScrollArea>

class QGridLayout;
class QHBoxLayout;
class QLabel;
class QVBoxLayout;

/// A page of the main window: a heading, a sentence that explains the page, and a column of content that
/// scrolls if necessary. GUI thread only.
class Page : public QScrollArea
{
    Q_OBJECT
    Q_PROPERTY(bool hasOwnFocus READ hasOwnFocus) ///< for style sheets

public:
    /// @param title identifier of the plugin's string for window title and heading
    /// @param lead  identifier of the plugin's string below the heading
    /// @param sign  for the window icon
    Page(const char* title, const char* lead, Look::Sign sign, QWidget* parent);

    /// Whether the page itself gets the focus, rather than its focus proxy; it does so only while there is something to
    /// scroll. Set a proxy in the constructor: style sheets read this property only once.
    bool hasOwnFocus() const { return !focusProxy(); }

protected:
    /// The column below the heading; empty at first. Widgets added to it belong to the page.
    QVBoxLayout* content() const { return m_content; }

    /// Shows a widget beside the heading, at the other end of the line. It belongs to the page.
    void setCorner(QWidget* corner);

    /// Deletes all widgets in the column.
    void clearContent();

    /// Whether there is so little height that the page leaves out its lead and saves space; see resizeEvent().
    bool isLow() const;

    /// Shows a number on the page's icon while the side bar has no room for titles, such as that of unread messages; 0 for
    /// none. It is the property "badge", which any page can have.
    void setBadge(int number);

    /// The Return key presses the button that has the focus, as in dialogs.
    void keyPressEvent(QKeyEvent* event) override;

    void resizeEvent(QResizeEvent* event) override;

private:
    void followScrollRange();

    QHBoxLayout* m_heading;
    QLabel* m_lead;
    QVBoxLayout* m_content;
};

/// A panel with rounded corners in the palette's base colour.
class Surface : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Lays the panel out as a column with a heading.
    /// @param title  identifier of the plugin's string
    /// @param corner belongs to the panel and is shown at the other end of the heading's line; may be null
    /// @return the column below the heading; belongs to the panel
    QVBoxLayout* makeColumn(const char* title, QWidget* corner = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A panel with captions on the left and values on the right.
class Card : public Surface
{
    Q_OBJECT

public:
    /// @param title heading of the panel; none when empty
    explicit Card(const QString& title, QWidget* parent = nullptr);

    /// Adds a row. The user can select and copy the value.
    void addRow(const QString& caption, const QString& value);

    /// Adds a word-wrapped paragraph across the panel.
    void addText(const QString& content);

private:
    QGridLayout* m_rows;
};
