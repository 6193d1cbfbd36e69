#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace zw {

class ReceiptForm;
class Settings;
class WindowParts;

// The two receipt file formats: .ZW5 (14 lines, written and read) and the older .ZWI (13 lines, no kind of receipt).
enum class ReceiptFileFormat { Zw5, Zwi };

// The bytes of a .ZW5 record of the form: one line per field, Windows-1252, CR LF.
std::string receiptFileBytes(const ReceiptForm& form);

// Reads records from the bytes into the form, the last one winning. Each field is cleared and then appended to, so
// the change handling of Text12 runs as it does for typing. A record cut short throws RunError 62 with the fields
// read so far kept.
void readReceiptRecords(std::string_view bytes, ReceiptForm& form, ReceiptFileFormat format);

// The receipt file commands of the file menu. Every failure is thrown as RunError for the caller's error trap.
class ReceiptFileCommands
{
public:
    ReceiptFileCommands(ReceiptForm& form, Settings& settings, WindowParts& parts);

    // `save`: writes when the dialog gave a name; stores the name, an empty one too, as the last file.
    void save(const std::string& dialogFileName);
    // `oeffnen` and `men_dat`(1): an empty name ends quietly.
    void open(const std::filesystem::path& path);
    // `oeffnen_vorv5`.
    void openOld(const std::filesystem::path& path);
    // `men_dat`(1): the caption is the path, "Kein Pfad vorhanden..." included.
    void openLast(const std::string& caption);

private:
    ReceiptForm& m_form;
    Settings& m_settings;
    WindowParts& m_parts;
};

// Opens a receipt file as the window's open command does, for callers without a window.
void openReceiptFile(const std::filesystem::path& path, ReceiptForm& form);

} // namespace zw
