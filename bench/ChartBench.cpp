#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <algorithm>
#include <string>

#include "books/YearFigures.h"
#include "ledger/ReceiptLedger.h"
#include "print/FormFonts.h"
#include "print/YearChart.h"

namespace {

// A year of 100,000 rows, two thirds takings, spread over the months and three rates, and a year before it.
const zw::ReceiptLedger& yearLedger()
{
    static const zw::ReceiptLedger ledger = [] {
        zw::ReceiptLedger rows;
        rows.reserve(100'001);
        for (int i = 0; i < 100'000; ++i) {
            const std::string date = std::to_string(1 + i % 28) + "." + std::to_string(1 + i % 12) + ".2025";
            const std::string number = std::to_string(1000 + i);
            if (i % 3 != 2)
                rows.appendRow(date + "\t" + number + "\t119,00\t\tEUR\t19\t100,00\t19,00\teinhundertneunzehn\t"
                                      "Max Muster\t\tBeratung\tBonn\t\tQuittung");
            else
                rows.appendRow(date + "\t" + number + "\t\t-35,50\tEUR\t7\t33,18\t2,32\tfünfunddreißig\tPost\t\t"
                                      "Porto\tBonn\t\tAusgabebeleg");
        }
        rows.appendRow("15.12.2024\t999\t500,00\t\tEUR\t0\t500,00\t0,00\t\tEinlage\t\t\t\t\tQuittung");
        return rows;
    }();
    return ledger;
}

double minimum(const std::vector<double>& runs) { return *std::min_element(runs.begin(), runs.end()); }

void figuresOfTheYear(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(zw::yearFigures(yearLedger(), 2025));
}

void drawingOfThePicture(benchmark::State& state)
{
    const auto figures = zw::yearFigures(yearLedger(), 2025);
    for (auto _ : state)
        benchmark::DoNotOptimize(zw::yearPictureImage(figures, {1280, 800}));
}

// The goal: under 200 ms for both.
void figuresAndPicture(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(zw::yearPictureImage(zw::yearFigures(yearLedger(), 2025), {1280, 800}));
}

} // namespace

// Each run once, five times: the minimum and the median of five runs.
#define ZW_CHART_BENCH(routine)                                                                              \
    BENCHMARK(routine)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(5)->ComputeStatistics(   \
        "min", minimum)
ZW_CHART_BENCH(figuresOfTheYear);
ZW_CHART_BENCH(drawingOfThePicture);
ZW_CHART_BENCH(figuresAndPicture);

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv); // Qt Charts draws through graphics widgets
    zw::installFontSubstitutes();
    yearLedger(); // made before the clock runs
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
