#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "books/BookDate.h"

namespace zw {

class ProgramPaths;

// The days an audit export covers, both included.
struct AuditPeriod
{
    BookDate from;
    BookDate to;
};

// The period as the window and the command line take it, two days TT.MM.JJJJ. Throws RunError 5 with a German
// message for a missing or malformed day and for a period whose end lies before its start.
AuditPeriod auditPeriod(std::string_view fromText, std::string_view toText);

// The description standard's DTD (version 1.1 of 01.08.2002) as published, written beside index.xml.
inline constexpr std::string_view kGdpduDtdName = "gdpdu-01-08-2002.dtd";
std::string_view gdpduDtd();

// How much of the work is done, from 0 to 100, for a progress bar.
using AuditProgress = std::function<void(int percent)>;

struct AuditCounts
{
    std::int64_t receipts = 0;
    std::int64_t entries = 0;
    std::int64_t closes = 0;
};
// "Exportiert: ..." as the window and the command line tell it.
std::string auditSummary(const AuditCounts& counts, const std::filesystem::path& folder);

// The data for a tax auditor in the GDPdU/GoBD description standard ("Z3"): belege.csv (the ledger's rows of
// the period), journal.csv (the change journal's entries of the period), kassenberichte.csv (the daily closes
// of the period's days), index.xml describing the three and the DTD beside it. The CSV files are UTF-8 with
// ";" between fields, CR LF after each record, the column names in the first line, amounts with a decimal
// comma and every text in double quotes. belege.dat and journal.dat are read under the ledger's lock, so both
// show one moment. A ledger row without a readable date or with an amount that is no number, and a journal
// line that is no entry, stop the export with a German message (RunError 5) before anything is written. The
// folder is made when missing; each file is replaced whole, other files of the folder stay.
AuditCounts exportAuditData(const ProgramPaths& paths, const AuditPeriod& period,
                            const std::filesystem::path& folder, const AuditProgress& progress = {});

} // namespace zw
