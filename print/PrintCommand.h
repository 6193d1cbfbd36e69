#pragma once

#include <QImage>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace zw {

class Capture;
class ProgramPaths;
class ReceiptForm;

// The ledger row of the open receipt, fifteen fields: date, number, income, expense, currency, rate, net, VAT
// share, words, from (two lines), for, place, booking note, type. An expense has its gross amount with a
// leading "-" in the fourth field and nothing in the third.
std::vector<std::string> ledgerRow(const ReceiptForm& form);

// Puts a row at the top of the ledger and saves it; the ledger subsystem supplies the operation.
using FileReceipt = std::function<void(const std::vector<std::string>& row)>;

// The print button xpButton3 up to the print dialog: blank the form for a blank layout, photograph it, keep the
// photograph as temp/temp_.bmp, show the fields again and file the receipt when Save_Check is 1.
// The number is left alone: it advances only with a new receipt.
class PrintCommand
{
public:
    PrintCommand(ReceiptForm& form, const ProgramPaths& paths, const Capture& capture);

    // Returns the written bitmap. When it cannot be written a RunError is thrown (76 for a missing temp
    // folder) and nothing is filed; the fields are shown again all the same, so the form stays usable.
    std::filesystem::path run(const FileReceipt& fileReceipt);

    std::filesystem::path bitmapFile() const;

private:
    void blankForPhotograph();
    void showAgain();

    ReceiptForm& m_form;
    const ProgramPaths& m_paths;
    const Capture& m_capture;
};

// Writes a picture as a 24-bit Windows bitmap, replacing the file. Throws RunError 76 when the folder is
// missing, 75 when the file cannot be written.
void saveBitmap(const QImage& picture, const std::filesystem::path& file);

} // namespace zw
