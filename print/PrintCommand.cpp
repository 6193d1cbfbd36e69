#include "print/PrintCommand.h"

#include "app/ProgramPaths.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "print/Capture.h"

namespace zw {
namespace {

using F = FormElement;

} // namespace

std::vector<std::string> ledgerRow(const ReceiptForm& form)
{
    const bool income = form.income() == 1;
    const std::string& gross = form.text(F::Text12);
    return {form.text(F::Text9),  form.text(F::Text1),  income ? gross : std::string(),
            income ? std::string() : "-" + gross,
            form.text(F::Text2),  form.text(F::Text3),  form.text(F::Text10), form.text(F::Text11),
            form.text(F::Text4),  form.text(F::Text5),  form.text(F::Text6),  form.text(F::Text7),
            form.text(F::Text8),  form.text(F::Text14), form.text(F::Label1)};
}

void saveBitmap(const QImage& picture, const std::filesystem::path& file)
{
    std::error_code error;
    if (!std::filesystem::is_directory(file.parent_path(), error))
        throw RunError::pathNotFound();
    // RGB32 is written with 24 bits per pixel, the form of the old picture files.
    QImage rgb = picture.format() == QImage::Format_RGB32 ? picture : picture.convertToFormat(QImage::Format_RGB32);
    if (!rgb.save(QString::fromStdString(file.string()), "BMP"))
        throw RunError::pathFileAccess();
}

PrintCommand::PrintCommand(ReceiptForm& form, const ProgramPaths& paths, const Capture& capture)
    : m_form(form), m_paths(paths), m_capture(capture)
{
}

std::filesystem::path PrintCommand::bitmapFile() const { return m_paths.tempFolder() / "temp_.bmp"; }

void PrintCommand::blankForPhotograph()
{
    for (F hidden : {F::Text1, F::Text2, F::Text12, F::RTFBox, F::steuernummer2, F::Image7, F::Text4, F::Text5,
                     F::Text6, F::Text7, F::Text8, F::Text9, F::Text14, F::Image6})
        m_form.setVisible(hidden, false);
    m_form.setText(F::Text10, "");
    m_form.setText(F::Text11, "");
}

void PrintCommand::showAgain()
{
    // RTFBox is not among them: after a blank print the issuer block stays hidden until a logo command,
    // and the cleared amounts stay empty until Text12 is entered again. Both losses are wanted.
    for (F shown : {F::Text1, F::Text2, F::Text12, F::steuernummer2, F::Image7, F::Text4, F::Text5, F::Text6,
                    F::Text7, F::Text8, F::Text9, F::Text14, F::Image6})
        m_form.setVisible(shown, true);
}

std::filesystem::path PrintCommand::run(const FileReceipt& fileReceipt)
{
    if (printLayoutRow(m_form.printLayout()).blank)
        blankForPhotograph();
    const auto file = bitmapFile();
    try {
        saveBitmap(m_capture(m_form), file);
    } catch (...) {
        showAgain();
        throw;
    }
    showAgain();
    if (m_form.saveCheck() == 1 && fileReceipt)
        fileReceipt(ledgerRow(m_form));
    return file;
}

} // namespace zw
