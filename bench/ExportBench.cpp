// From the command to the written file, for each export format; the capture is part of every picture path.
#include <QApplication>
#include <QClipboard>
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
#include "ui/export/rtfexp.h"

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

// The plain part that the command line shares with the RTF view: the picture encoded into the document, written.
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

// What alsrtf and export_bar do, without the two modal waits for the user: the picture onto the clipboard, the
// window opened (it pastes), the save dialog answered, the RTF written.
void exportRtfThroughTheView(benchmark::State& state)
{
    zw::Capture capture(fixture().paths);
    const std::string target = (fixture().folder / "view.rtf").string();
    for (auto _ : state) {
        QGuiApplication::clipboard()->clear();
        QGuiApplication::clipboard()->setImage(capture(fixture().form));
        zw::rtfexp window;
        window.dlgCommonDialog().setPresenter([&](const zw::CommonDialog&, bool) { return target; });
        window.exportBar();
    }
    state.counters["rtf_bytes"] = static_cast<double>(std::filesystem::file_size(target));
}
BENCHMARK(exportRtfThroughTheView)->Unit(benchmark::kMillisecond);

void exportBmp(benchmark::State& state)
{
    zw::Capture capture(fixture().paths);
    for (auto _ : state)
        zw::saveBitmapFile(zw::surfaceFromImage(capture(fixture().form)), fixture().folder / "beleg.bmp");
}
BENCHMARK(exportBmp)->Unit(benchmark::kMillisecond);

void exportPicture(benchmark::State& state, zw::PictureFormat format, const char* name)
{
    zw::Capture capture(fixture().paths);
    for (auto _ : state) {
        const int status = zw::savePictureFile(zw::surfaceFromImage(capture(fixture().form)), fixture().folder / name,
                                               format, 85);
        if (status != 0)
            state.SkipWithError(zw::pictureFailureText(status).c_str());
    }
}
BENCHMARK_CAPTURE(exportPicture, png, zw::PictureFormat::Png, "beleg.png")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(exportPicture, jpg85, zw::PictureFormat::Jpeg, "beleg.jpg")->Unit(benchmark::kMillisecond);

// The preview's share: shrinking the 570 x 429 surface to the JPEG window's box.
void previewResample(benchmark::State& state)
{
    zw::Capture capture(fixture().paths);
    const zw::cDIBSection surface = zw::surfaceFromImage(capture(fixture().form));
    for (auto _ : state)
        benchmark::DoNotOptimize(surface.Resample(286, 380));
}
BENCHMARK(previewResample)->Unit(benchmark::kMillisecond);

void exportXml(benchmark::State& state)
{
    auto dialog = answeredDialog(fixture().folder / "out.xml");
    for (auto _ : state)
        zw::alsxml(dialog, fixture().form, "https://www.zettelwerk.example/");
}
BENCHMARK(exportXml)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) { return zw::bench::runBenchmarks<QApplication>(argc, argv); }
