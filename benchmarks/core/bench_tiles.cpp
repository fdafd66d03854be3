// Finding the first free tile for a minimised window in a grid of a thousand, of which all but the last are occupied.
#include "TitleBar/TileGrid_p.h"

#include <benchmark/benchmark.h>

namespace {

void search(benchmark::State& state)
{
    constexpr QRect available(0, 0, 40 * TileGrid::TileWidth, 25 * TileGrid::TileHeight);
    TileGrid grid(available);
    for (int tile = 1; tile < grid.rows() * grid.columns(); ++tile)
        grid.firstFree()->count = 1;
    for (auto _ : state)
        benchmark::DoNotOptimize(grid.firstFree());
}

} // namespace

BENCHMARK(search)->Name("tile_search_of_1000/ours");

BENCHMARK_MAIN();
