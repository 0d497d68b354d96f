// How fast 32-bit reals are printed with six significant digits, beside `std::to_chars` and a standard
// stream. Items are numbers.

#include "quillon/core/NumberPrinting.h"

#include <benchmark/benchmark.h>
#include <charconv>
#include <random>
#include <sstream>
#include <vector>

namespace {

std::vector<float> reals() {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> value(-3.2F, 3.2F);
    std::vector<float> numbers(10000);
    for (float& number : numbers) {
        number = value(random);
    }
    return numbers;
}

void RealsByToChars(benchmark::State& state) {
    const std::vector<float> numbers = reals();
    char text[quillon::numberTextSize];
    for (auto _ : state) {
        for (const float number : numbers) {
            benchmark::DoNotOptimize(std::to_chars(text, text + sizeof text, static_cast<double>(number),
                                                   std::chars_format::general, 6));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(numbers.size()));
}
BENCHMARK(RealsByToChars);

void RealsBySeam(benchmark::State& state) {
    const std::vector<float> numbers = reals();
    char text[quillon::numberTextSize];
    for (auto _ : state) {
        for (const float number : numbers) {
            benchmark::DoNotOptimize(quillon::formatReal(text, number));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(numbers.size()));
}
BENCHMARK(RealsBySeam);

void RealsByStream(benchmark::State& state) {
    const std::vector<float> numbers = reals();
    for (auto _ : state) {
        std::ostringstream output;
        for (const float number : numbers) {
            output << static_cast<double>(number);
        }
        benchmark::DoNotOptimize(output.str().size());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(numbers.size()));
}
BENCHMARK(RealsByStream);

} // namespace
