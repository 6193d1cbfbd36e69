#include "ui/ExportCommands.h"

#include <QBuffer>

#include "app/AtomicFile.h"
#include "app/ProgramPaths.h"
#include "app/VendorAddresses.h"
#include "export/XmlExport.h"
#include "ui/Quittung.h"
#include "ui/export_pdf.h"

namespace zw {
namespace {

void saveTempBitmap(const QImage& picture, const std::filesystem::path& file)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.convertToFormat(QImage::Format_RGB32).save(&buffer, "BMP"))
        throw RunError::invalidPicture();
    writeFileAtomically(file, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

} // namespace

void installDocumentExports(const ExportContext& context)
{
    Quittung& window = context.window;
    const ProgramPaths& paths = context.paths;
    ReceiptForm& form = context.form;
    const auto capture = context.capture;
    window.setCommand("alspdf", [&window, &paths, capture] {
        const auto picture = paths.home() / "temp.bmp";
        saveTempBitmap(capture(), picture);
        export_pdf dialog(picture, &window);
        dialog.exec();
    });
    window.setCommand("alsxml", [&window, &paths, &form] {
        alsxml(window.speicherDialog(), form, vendorAddresses(paths).webHome);
    });
}

} // namespace zw
