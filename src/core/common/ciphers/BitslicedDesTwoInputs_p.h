#pragma once

#include "common/ciphers/BitslicedDes_p.h"

namespace {

/// An instruction set with vectors of this size and the usual logic instructions, for BitslicedDes.
template <int Bytes>
struct TwoInputGates
{
    using Vector [[gnu::vector_size(Bytes)]] = std::uint64_t;
    using WordVector [[gnu::vector_size(Bytes)]] = std::uint32_t;

    static constexpr auto Kind = SboxCircuit::Gates::TwoInputs;
    static constexpr SboxCircuit::Recipe Recipes[8] = {
        {"0321", "34500104221101023233005350303"}, {"0321", "0311044401510550105330054"},
        {"3012", "0542105521020540432055115"},     {"0312", "5013453135150535155"},
        {"1023", "1410534300533150143331210115"},  {"1032", "42232513025013322535223554"},
        {"2031", "105355103501354213505023"},      {"1230", "0550025355450555051435"}};

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
