#include "print/PrintDialogFields.h"

#include "core/ReceiptForm.h"
#include "core/Settings.h"

#include <algorithm>

namespace zw {

PrintDialogFields openPrintDialog(const ReceiptForm& form, const Settings& settings, const QString& lastPrinter)
{
    PrintDialogFields fields;
    const std::string mono = settings.get(kApplicationName, "Options", "Farbmodus_sw", "");
    if (!mono.empty()) {
        fields.monochrome = mono == "True";
        fields.colour = settings.get(kApplicationName, "Options", "Farbmodus_farbe", "") == "True";
    }
    fields.closeAfterPrint = settings.get(kApplicationName, "Options", "Druckfenster", "") == "1";
    fields.x = form.abstand();
    fields.y = form.oben();
    choosePaper(fields, Paper::A4);
    fields.printer = printerAtOpening(PrintJob::printerNames(), PrintJob::defaultPrinterName(), lastPrinter);
    return fields;
}

QString printerAtOpening(const std::vector<QString>& printers, const QString& systemPrinter,
                         const QString& lastPrinter)
{
    const auto listed = [&printers](const QString& name) {
        return !name.isEmpty() && std::find(printers.begin(), printers.end(), name) != printers.end();
    };
    if (listed(lastPrinter))
        return lastPrinter;
    if (listed(systemPrinter))
        return systemPrinter;
    // A system without a default printer still prints: to the first one it lists.
    return printers.empty() ? QString() : printers.front();
}

void choosePaper(PrintDialogFields& fields, Paper paper)
{
    const PaperRow& row = paperRow(paper);
    fields.paper = paper;
    fields.width = row.width;
    fields.height = row.height;
    fields.sizeLocked = row.sizeLocked;
    fields.secondTop = row.secondTop;
}

void storeColour(Settings& settings, const PrintDialogFields& fields)
{
    settings.save(kApplicationName, "Options", "Farbmodus_sw", fields.monochrome ? "True" : "False");
    settings.save(kApplicationName, "Options", "Farbmodus_farbe", fields.colour ? "True" : "False");
}

void storeCloseAfterPrint(Settings& settings, bool on)
{
    settings.save(kApplicationName, "Options", "Druckfenster", on ? "1" : "0");
}

PrintRequest pressPrint(PrintDialogFields& fields, const ReceiptForm& form)
{
    fields.secondTop = paperRow(fields.paper).secondTop;
    PrintRequest request;
    request.printer = fields.printer;
    request.paper = fields.paper;
    request.colour = fields.colour ? ColourMode::Colour : ColourMode::Monochrome;
    request.quality = qualityCode(fields.qualityIndex);
    request.x = fields.x;
    request.y = fields.y;
    request.width = fields.width;
    request.height = fields.height;
    request.twoPerSheet = printLayoutRow(form.printLayout()).receiptsPerSheet == 2;
    request.runs = form.anzahl();
    return request;
}

} // namespace zw
