#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "app/ProgramPaths.h"
#include "app/SettingsStore.h"
#include "core/ReceiptForm.h"
#include "print/Capture.h"
#include "tests/app/TempFolder.h"
#include "tests/ui/FaultRecorder.h"
#include "ui/export/ExportCommands.h"
#include "ui/frame/FrameCommands.h"
#include "ui/frame/PartContext.h"
#include "ui/frame/Quittung.h"

namespace zw::test {

// The main window in a program folder of its own, freshly installed from the distribution, with the frame's
// commands; a test joins the parts it is about, then calls start(). No tax-number note and no tips interrupt.
class MainWindowFixture : public ::testing::Test
{
protected:
    // A part joins as in the program: the same routine, handed this fixture's window, receipt, settings and folder.
    template <typename Install> decltype(auto) join(Install install)
    {
        return install(PartContext{*window, form, settings, paths});
    }

    MainWindowFixture() : paths(folder.path() / "home"), settings(folder.path() / "config")
    {
        ProgramPaths::install(ZW_DIST_DIR, paths.home());
        settings.save("Zettelwerk", "Steuer", "Steuer_Check", "0");
        settings.save("zettelwerk", "Options", "Show Tips at Startup", "0");
        window = std::make_unique<Quittung>(form, settings, paths);
        join(installFrameCommands);
    }

    // The start as the program runs it, then the window shown.
    void start()
    {
        window->logic().load();
        window->show();
    }

    // What the export parts get, with this fixture's own capture.
    ExportContext exportContext()
    {
        return {*window, form, settings, paths, [this] { return capture(form); }};
    }

    TempFolder folder;
    ProgramPaths paths;
    SettingsStore settings;
    ReceiptForm form;
    Capture capture{paths};
    std::unique_ptr<Quittung> window;
};

// The fixture with the given parts joined and the window started, for tests that need nothing before the start.
template <auto... Installs> class StartedWindow : public MainWindowFixture
{
protected:
    StartedWindow()
    {
        (join(Installs), ...);
        start();
    }
};

} // namespace zw::test
