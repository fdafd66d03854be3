#include "TitleBar/TileGrid_p.h"

#include <algorithm>

TileGrid::TileGrid(const QRect& available)
    : m_rows(std::max(available.height(), 0) / TileHeight)
    , m_columns(std::max(available.width(), 0) / TileWidth)
    , m_cells(static_cast<std::size_t>(m_rows) * static_cast<std::size_t>(m_columns))
{
    auto* cell = m_cells.data();
    for (int row = 0; row < m_rows && m_columns > 0; ++row) {
        m_matrix.push_back(cell);
        const int top = available.bottom() - TileHeight * (row + 1);
        for (int column = 0; column < m_columns; ++column, ++cell)
            cell->rect = QRect(available.left() + TileWidth * column, top, TileWidth, TileHeight);
    }
}

TileCell* TileGrid::firstFree()
{
    const auto cell =
        std::find_if(m_cells.begin(), m_cells.end(), [](const TileCell& tile) { return tile.count == 0; });
    return cell == m_cells.end() ? nullptr : &*cell;
}

void TileGrid::change(bool release, const QRect& rect)
{
    constexpr int enough = 3; // a window of a tile's size touches four cells at most
    int changed = 0;
    bool isExact = false;
    for (TileCell* const row : m_matrix) {
        for (int column = 0; column < m_columns; ++column) {
            TileCell& cell = row[column];
            if (!cell.rect.intersects(rect))
                continue;
            cell.count += release ? -1 : 1;
            ++changed;
            isExact = isExact || cell.rect == rect;
        }
        if (isExact || changed > enough)
            return;
    }
}
