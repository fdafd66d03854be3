#pragma once

#include <QRect>

#include <vector>

class QWidget;

/// A place for one minimised window at the bottom of the screen.
struct TileCell
{
    int count = 0;             ///< number of windows that touch it; 0 means free
    QRect rect;                ///< in screen coordinates, 160 by 30 pixels
    QWidget* window = nullptr; ///< the window that was given the cell last; may no longer exist
};

/// The cells of a screen, bottom row first. Plain arithmetic: it never touches a window.
class TileGrid
{
public:
    static constexpr int TileWidth = 160;
    static constexpr int TileHeight = 30;

    TileGrid() = default;

    /// @param available the part of the screen that windows may use. A screen smaller than one tile makes an
    /// empty grid.
    explicit TileGrid(const QRect& available);

    int rows() const { return m_rows; }
    int columns() const { return m_columns; }
    bool isEmpty() const { return m_cells.empty(); }

    /// One pointer to the first cell of each row; null when the grid is empty.
    TileCell** matrix() { return isEmpty() ? nullptr : m_matrix.data(); }

    /// The first free cell, rows from the bottom, columns from the left; null when all are occupied.
    TileCell* firstFree();

    /// Changes the count of every cell that `rect` touches: down when releasing, up otherwise. Stops after
    /// the row with a cell that equals `rect`, or once more than three cells have been changed.
    void change(bool release, const QRect& rect);

private:
    int m_rows = 0;
    int m_columns = 0;
    std::vector<TileCell> m_cells; ///< row by row
    std::vector<TileCell*> m_matrix;
};
