#pragma once

#include "common/ciphers/BitslicedDes_p.h"
#include "common/ciphers/SboxRecipes_p.h"

namespace {

/// An instruction set with vectors of this size and the usual logic instructions, for BitslicedDes.
template <int Bytes>
struct TwoInputGates
{
    using Vector [[gnu::vector_size(Bytes)]] = std::uint64_t;
    using WordVector [[gnu::vector_size(Bytes)]] = std::uint32_t;

    static constexpr auto Kind = SboxCircuit::Gates::TwoInputs;
    static constexpr auto& Recipes = SboxCircuit::TwoInputRecipes;

    template <unsigned Table>
    static Vector gate(Vector a, Vector b, Vector)
    {
        using namespace SboxCircuit;
        if constexpr (Table == Not)
            return ~a;
        else if constexpr (Table == And)
            return a & b;
        else if constexpr (Table == AndNot)
            return a & ~b;
        else if constexpr (Table == NotAnd)
            return ~a & b;
        else if constexpr (Table == Or)
            return a | b;
        else
            return a ^ b;
    }
};

} // namespace
