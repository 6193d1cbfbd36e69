#pragma once

// A filled receipt in a program folder of its own, shared by the benchmarks that photograph or export it.
#include <QGuiApplication>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>

#include "app/ProgramPaths.h"
#include "core/ReceiptForm.h"
#include "print/FormFonts.h"

namespace zw::bench {

// A filled receipt on the distribution's background, as the print button photographs it.
struct Fixture
{
    Fixture()
        : folder(std::filesystem::temp_directory_path() / "zw-receipt-bench"),
          paths(folder)
    {
        std::filesystem::create_directories(paths.backgroundFolder());
        std::filesystem::create_directories(paths.tempFolder());
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
        form.setText(FormElement::Text14, "Kasse 1, Beleg 42");
    }

    std::filesystem::path folder;
    zw::ProgramPaths paths;
    zw::ReceiptForm form;
};

inline Fixture& fixture()
{
    static Fixture instance;
    return instance;
}

// The main of a benchmark program that draws text: a display-less platform and the form's font twins. Programs
// that open windows pass QApplication.
template <typename Application = QGuiApplication>
int runBenchmarks(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    zw::installFontSubstitutes();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    std::error_code ignored;
    std::filesystem::remove_all(fixture().folder, ignored);
    return 0;
}

} // namespace zw::bench
