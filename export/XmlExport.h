#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace zw {

class CommonDialog;
class ReceiptForm;

// The receipt as a small XML file for other programs: the fields' texts exactly as they stand on screen,
// neither escaped nor trimmed, so a field holding "<" or "&" gives a file that is not well-formed; readers
// of these files expect just that.
std::string receiptXml(const ReceiptForm& form, std::string_view webAddress);

// The file's bytes: receiptXml in Windows-1252.
std::string receiptXmlBytes(const ReceiptForm& form, std::string_view webAddress);

// Replaces the file whole with receiptXmlBytes. Throws RunError when the file cannot be written.
void writeReceiptXml(const ReceiptForm& form, const std::filesystem::path& file, std::string_view webAddress);

// alsxml: asks the main window's dialog for a name and writes the file there. The dialog keeps its last name,
// so a cancel after an earlier save writes to that earlier file; only an empty name writes nothing.
void alsxml(CommonDialog& dialog, const ReceiptForm& form, std::string_view webAddress);

} // namespace zw
