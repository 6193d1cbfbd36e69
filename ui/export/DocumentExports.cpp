#include "ui/export/ExportCommands.h"

#include "app/ProgramPaths.h"
#include "app/VendorAddresses.h"
#include "export/DibFile.h"
#include "export/ImageFiles.h"
#include "export/XmlExport.h"
#include "ui/frame/Quittung.h"
#include "ui/export/export_pdf.h"

namespace zw {

void installDocumentExports(const ExportContext& context)
{
    Quittung& window = context.window;
    const ProgramPaths& paths = context.paths;
    ReceiptForm& form = context.form;
    const auto capture = context.capture;
    window.setCommand("alspdf", [&window, &paths, capture] {
        const auto picture = paths.home() / "temp.bmp";
        saveBitmapFile(surfaceFromImage(capture()), picture);
        export_pdf dialog(picture, &window);
        dialog.exec();
    });
    window.setCommand("alsxml", [&window, &paths, &form] {
        alsxml(window.fileDialog("alsxml"), form, vendorAddresses(paths).webHome);
    });
}

} // namespace zw
