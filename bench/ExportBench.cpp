// From the command to the written file, for each export format; the capture is part of every picture path.
#include <benchmark/benchmark.h>

#include "app/CommonDialog.h"
#include "bench/ReceiptFixture.h"
#include "export/PdfExport.h"
#include "export/XmlExport.h"
#include "print/Capture.h"
#include "print/PrintCommand.h"

namespace {

using zw::bench::fixture;

zw::CommonDialog answeredDialog(const std::filesystem::path& file)
{
    zw::CommonDialog dialog;
    dialog.setPresenter([file](const zw::CommonDialog&, bool) { return file.string(); });
    return dialog;
}

void exportPdf(benchmark::State& state)
{
    zw::Capture capture(fixture().paths);
    const auto picture = fixture().paths.home() / "temp.bmp";
    auto dialog = answeredDialog(fixture().folder / "out.pdf");
    for (auto _ : state) {
        zw::saveBitmap(capture(fixture().form), picture);
        zw::PdfExport pdf(picture);
        pdf.cmdGo(dialog);
    }
}
BENCHMARK(exportPdf)->Unit(benchmark::kMillisecond);

void exportXml(benchmark::State& state)
{
    auto dialog = answeredDialog(fixture().folder / "out.xml");
    for (auto _ : state)
        zw::alsxml(dialog, fixture().form, "https://www.zettelwerk.example/");
}
BENCHMARK(exportXml)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) { return zw::bench::runBenchmarks(argc, argv); }
