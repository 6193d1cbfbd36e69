#pragma once

#include <QString>
#include <string>
#include <vector>

#include "print/PrintJob.h"

namespace zw {

class ReceiptForm;
class Settings;

// The fields of the print dialog druckmenue2011 as the person sees them; the dialog shows and reads these.
struct PrintDialogFields
{
    QString printer; // Combo_Drucker
    Paper paper = Paper::A4;
    bool monochrome = true; // Farbmodus_0
    bool colour = false;    // Farbmodus_1; the stored pair may hold both off
    int qualityIndex = 2;   // Combo_Qualitaet: Medium
    std::string x, y;       // txtxPos, txtyPos
    std::string width, height, secondTop; // txtxSize, txtySize, txtVonOben
    bool sizeLocked = true;
    bool closeAfterPrint = false; // Fenster_Close
};

// Opening: colour and close switch from the settings, the positions from the form's abstand and oben (druck.dat),
// A4 paper, and the printer of printerAtOpening.
PrintDialogFields openPrintDialog(const ReceiptForm& form, const Settings& settings, const QString& lastPrinter);

// The printer the list shows at opening: the one chosen last, else the system's current one, else the first listed;
// a name no longer listed is passed over.
QString printerAtOpening(const std::vector<QString>& printers, const QString& systemPrinter,
                         const QString& lastPrinter);

// A paper choice fills width, height, whether they may be typed, and the second receipt's top from its row.
void choosePaper(PrintDialogFields& fields, Paper paper);

// The colour pair and the close switch are stored at once, for the next opening.
void storeColour(Settings& settings, const PrintDialogFields& fields);
void storeCloseAfterPrint(Settings& settings, bool on);

// One press of "&Drucken": the paper's second top replaces what was typed into the fields, and the request takes
// the form's print layout (two to a sheet) and anzahl (the runs).
PrintRequest pressPrint(PrintDialogFields& fields, const ReceiptForm& form);

} // namespace zw
