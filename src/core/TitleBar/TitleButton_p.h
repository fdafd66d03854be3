#pragma once

#include <QToolButton>

/// A button of a title bar. It draws its mark in the colour of the text, sharp at any pixel density, unless the
/// skin gives it an icon.
class TitleButton : public QToolButton
{
    Q_OBJECT

public:
    enum Mark { Minimize, Maximize, Restore, Close };

    TitleButton(Mark mark, QWidget* parent);

    /// Takes name and tool tip from the main frame's language files.
    void translate();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Mark m_mark;
};
