#include "export/PdfExport.h"

#include "app/CommonDialog.h"

namespace zw {

PdfExport::PdfExport(std::filesystem::path pictureFile, LocalClock clock)
    : m_pictureFile(std::move(pictureFile)), m_clock(std::move(clock))
{
}

void PdfExport::addLine(std::string line)
{
    m_log.push_back(std::move(line));
    if (logChanged)
        logChanged();
}

std::optional<RunError> PdfExport::cmdGo(CommonDialog& dialog)
{
    m_log.clear();
    addLine("Los gehts...");
    m_pdf = std::make_unique<clsPDF>(m_clock);
    clsPDF& pdf = *m_pdf;
    pdf.PageStarted = [this, &pdf] { addLine("Seite " + std::to_string(pdf.PageNumber()) + " begonnen..."); };
    pdf.PageFinished = [this, &pdf] {
        addLine("Seite " + std::to_string(pdf.PageNumber()) + " beendet.");
        m_openEnabled = true;
    };
    // A picture alone opens no page; the blank lines do, and they are the document's only text.
    for (int line = 0; line < 40; ++line)
        pdf.PrintLine("");
    pdf.DrawPicture(0, 0, 566, 425, m_pictureFile, false);

    dialog.DialogTitle = kDialogTitle;
    dialog.Filter = kDialogFilter;
    dialog.CancelError = true;
    try {
        dialog.ShowSave();
        pdf.SavePDF(dialog.FileName);
        addLine("Fertig!");
    } catch (const RunError& error) {
        return error;
    }
    return std::nullopt;
}

} // namespace zw
