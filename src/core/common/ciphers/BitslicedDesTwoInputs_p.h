#pragma once

#include "common/ciphers/BitslicedDes_p.h"

namespace {

/// An instruction set for BitslicedDes with vectors of so many bytes and the usual logic instructions.
template <int Bytes>
struct TwoInputGates
{
    using Vector [[gnu::vector_size(Bytes)]] = std::uint64_t;
    using WordVector [[gnu::vector_size(Bytes)]] = std::uint32_t;

    static constexpr auto Kind = SboxCircuit::Gates::TwoInputs;
    static constexpr SboxCircuit::Recipe Recipes[8] = {
        {"2031", "124213120502240132211541012403"}, {"0213", "311152330011422142101214141"},
        {"3102", "0424535303103414221540431134"},   {"0312", "55144133325544502455"},
        {"2013", "31305031314252111241333314513"},  {"2301", "543100541054133324252145011"},
        {"3210", "15055505054335120514200502"},     {"3021", "5110155251550550315044032513"}};

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
