#pragma once

#include <QImage>
#include <functional>

#include "ui/frame/PartContext.h"

namespace zw {

class ProgramPaths;
class Quittung;
class ReceiptForm;
class Settings;

// What every export command works with: the window, its form and folders, and the photograph of the receipt
// area picToPrint as the print composition prepares it (570 x 429, 24-bit colour), taken anew on each call.
struct ExportContext
{
    Quittung& window;
    ReceiptForm& form;
    Settings& settings;
    const ProgramPaths& paths;
    std::function<QImage()> capture;
};

// The receipt leaves the program: "Als PDF/XML/RTF/BMP/JPG/PNG Datei" and the copy as a picture. Call once; the
// photograph comes from the window's one capture, with the session's receipt colour.
void installExports(const PartContext& context);

// The parts of installExports, one per window family.
void installDocumentExports(const ExportContext& context); // alspdf, alsxml
void installRtfExport(const ExportContext& context);       // alsrtf
void installPictureExports(const ExportContext& context);  // bmpdatei, jpeg, pngdatei, quikop

} // namespace zw
