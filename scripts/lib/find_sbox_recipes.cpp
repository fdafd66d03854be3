// Finds the recipes of the bit-sliced cipher's S-boxes; see scripts/find-sbox-recipes.
//
// A climb starts with a random recipe and changes it a little in every step. A change is kept unless the
// circuit needs more gates after it. The best of several climbs is printed.
#include "common/ciphers/SboxCircuit_p.h"

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
    std::string splits;
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

    Candidate climb(int steps)
    {
        constexpr int mostSplits = 32;
        Candidate best;
        std::shuffle(best.outputs.begin(), best.outputs.end(), m_random);
        std::generate_n(std::back_inserter(best.splits), mostSplits, [this] { return randomInput(); });
        measure(best);
        for (int step = 0; step < steps; ++step) {
            const Candidate next = changed(best);
            if (next.gates <= best.gates)
                best = next;
        }
        return withoutUnusedSplits(best);
    }

private:
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

void print(const char* title, Gates kind, int climbs, int steps)
{
    std::printf("%s\n", title);
    for (int box = 0; box < 8; ++box) {
        Search search(box, kind, unsigned(box));
        Candidate best = search.climb(steps);
        for (int i = 1; i < climbs; ++i) {
            const Candidate found = search.climb(steps);
            if (found.gates < best.gates)
                best = found;
        }
        std::printf("    {\"%s\", \"%s\"}, // %d gates\n", best.outputs.c_str(), best.splits.c_str(),
                    best.gates);
        std::fflush(stdout);
    }
}

} // namespace

int main(int, char** arguments)
{
    const int climbs = std::atoi(arguments[1]), steps = std::atoi(arguments[2]);
    print("BitslicedDesTwoInputs_p.h:", Gates::TwoInputs, climbs, steps);
    print("BitslicedDes_avx512.cpp:", Gates::ThreeInputs, climbs, steps);
}
