#include <QGuiApplication>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>

#include "app/ProgramPaths.h"
#include "core/ReceiptForm.h"
#include "export/DibFile.h"
#include "export/ImageFiles.h"
#include "print/Capture.h"
#include "print/FormFonts.h"

namespace {

using zw::FormElement;

// A filled receipt on the distribution's background, as the export commands photograph it.
struct Fixture
{
    Fixture() : folder(std::filesystem::temp_directory_path() / "zw-pictures-bench"), paths(folder)
    {
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
        form.setText(FormElement::RTFBox, "Muster GmbH\r\nHauptstraße 1\r\n50667 Köln");
    }

    std::filesystem::path folder;
    zw::ProgramPaths paths;
    zw::ReceiptForm form;
};

Fixture& fixture()
{
    static Fixture instance;
    return instance;
}

// From the command to the file on disk: capture, the surface, the encoder, the write.
void bitmapFile(benchmark::State& state)
{
    zw::Capture capture(fixture().paths);
    for (auto _ : state)
        zw::saveBitmapFile(zw::surfaceFromImage(capture(fixture().form)), fixture().folder / "beleg.bmp");
}
BENCHMARK(bitmapFile)->Unit(benchmark::kMillisecond);

void pictureFile(benchmark::State& state, zw::PictureFormat format, const char* name)
{
    zw::Capture capture(fixture().paths);
    for (auto _ : state) {
        const int status = zw::savePictureFile(zw::surfaceFromImage(capture(fixture().form)), fixture().folder / name,
                                               format, 85);
        if (status != 0)
            state.SkipWithError(zw::pictureFailureText(status).c_str());
    }
}
BENCHMARK_CAPTURE(pictureFile, png, zw::PictureFormat::Png, "beleg.png")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pictureFile, jpg85, zw::PictureFormat::Jpeg, "beleg.jpg")->Unit(benchmark::kMillisecond);

// The preview's share: shrinking the 570 x 429 surface to the JPEG window's box.
void previewResample(benchmark::State& state)
{
    zw::Capture capture(fixture().paths);
    const zw::cDIBSection surface = zw::surfaceFromImage(capture(fixture().form));
    for (auto _ : state)
        benchmark::DoNotOptimize(surface.Resample(286, 380));
}
BENCHMARK(previewResample)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    zw::installFontSubstitutes();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    std::error_code ignored;
    std::filesystem::remove_all(fixture().folder, ignored);
    return 0;
}
