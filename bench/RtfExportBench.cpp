#include <QApplication>
#include <QClipboard>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>

#include "app/ProgramPaths.h"
#include "core/ReceiptForm.h"
#include "export/RtfExport.h"
#include "export/rtf/RtfWriter.h"
#include "print/Capture.h"
#include "ui/RtfBridge.h"
#include "ui/rtfexp.h"

namespace {

using zw::FormElement;

// A filled receipt on the distribution's background; the window runs on the offscreen platform.
struct Fixture
{
    Fixture() : folder(std::filesystem::temp_directory_path() / "zw-rtfexp-bench"), paths(folder)
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static int argc = 1;
        static char name[] = "zw_rtfexp_bench";
        static char* argv[] = {name, nullptr};
        application = new QApplication(argc, argv);
        std::filesystem::create_directories(paths.backgroundFolder());
        if (const char* dist = std::getenv("ZETTELWERK_DIST")) {
            std::error_code ignored;
            std::filesystem::copy(std::filesystem::path(dist) / "hintergrund", paths.backgroundFolder(),
                                  std::filesystem::copy_options::overwrite_existing, ignored);
        }
        form.setFormBackground("\\hintergrund\\quittung_leer.jpg");
        form.setText(FormElement::Text12, "1.234,56");
        form.setText(FormElement::Text5, "Erika Mustermann, Heidestraße 17, 51147 Köln");
        form.setText(FormElement::Text7, "Miete für den Monat März einschließlich Nebenkosten");
        form.setText(FormElement::Text8, "Köln");
        form.setText(FormElement::Text9, "23.11.2026");
    }

    std::filesystem::path folder;
    zw::ProgramPaths paths;
    zw::ReceiptForm form;
    QApplication* application = nullptr;
};

Fixture& fixture()
{
    static Fixture instance;
    return instance;
}

// What alsrtf and export_bar do, without the two modal waits for the user: the picture onto the clipboard, the
// window opened (it pastes), the save dialog answered, the RTF written.
void commandToSavedFile(benchmark::State& state, bool withCapture)
{
    Fixture& f = fixture();
    zw::Capture capture(f.paths);
    const QImage captured = capture(f.form);
    const std::string target = (f.folder / "beleg.rtf").string();
    for (auto _ : state) {
        const QImage picture = withCapture ? capture(f.form) : captured;
        QGuiApplication::clipboard()->clear();
        QGuiApplication::clipboard()->setImage(picture);
        zw::rtfexp window;
        window.dlgCommonDialog().setPresenter([&](const zw::CommonDialog&, bool) { return target; });
        window.exportBar();
    }
    state.counters["rtf_bytes"] = static_cast<double>(std::filesystem::file_size(target));
}

void alsrtfToFileWithoutCapture(benchmark::State& state) { commandToSavedFile(state, false); }
BENCHMARK(alsrtfToFileWithoutCapture)->Unit(benchmark::kMillisecond);

void alsrtfToFileWithCapture(benchmark::State& state) { commandToSavedFile(state, true); }
BENCHMARK(alsrtfToFileWithCapture)->Unit(benchmark::kMillisecond);

// The plain part that the command line shares: picture encoded and written.
void receiptDocumentWritten(benchmark::State& state)
{
    Fixture& f = fixture();
    const zw::Bitmap bitmap = zw::bitmapOfImage(zw::Capture(f.paths)(f.form));
    for (auto _ : state)
        benchmark::DoNotOptimize(zw::rtf::writeRtf(zw::receiptRtfDocument(bitmap)));
}
BENCHMARK(receiptDocumentWritten)->Unit(benchmark::kMillisecond);

} // namespace
