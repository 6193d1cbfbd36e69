#include <benchmark/benchmark.h>
#include <string>

#include "export/rtf/RtfReader.h"
#include "export/rtf/RtfWriter.h"
#include "service/ErrorReport.h"

namespace {

// A report of many paragraphs with the formatting the program writes: bold, italics, umlauts as \'hh.
std::string largeReport(int paragraphs)
{
    std::string source = "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1031{\\fonttbl{\\f0\\fswiss\\fcharset0 Arial;}}\r\n"
                         "\\viewkind4\\uc1\\pard\\f0\\fs20 ";
    for (int i = 0; i < paragraphs; ++i)
        source += "Beleg \\b " + std::to_string(i) + "\\b0  \\i Gr\\'fc\\'dfe aus M\\'fcnster\\i0  12,50 EUR\\par\r\n";
    return source + "}";
}

void readReport(benchmark::State& state)
{
    const std::string source = largeReport(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(zw::rtf::readRtf(source));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * source.size()));
}
BENCHMARK(readReport)->Arg(10)->Arg(10000);

void writeReport(benchmark::State& state)
{
    const auto document = zw::rtf::readRtf(largeReport(static_cast<int>(state.range(0))));
    for (auto _ : state)
        benchmark::DoNotOptimize(zw::rtf::writeRtf(document));
}
BENCHMARK(writeReport)->Arg(10000);

void fillErrorReport(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(zw::fillErrorReport(zw::kErrorReportTemplate, {"62", "Eingabe nach Dateiende", "optionen"},
                                                     "23.11.2026 14:05:09", "Zettelwerk", "6.0.0"));
}
BENCHMARK(fillErrorReport);

} // namespace
