// Searches for smaller circuits for the bit-sliced cipher's S-boxes; see scripts/find-sbox-recipes.
//
// A climb changes a recipe a little in every step. A change is kept unless the circuit needs more gates after it.
// The first climb starts with the recipe in use, the others with random ones.
#include "common/ciphers/SboxRecipes_p.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

namespace {

using SboxCircuit::Gates;

struct Candidate
{
    std::string outputs = "0123";
    std::string splits{};
    int gates = 0;
};

class Search
{
public:
    /// The same seed always gives the same recipes.
    Search(int box, Gates kind, unsigned seed)
        : m_box(box)
        , m_kind(kind)
        , m_random(seed)
    {
    }

    Candidate climbFrom(const SboxCircuit::Recipe& recipe, int steps)
    {
        return climb(measured(recipe), steps);
    }

    Candidate climbFromRandom(int steps)
    {
        Candidate start;
        std::shuffle(start.outputs.begin(), start.outputs.end(), m_random);
        return climb(start, steps);
    }

    Candidate measured(const SboxCircuit::Recipe& recipe) const
    {
        Candidate candidate{recipe.outputs, recipe.splits};
        measure(candidate);
        return candidate;
    }

private:
    Candidate climb(Candidate best, int steps)
    {
        constexpr std::size_t mostSplits = 32;
        while (best.splits.size() < mostSplits)
            best.splits += randomInput();
        measure(best);
        for (int step = 0; step < steps; ++step) {
            const Candidate next = changed(best);
            if (next.gates <= best.gates)
                best = next;
        }
        return withoutUnusedSplits(best);
    }

    char randomInput() { return char('0' + m_random() % 6); }

    Candidate changed(Candidate recipe)
    {
        if (m_random() % 16 == 0)
            std::swap(recipe.outputs[m_random() % 4], recipe.outputs[m_random() % 4]);
        for (auto changes = 1 + m_random() % 2; changes > 0; --changes)
            recipe.splits[m_random() % recipe.splits.size()] = randomInput();
        measure(recipe);
        return recipe;
    }

    Candidate withoutUnusedSplits(Candidate recipe) const
    {
        for (Candidate shorter = recipe; shorter.gates == recipe.gates; measure(shorter)) {
            recipe = shorter;
            if (recipe.splits.empty())
                break;
            shorter.splits.pop_back();
        }
        return recipe;
    }

    void measure(Candidate& recipe) const
    {
        constexpr int inputs = 6;
        const SboxCircuit::Circuit circuit(m_box, m_kind, {recipe.outputs.c_str(), recipe.splits.c_str()});
        recipe.gates = circuit.signals - inputs;
    }

    int m_box;
    Gates m_kind;
    std::mt19937 m_random;
};

/// Prints the number of gates of each recipe in use, and a better recipe if there is one.
void improve(const char* title, const SboxCircuit::Recipe (&recipes)[8], Gates kind, int climbs, int steps)
{
    int total = 0;
    std::printf("%s\n", title);
    for (int box = 0; box < 8; ++box) {
        Search search(box, kind, unsigned(box));
        const Candidate used = search.measured(recipes[box]);
        Candidate best = used;
        for (int i = 0; i < climbs; ++i) {
            const Candidate found =
                i == 0 ? search.climbFrom(recipes[box], steps) : search.climbFromRandom(steps);
            if (found.gates < best.gates)
                best = found;
        }
        std::printf("    S-box %d: %d gates", box + 1, used.gates);
        if (best.gates < used.gates)
            std::printf("; {\"%s\", \"%s\"} needs %d", best.outputs.c_str(), best.splits.c_str(), best.gates);
        std::printf("\n");
        std::fflush(stdout);
        total += used.gates;
    }
    std::printf("    all: %d gates\n", total);
}

} // namespace

int main(int, char** arguments)
{
    const int climbs = std::atoi(arguments[1]), steps = std::atoi(arguments[2]);
    improve("TwoInputRecipes", SboxCircuit::TwoInputRecipes, Gates::TwoInputs, climbs, steps);
    improve("ThreeInputRecipes", SboxCircuit::ThreeInputRecipes, Gates::ThreeInputs, climbs, steps);
}
