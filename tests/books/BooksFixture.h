#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "books/CashBook.h"
#include "books/JournalCheck.h"
#include "books/PrintedPage.h"
#include "core/RunError.h"
#include "ledger/ReceiptLedger.h"
#include "tests/app/PeerProgram.h"
#include "tests/app/ProgramFolder.h"

namespace zw::test {

// 25.11.2026 at noon UTC, the same day in every time zone of Europe.
inline std::chrono::system_clock::time_point bookNoon()
{
    return std::chrono::sys_days(std::chrono::year(2026) / 11 / 25) + std::chrono::hours(12);
}

// coreutils' sha256sum, the judge of the journal's hashes.
inline std::string sha256sum(const std::filesystem::path& file)
{
    return run("sha256sum '" + file.string() + "'").output.substr(0, 64);
}

// The German text of the RunError the call raised.
inline std::string messageOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const RunError& error) {
        return error.description();
    }
    return "(kein Fehler)";
}

// The operations of the journal's entries, oldest first.
inline std::vector<JournalOperation> journalOperations(const ProgramPaths& paths)
{
    std::vector<JournalOperation> found;
    for (const auto& entry : journalEntries(paths, std::nullopt, std::nullopt))
        found.push_back(entry.operation);
    return found;
}

// The report as plain text, so a test reads what the page says without a PDF library.
class TextWriter : public DocumentWriter
{
public:
    std::string pagePdf(const PrintedPage& page) const override
    {
        std::string text = page.title + "\n";
        for (const auto& piece : page.texts)
            text += piece.text + "\n";
        return text;
    }
    std::string receiptPdf(const ReceiptForm&) const override { return "receipt"; }
};

// A program folder whose ledger holds `rows` (tab-joined) before the cash book first looks at it.
struct BooksFolder : ProgramFolder
{
    explicit BooksFolder(const std::vector<std::string>& rows = {})
    {
        ReceiptLedger ledger;
        for (const auto& row : rows)
            ledger.appendRow(row);
        if (!rows.empty())
            writeBytes("belege.dat", ledgerBytes(ledger));
    }
    CashBook book{paths, bookNoon};
    ReceiptLedger ledger;
};

inline const std::string kIncomeRow =
    "25.11.2026\t1047\t119,00\t\tEUR\t19\t100,00\t19,00\teinhundertneunzehn\tMax Muster\t\tBeratung\tBonn\t\tQuittung";
inline const std::string kExpenseRow =
    "25.11.2026\t1048\t\t-35,50\tEUR\t7\t33,18\t2,32\tfünfunddreißig\tPost\t\tPorto\tBonn\t\tAusgabebeleg";
inline const std::string kYesterdayRow = "24.11.2026\t1046\t100,00\t\tEUR\t0\t100,00\t0,00\t\tAnna\t\tVerkauf\tBonn\t\tQuittung";

} // namespace zw::test
