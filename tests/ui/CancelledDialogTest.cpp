#include <QAction>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>

#include "app/CommonDialog.h"
#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/export/ExportCommands.h"
#include "ui/service/ServicePart.h"

namespace zw {
namespace {

namespace fs = std::filesystem;

using CancelledDialogTest = test::StartedWindow<installExports, installService>;

// Once the dialog held a name, a cancel used to write there again ("Abbrechen" in the settings export still
// wrote the file and reported success). A cancel ends the command: no file, no message.
TEST_F(CancelledDialogTest, ACancelledFileDialogEndsEveryCommandThatOpenedIt)
{
    for (const char* command : {"alsxml", "regspeichern", "bmpdatei"}) {
        SCOPED_TRACE(command);
        const fs::path chosen = folder.path() / (std::string(command) + ".out");
        std::optional<std::string> answer = chosen.string();
        window->fileDialog(command).setPresenter([&](const CommonDialog&, bool) { return answer; });
        {
            test::ModalCloser closer;
            window->action(command)->trigger();
        }
        ASSERT_TRUE(test::waitFor([&] { return fs::exists(chosen); }));
        fs::remove(chosen);

        answer = std::nullopt;
        test::ModalCloser closer;
        window->action(command)->trigger();
        EXPECT_TRUE(closer.seen.empty());
        EXPECT_FALSE(fs::exists(chosen));
    }
}

} // namespace
} // namespace zw
