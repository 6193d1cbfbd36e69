#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/RunError.h"
#include "export/clsPDF.h"

namespace zw {

class CommonDialog;

// The PDF export window without its widgets: it puts the captured receipt picture on an A4 page, asks for a
// file name and saves, telling its progress line by line. Nothing of the receipt is text in the document.
class PdfExport
{
public:
    // The save dialog's fixed settings.
    static constexpr const char* kDialogTitle = "PDF-Export";
    static constexpr const char* kDialogFilter = "Adobe Acrobat Reader (*.pdf)|*.pdf";

    explicit PdfExport(std::filesystem::path pictureFile, LocalClock clock = currentLocalDateTime);

    // The progress list lstLog.
    const std::vector<std::string>& log() const { return m_log; }
    // Command1, which opens the saved file: enabled once a page was finished, and then for good.
    bool openEnabled() const { return m_openEnabled; }
    // Called after each line, so the window repaints its list while the work goes on.
    std::function<void()> logChanged;

    // cmdGo. A picture that cannot be read throws RunError, as nothing traps it yet. From the save dialog on,
    // faults end the command silently: the window ignores the returned fault, scripts report it.
    std::optional<RunError> cmdGo(CommonDialog& dialog);

private:
    void addLine(std::string line);

    std::filesystem::path m_pictureFile;
    LocalClock m_clock;
    std::unique_ptr<clsPDF> m_pdf;
    std::vector<std::string> m_log;
    bool m_openEnabled = false;
};

} // namespace zw
