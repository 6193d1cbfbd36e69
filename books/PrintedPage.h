#pragma once

#include <string>
#include <vector>

namespace zw {

class ReceiptForm;

// One A4 page as text pieces and rules placed in millimetres from the top left: what the cash report is,
// before anything draws it.
struct PageText
{
    enum class Align { Left, Right };
    double leftMm = 0;
    double topMm = 0; // the text's top
    std::string text;
    double points = 10;
    bool bold = false;
    Align align = Align::Left; // Right: leftMm is where the text ends
};
struct PageRule
{
    double leftMm = 0;
    double topMm = 0;
    double rightMm = 0;
};
struct PrintedPage
{
    std::string title; // the document's title
    std::vector<PageText> texts;
    std::vector<PageRule> rules;
};

// Draws the archive's documents as PDF/A with text a reader can search; the toolkit's painter lives behind it.
class DocumentWriter
{
public:
    virtual ~DocumentWriter() = default;
    virtual std::string pagePdf(const PrintedPage& page) const = 0;
    // The receipt as the print composition lays it out.
    virtual std::string receiptPdf(const ReceiptForm& form) const = 0;
};

} // namespace zw
