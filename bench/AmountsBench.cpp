#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "core/AmountEntry.h"
#include "core/AmountWords.h"
#include "core/GermanNumbers.h"
#include "core/ReceiptForm.h"

namespace {

std::vector<std::int32_t> wholeAmounts()
{
    std::vector<std::int32_t> values;
    std::uint32_t state = 12345;
    for (int i = 0; i < 1024; ++i) {
        state = state * 1664525u + 1013904223u;
        values.push_back(static_cast<std::int32_t>(state % 1000000000u));
    }
    return values;
}

void RoundedWords(benchmark::State& state)
{
    const auto values = wholeAmounts();
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(zw::getZahl_in_Worten(values[i++ & 1023]));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(RoundedWords);

void TruncatedWords(benchmark::State& state)
{
    const auto values = wholeAmounts();
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(zw::BetragInWorten(static_cast<double>(values[i++ & 1023]) * 997.0));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(TruncatedWords);

void ParseAndFormatAmount(benchmark::State& state)
{
    const std::vector<std::string> texts = {"119", "1.234,56", "100,00", "999999999999,99", "0,40", "2,50"};
    std::size_t i = 0;
    for (auto _ : state) {
        const double value = zw::parseAmount(texts[i++ % texts.size()]);
        benchmark::DoNotOptimize(zw::formatPattern(value / 1.19, "0.00"));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ParseAndFormatAmount);

// RETURN in the gross field after the amount was typed, on the form model with the automatic calculation on.
void GrossEntry(benchmark::State& state)
{
    zw::ReceiptForm form;
    form.setBetragCheck(static_cast<int>(state.range(0)));
    const std::vector<std::string> texts = {"119", "1.234,56", "100", "999999,99", "0,40", "2,50"};
    std::size_t i = 0;
    for (auto _ : state) {
        form.setText(zw::FormElement::Text12, texts[i++ % texts.size()]);
        zw::returnInGross(form);
        benchmark::DoNotOptimize(form.text(zw::FormElement::Text4));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(GrossEntry)->Arg(0)->Arg(1);

} // namespace
