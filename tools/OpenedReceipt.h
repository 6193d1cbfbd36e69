#pragma once

#include <QGuiApplication>
#include <filesystem>
#include <memory>

#include "app/ProgramPaths.h"
#include "app/SettingsStore.h"
#include "core/ReceiptForm.h"
#include "print/FormFonts.h"
#include "export/cDIBSection.h"
#include "tools/CliContext.h"

namespace zw::cli {

// A receipt file opened as the window opens it: the program's start (settings, logo and signature switched
// on, failures passed over), then the file. The toolkit runs without a display for the photograph.
struct OpenedReceipt
{
    OpenedReceipt(CliContext& context, const std::filesystem::path& receipt);

    std::unique_ptr<QGuiApplication> application; // first: it outlives what draws
    ProgramPaths paths;
    SettingsStore settings;
    ReceiptForm form;

    // The photograph of the receipt that printing, the exports and the mail take.
    cDIBSection picture() const;

};

// Before a display-less toolkit starts: the offscreen platform unless one is named, and on stderr only the
// toolkit's errors, since its warnings mean nothing to a script.
void prepareDisplaylessStart();

// Starts the display-less toolkit the drawing needs, unless one runs: QGuiApplication for the receipt's
// photograph, QApplication where widgets draw (the charts).
template <class Toolkit>
std::unique_ptr<Toolkit> startToolkit()
{
    if (QCoreApplication::instance() != nullptr)
        return nullptr;
    prepareDisplaylessStart();
    static int argc = 1;
    static char name[] = "zettelwerk-cli";
    static char* argv[] = {name, nullptr};
    auto application = std::make_unique<Toolkit>(argc, argv);
    installFontSubstitutes();
    return application;
}

} // namespace zw::cli
