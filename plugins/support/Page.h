#pragma once

#include "support/Look.h"

#include <QScrollArea>

class QGridLayout;
class QVBoxLayout;

/// A page of the main window: heading, a line of explanation, and a column of content that scrolls when it
/// has to.
class Page : public QScrollArea
{
    Q_OBJECT

public:
    /// @param title identifier of the window title and heading
    /// @param lead  identifier of the sentence below the heading
    Page(const char* title, const char* lead, Look::Sign sign, QWidget* parent);

protected:
    /// The column below the heading; ends with a stretch when the derived page adds one.
    QVBoxLayout* content() const { return m_content; }

    /// Removes everything from the column and deletes it.
    void clearContent();

private:
    QVBoxLayout* m_content;
};

/// A rounded area that sets its content off from the page.
class Surface : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A panel with captions on the left and values on the right.
class Card : public Surface
{
    Q_OBJECT

public:
    /// @param title heading inside the panel; none when empty
    explicit Card(const QString& title, QWidget* parent = nullptr);

    /// Adds a line. The value can be selected and copied.
    void addRow(const QString& caption, const QString& value);

    /// Adds a word-wrapped text across the panel.
    void addText(const QString& content);

private:
    QGridLayout* m_rows;
};
