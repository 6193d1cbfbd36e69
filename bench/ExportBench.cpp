// From the command to the written file, for each export format; the capture is part of every picture path.
#include <benchmark/benchmark.h>

#include "app/AtomicFile.h"
#include "app/CommonDialog.h"
#include "bench/ReceiptFixture.h"
#include "export/DibFile.h"
#include "export/ImageFiles.h"
#include "export/PdfExport.h"
#include "export/RtfExport.h"
#include "export/rtf/RtfWriter.h"
#include "export/XmlExport.h"
#include "print/Capture.h"

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
        zw::saveBitmapFile(zw::surfaceFromImage(capture(fixture().form)), picture);
        zw::PdfExport pdf(picture);
        pdf.cmdGo(dialog);
    }
}
BENCHMARK(exportPdf)->Unit(benchmark::kMillisecond);

void exportRtf(benchmark::State& state)
{
    zw::Capture capture(fixture().paths);
    const auto file = fixture().folder / "out.rtf";
    for (auto _ : state) {
        const auto surface = zw::surfaceFromImage(capture(fixture().form));
        const auto document = zw::receiptRtfDocument(zw::parseBitmapFile(zw::bitmapFileBytes(surface)));
        zw::writeFileAtomically(file, zw::rtf::writeRtf(document));
    }
}
BENCHMARK(exportRtf)->Unit(benchmark::kMillisecond);

void exportXml(benchmark::State& state)
{
    auto dialog = answeredDialog(fixture().folder / "out.xml");
    for (auto _ : state)
        zw::alsxml(dialog, fixture().form, "https://www.zettelwerk.example/");
}
BENCHMARK(exportXml)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) { return zw::bench::runBenchmarks(argc, argv); }
