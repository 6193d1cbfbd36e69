#pragma once

#include <string>

#include "books/PrintedPage.h"

namespace zw {

class Capture;

// The archive's documents as PDF/A-1b on A4 through the toolkit's PDF writer: fonts embedded, text as text, so
// a reader finds the amount, the payer and the number. The receipt lies where the print job puts it (30 mm from
// the left, 20 mm from the top) at its natural size of 96 pixels an inch.
class ArchivePdf : public DocumentWriter
{
public:
    explicit ArchivePdf(const Capture& capture) : m_capture(capture) {}

    std::string pagePdf(const PrintedPage& page) const override;
    std::string receiptPdf(const ReceiptForm& form) const override;

private:
    const Capture& m_capture;
};

} // namespace zw
