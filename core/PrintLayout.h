#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace zw {

// What one printed sheet carries: one or two receipts, filled in or blank for writing by hand.
enum class PrintLayout { OneReceipt, TwoReceipts, OneBlank, TwoBlanks };

// One row per layout: its option field in the main window (`Option1`..`Option4`), its caption there,
// the value stored under Drucken/Belege, and what it prints.
struct PrintLayoutRow
{
    PrintLayout layout;
    int option;
    std::string_view caption;
    std::string_view stored;
    int receiptsPerSheet;
    bool blank;
};

// In the order the main window lists them.
inline constexpr std::array<PrintLayoutRow, 4> kPrintLayouts = {{
    {PrintLayout::OneReceipt, 1, "1 Quittung pro Blatt drucken", "1", 1, false},
    {PrintLayout::TwoReceipts, 3, "2 Quittungen auf einem Blatt drucken", "2", 2, false},
    {PrintLayout::OneBlank, 2, "1 Blankoquittung pro Blatt drucken", "1b", 1, true},
    {PrintLayout::TwoBlanks, 4, "2 Blankoquittungen auf einem Blatt drucken", "2b", 2, true},
}};

constexpr const PrintLayoutRow& printLayoutRow(PrintLayout layout)
{
    for (const auto& row : kPrintLayouts)
        if (row.layout == layout)
            return row;
    return kPrintLayouts.front();
}

// The layout behind option field `Option<number>`; none for a number no option carries.
constexpr std::optional<PrintLayout> printLayoutOfOption(int option)
{
    for (const auto& row : kPrintLayouts)
        if (row.option == option)
            return row.layout;
    return std::nullopt;
}

// The layout a stored Drucken/Belege value selects; an absent or unknown value selects one receipt per sheet.
constexpr PrintLayout printLayoutOfStored(std::string_view stored)
{
    for (const auto& row : kPrintLayouts)
        if (row.stored == stored)
            return row.layout;
    return PrintLayout::OneReceipt;
}

} // namespace zw
