#pragma once

#include <string>

namespace zw {

class ProgramPaths;
class ReceiptLedger;

// The page of report1: every row as the window strings it together, unescaped.
std::string reportHtml(const ReceiptLedger& ledger);

// Writes the page as one line to daten/last.html and daten/last.rep; returns the path of last.html.
std::string writeReport(const ProgramPaths& paths, const std::string& html);

// "Belegliste &löschen": both files get an empty line; the ledger stays.
std::string clearReport(const ProgramPaths& paths);

} // namespace zw
