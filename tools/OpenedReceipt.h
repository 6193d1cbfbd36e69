#pragma once

#include <QGuiApplication>
#include <filesystem>
#include <memory>

#include "app/ProgramPaths.h"
#include "app/SettingsStore.h"
#include "core/ReceiptForm.h"
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

    // Starts the display-less toolkit the drawing needs, unless one runs; other drawing commands call it too.
    static std::unique_ptr<QGuiApplication> startToolkit();
};

} // namespace zw::cli
