#include "ledger/ReceiptFile.h"

#include <array>
#include <span>

#include "app/AtomicFile.h"
#include "app/QuittungLogic.h"
#include "app/TextFile.h"
#include "core/CodePage.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "core/Settings.h"

namespace zw {
namespace {

using F = FormElement;

// Line order of a .ZW5 record; a .ZWI record is the same without the first line.
constexpr std::array kZw5Order = {F::Label1, F::Text1,  F::Text2, F::Text3, F::Text10, F::Text11, F::Text12,
                                  F::Text4,  F::Text5,  F::Text6, F::Text7, F::Text8,  F::Text9,  F::Text14};

std::span<const FormElement> fieldOrder(ReceiptFileFormat format)
{
    std::span<const FormElement> all(kZw5Order);
    return format == ReceiptFileFormat::Zw5 ? all : all.subspan(1);
}

} // namespace

std::string receiptFileBytes(const ReceiptForm& form)
{
    std::string bytes;
    for (FormElement field : kZw5Order) {
        bytes += utf8ToCp1252(form.text(field));
        bytes += "\r\n";
    }
    return bytes;
}

void readReceiptRecords(std::string_view bytes, ReceiptForm& form, ReceiptFileFormat format)
{
    const auto lines = splitLines(cp1252ToUtf8(bytes));
    const auto order = fieldOrder(format);
    ReceiptForm::Batch batch(form);
    std::size_t next = 0;
    while (next < lines.size()) {
        for (FormElement field : order)
            form.setText(field, "");
        for (FormElement field : order) {
            if (next >= lines.size())
                throw RunError::inputPastEnd();
            const std::string& line = lines[next++];
            // The words are not taken from a .ZW5 file: the change handling of Text12 has written them.
            if (field == F::Text4 && format == ReceiptFileFormat::Zw5)
                continue;
            form.appendText(field, line);
        }
    }
}

ReceiptFileCommands::ReceiptFileCommands(ReceiptForm& form, Settings& settings, WindowParts& parts)
    : m_form(form), m_settings(settings), m_parts(parts)
{
}

void ReceiptFileCommands::save(const std::string& dialogFileName)
{
    if (!dialogFileName.empty())
        writeFileAtomically(dialogFileName, receiptFileBytes(m_form));
    // An empty name from the dialog blanks the last-file entry too; that is wanted.
    m_settings.save(kApplicationName, "Options", "Letzter_Beleg", dialogFileName);
    m_parts.setLastFileCaption(dialogFileName);
}

void ReceiptFileCommands::open(const std::filesystem::path& path)
{
    if (path.empty())
        return;
    readReceiptRecords(readFileBytes(path), m_form, ReceiptFileFormat::Zw5);
}

void ReceiptFileCommands::openOld(const std::filesystem::path& path)
{
    if (path.empty())
        return;
    readReceiptRecords(readFileBytes(path), m_form, ReceiptFileFormat::Zwi);
}

void ReceiptFileCommands::openLast(const std::string& caption)
{
    readReceiptRecords(readFileBytes(caption), m_form, ReceiptFileFormat::Zw5);
}

void openReceiptFile(const std::filesystem::path& path, ReceiptForm& form)
{
    readReceiptRecords(readFileBytes(path), form, ReceiptFileFormat::Zw5);
}

} // namespace zw
