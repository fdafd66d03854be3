#pragma once

#include <benchmark/benchmark.h>

#include <QLoggingCategory>

#include <string>
#include <vector>

using Bytes = std::vector<unsigned char>;

inline const std::string Key = "0123456789abcdefghijklmn";
inline const std::string Iv = "initial.";

inline const unsigned char* bytesOf(const std::string& text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

inline Bytes sample(std::size_t size)
{
    Bytes bytes(size);
    std::uint32_t state = 1;
    for (unsigned char& byte : bytes)
        byte = static_cast<unsigned char>((state = state * 1664525 + 1013904223) >> 24);
    return bytes;
}

inline std::string sampleText(std::size_t size)
{
    const Bytes bytes = sample(size);
    return {bytes.begin(), bytes.end()};
}

/// The argument of a benchmark, in bytes.
inline std::size_t sizeOf(const benchmark::State& state)
{
    return std::size_t(state.range(0));
}

/// Measures a function of an input and an output buffer.
template <typename Function>
void measure(benchmark::State& state, const Bytes& in, std::size_t outSize, Function function)
{
    Bytes out(outSize);
    for (auto _ : state) {
        function(in.data(), out.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

/// Runs the registered benchmarks that the command line selects, without debug lines.
inline void runAll(int argc, char** argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
