// How fast numbers are read from a stream, beside the standard stream's own extraction and beside
// `std::from_chars` over the same text. Items are numbers.

#include "quillon/core/LmSStream.h"
#include "quillon/core/StreamExtraction.h"

#include <benchmark/benchmark.h>
#include <charconv>
#include <random>
#include <sstream>
#include <string>

namespace {

constexpr int numberCount = 100000;

/// Reals as data files hold them: fixed-point, six decimals, a few columns apart.
std::string realText() {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> value(-3.2, 3.2);
    std::string text;
    for (int i = 0; i < numberCount; ++i) {
        text += "  " + std::to_string(value(random)) + (i % 3 == 2 ? "\n" : "  ");
    }
    return text;
}

std::string intText() {
    std::string text;
    for (int i = 0; i < numberCount; ++i) {
        text += "  " + std::to_string(i) + "\n";
    }
    return text;
}

template <class Number>
void fromChars(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        Number sum = 0;
        const char* at = text.data();
        const char* const end = at + text.size();
        while (true) {
            while (at != end && (*at == ' ' || *at == '\n')) {
                ++at;
            }
            if (at == end) {
                break;
            }
            Number value = 0;
            at = std::from_chars(at, end, value).ptr;
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * numberCount);
}

void RealsByFromChars(benchmark::State& state) {
    fromChars<double>(state, realText());
}
BENCHMARK(RealsByFromChars);

void RealsBySeam(benchmark::State& state) {
    const std::string text = realText();
    for (auto _ : state) {
        quillon::LmISStream input(text.c_str(), text.size());
        float sum = 0;
        float value = 0;
        while (quillon::extractFloat(input, value)) {
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * numberCount);
}
BENCHMARK(RealsBySeam);

void RealsByStream(benchmark::State& state) {
    const std::string text = realText();
    for (auto _ : state) {
        std::istringstream input(text);
        double sum = 0;
        double value = 0;
        while (input >> value) {
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * numberCount);
}
BENCHMARK(RealsByStream);

void IntsByFromChars(benchmark::State& state) {
    fromChars<int>(state, intText());
}
BENCHMARK(IntsByFromChars);

void IntsBySeam(benchmark::State& state) {
    const std::string text = intText();
    for (auto _ : state) {
        quillon::LmISStream input(text.c_str(), text.size());
        std::int32_t sum = 0;
        std::int32_t value = 0;
        while (quillon::extractInt(input, value)) {
            sum ^= value;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * numberCount);
}
BENCHMARK(IntsBySeam);

} // namespace
