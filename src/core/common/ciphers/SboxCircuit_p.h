#pragma once

#include "common/ciphers/DesStandard_p.h"

#include <cstdint>

/// The S-boxes as circuits of logic gates, built from their tables at compile time. A bit-sliced cipher needs
/// them because each of its vectors holds one bit of many blocks: tables cannot be used.
namespace SboxCircuit {

/// The gates of an instruction set.
enum class Gates {
    TwoInputs,  ///< and, or, exclusive-or, and-not, not
    ThreeInputs ///< any function of three inputs
};

/// The truth table of a signal: its value for each of the 64 inputs of an S-box.
using Column = std::uint64_t;

/// Truth tables of a gate with the inputs a, b and c: the bit number is abc. Two-input gates leave out c.
enum GateTable : std::uint8_t { Not = 0x0f, And = 0xc0, AndNot = 0x30, NotAnd = 0x0c, Or = 0xfc, Xor = 0x3c };
constexpr GateTable TwoInputGates[] = {Xor, And, Or, AndNot, NotAnd};

struct Gate
{
    std::uint8_t table;
    std::uint8_t a, b, c; ///< signals: 0 to 5 are the inputs, the most significant first, 6 the first gate
};

/// Controls how a circuit is built. Any recipe gives a correct circuit; scripts/find-sbox-recipes searches for
/// those that give small ones.
struct Recipe
{
    const char* outputs; ///< the order in which the outputs are built
    const char* splits;  ///< the inputs to split by when one gate is not enough, in order of use
};

constexpr int MostSignals = 256; ///< random recipes were seen to need 132

constexpr Column columnOf(unsigned table, Column a, Column b, Column c)
{
    Column column = 0;
    for (unsigned inputs = 0; inputs < 8; ++inputs) {
        if (table >> inputs & 1)
            column |= (inputs & 4 ? a : ~a) & (inputs & 2 ? b : ~b) & (inputs & 1 ? c : ~c);
    }
    return column;
}

/// A circuit under construction. A function is needed only for some inputs (the bits of `where`) and may have
/// any value for the others, so an existing signal often fits.
class Circuit
{
public:
    constexpr Circuit(int box, Gates kind, const Recipe& recipe)
        : m_kind(kind)
        , m_recipe(recipe)
    {
        for (int input = 0; input < 6; ++input) {
            for (unsigned bits = 0; bits < 64; ++bits)
                m_columns[input] |= Column(bits >> (5 - input) & 1) << bits;
        }
        for (int i = 0; i < 4; ++i) {
            const int output = recipe.outputs[i] - '0';
            outputs[output] = function(wanted(box, output), ~Column(0));
        }
    }

    Gate gates[MostSignals]{};
    int signals = 6;
    std::uint8_t outputs[4]{}; ///< the signals that leave the S-box, the most significant first

    /// Whether the circuit is the S-box.
    constexpr bool isRight(int box) const
    {
        for (int output = 0; output < 4; ++output) {
            if (m_columns[outputs[output]] != wanted(box, output))
                return false;
        }
        return true;
    }

private:
    static constexpr Column wanted(int box, int output)
    {
        Column column = 0;
        for (unsigned bits = 0; bits < 64; ++bits)
            column |= Column(DesStandard::substituted(box, bits) >> (3 - output) & 1) << bits;
        return column;
    }

    constexpr int add(unsigned table, int a, int b, int c)
    {
        gates[signals] = {std::uint8_t(table), std::uint8_t(a), std::uint8_t(b), std::uint8_t(c)};
        m_columns[signals] = columnOf(table, m_columns[a], m_columns[b], m_columns[c]);
        return signals++;
    }

    /// A signal with the wanted values; adds gates for it if necessary.
    constexpr int function(Column wanted, Column where)
    {
        int signal = existing(wanted, where);
        if (signal < 0)
            signal = m_kind == Gates::TwoInputs ? oneGateOfTwo(wanted, where) : oneGateOfThree(wanted, where);
        return signal < 0 ? divided(wanted, where) : signal;
    }

    constexpr int existing(Column wanted, Column where) const
    {
        for (int signal = 0; signal < signals; ++signal) {
            if (((m_columns[signal] ^ wanted) & where) == 0)
                return signal;
        }
        return -1;
    }

    constexpr int oneGateOfTwo(Column wanted, Column where)
    {
        const int opposite = existing(~wanted, where);
        if (opposite >= 0)
            return add(Not, opposite, opposite, opposite);
        for (int a = 0; a < signals; ++a) {
            for (int b = 0; b < a; ++b) {
                const Column x = m_columns[a], y = m_columns[b];
                const Column made[] = {x ^ y, x & y, x | y, x & ~y, ~x & y};
                for (int i = 0; i < 5; ++i) {
                    if (((made[i] ^ wanted) & where) == 0)
                        return add(TwoInputGates[i], a, b, b);
                }
            }
        }
        return -1;
    }

    constexpr int oneGateOfThree(Column wanted, Column where)
    {
        // A gate distinguishes eight cases and hardly ever fits more than 16 inputs: the search would only cost
        // time.
        if (__builtin_popcountll(where) > 16)
            return -1;
        for (int a = 0; a < signals; ++a) {
            for (int b = 0; b < a; ++b) {
                for (int c = 0; c < b; ++c) {
                    const int table = tableFor(wanted, where, a, b, c);
                    if (table >= 0)
                        return add(unsigned(table), a, b, c);
                }
            }
        }
        return -1;
    }

    /// The truth table of a gate that computes the function from these signals, or -1.
    constexpr int tableFor(Column wanted, Column where, int a, int b, int c) const
    {
        int table = 0;
        for (int inputs = 0; inputs < 8; ++inputs) {
            const Column seen = where & (inputs & 4 ? m_columns[a] : ~m_columns[a]) &
                                (inputs & 2 ? m_columns[b] : ~m_columns[b]) &
                                (inputs & 1 ? m_columns[c] : ~m_columns[c]);
            if ((seen & wanted) != 0 && (seen & ~wanted) != 0)
                return -1;
            table |= (seen & wanted) != 0 ? 1 << inputs : 0;
        }
        return table;
    }

    /// Splits by an input s. With three inputs: s ? high : low. With two: low ^ (s & rest), where low may have any
    /// value while s is set because rest corrects it.
    constexpr int divided(Column wanted, Column where)
    {
        const int s = nextSplit(where);
        const Column set = m_columns[s];
        const int low = function(wanted, where & ~set);
        if (m_kind == Gates::ThreeInputs)
            return add(0xca, s, function(wanted, where & set), low);
        const int rest = function(wanted ^ m_columns[low], where & set);
        return add(Xor, low, add(And, rest, s, s), 0);
    }

    /// The next input of the recipe, or the first one after it that tells some of the inputs apart.
    constexpr int nextSplit(Column where)
    {
        int input = *m_recipe.splits ? *m_recipe.splits++ - '0' : 0;
        while ((where & m_columns[input]) == 0 || (where & ~m_columns[input]) == 0)
            input = (input + 1) % 6;
        return input;
    }

    Column m_columns[MostSignals]{};
    Gates m_kind;
    Recipe m_recipe;
};

} // namespace SboxCircuit
