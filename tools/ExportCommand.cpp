#include <QDate>
#include <QGuiApplication>
#include <QImage>

#include <cstdio>
#include <ostream>
#include <string>

#include "app/AtomicFile.h"
#include "app/CommonDialog.h"
#include "app/ProgramPaths.h"
#include "app/QuittungLogic.h"
#include "app/SettingsStore.h"
#include "app/VendorAddresses.h"
#include "core/FormHost.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "export/DibFile.h"
#include "export/ImageFiles.h"
#include "export/PdfExport.h"
#include "export/RtfExport.h"
#include "export/rtf/RtfWriter.h"
#include "export/XmlExport.h"
#include "ledger/ReceiptFile.h"
#include "print/Capture.h"
#include "print/FormFonts.h"
#include "print/PictureCommands.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Environment.h"
#include "tools/OpenedReceipt.h"

namespace zw::cli {
namespace {

enum class ExportFormat { Pdf, Xml, Rtf, Bmp, Png, Jpg };

std::optional<ExportFormat> exportFormatNamed(std::string_view name)
{
    static const std::pair<std::string_view, ExportFormat> kNames[] = {
        {"pdf", ExportFormat::Pdf}, {"xml", ExportFormat::Xml}, {"rtf", ExportFormat::Rtf},
        {"bmp", ExportFormat::Bmp}, {"png", ExportFormat::Png}, {"jpg", ExportFormat::Jpg}};
    for (const auto& [known, format] : kNames)
        if (known == name)
            return format;
    return std::nullopt;
}

// The quality bar's start value in the JPEG window.
constexpr int kDefaultJpegQuality = 85;

// A dialog that always answers with the name the script gave.
void answerWith(CommonDialog& dialog, const std::string& name)
{
    dialog.setPresenter([name](const CommonDialog&, bool) { return name; });
}

int usageError(CliContext& context)
{
    context.err << "Aufruf: zettelwerk-cli export pdf|xml|rtf|bmp|png|jpg QUITTUNG.ZW5 ZIELDATEI [--quality 0..100]\n";
    return 2;
}

} // namespace

// `export FORMAT RECEIPT.ZW5 OUT`: the program starts as the window does, opens the receipt file, and exports it
// the way the window's command does, with OUT as the dialog's answer.
int runExport(CliContext& context)
{
    auto& arguments = context.arguments;
    const auto quality = takeOption(arguments, "--quality");
    if (arguments.size() != 3)
        return usageError(context);
    const auto format = exportFormatNamed(arguments[0]);
    if (!format)
        return usageError(context);
    int jpegQuality = kDefaultJpegQuality;
    if (quality) {
        try {
            std::size_t used = 0;
            jpegQuality = std::stoi(*quality, &used);
            if (used != quality->size() || jpegQuality < 0 || jpegQuality > 100)
                return usageError(context);
        } catch (const std::exception&) {
            return usageError(context);
        }
    }
    const std::filesystem::path receipt = arguments[1];
    const std::string target = arguments[2];

    try {
        OpenedReceipt opened(context, receipt);
        ReceiptForm& form = opened.form;
        const ProgramPaths& paths = opened.paths;

        CommonDialog dialog;
        answerWith(dialog, target);
        if (*format == ExportFormat::Xml) {
            alsxml(dialog, form, vendorAddresses(paths).webHome);
            return 0;
        }
        const cDIBSection picture = opened.picture();
        switch (*format) {
        case ExportFormat::Pdf: {
            const auto temp = paths.home() / "temp.bmp";
            saveBitmapFile(picture, temp);
            PdfExport pdf(temp);
            if (auto fault = pdf.cmdGo(dialog))
                throw *fault;
            return 0;
        }
        case ExportFormat::Bmp:
            saveBitmapFile(picture, target);
            return 0;
        case ExportFormat::Png:
        case ExportFormat::Jpg: {
            const int status = savePictureFile(picture, target,
                                               *format == ExportFormat::Png ? PictureFormat::Png : PictureFormat::Jpeg,
                                               jpegQuality);
            if (status == PictureStatus::Ok)
                return 0;
            context.err << pictureFailureText(status) << "\n";
            return 1;
        }
        case ExportFormat::Rtf:
            // The document of the RTF view as it opens, saved at once.
            writeFileAtomically(target, rtf::writeRtf(receiptRtfDocument(parseBitmapFile(bitmapFileBytes(picture)))));
            return 0;
        case ExportFormat::Xml:
            break;
        }
        return 0;
    } catch (const RunError& error) {
        context.err << "Fehler " << error.number() << ": " << error.description() << "\n";
        return 1;
    }
}

} // namespace zw::cli
