#pragma once

#include <string>
#include <vector>

namespace zw {

class ProgramPaths;
class ReceiptForm;
class ReceiptLedger;

// `LoadLedger`: reads daten/belege.dat into the ledger and makes the folder report. A missing file throws
// RunError 53 before the folder is made; the ledger is then empty. A file that exists but cannot be read
// throws unreadableError and stays marked: saving and filing are refused for the run, the file is left
// untouched.
void loadLedger(ReceiptLedger& ledger, const ProgramPaths& paths);

// `SaveLedger`: rewrites daten/belege.dat from the ledger, through a temporary file and a rename.
void saveLedger(const ReceiptLedger& ledger, const ProgramPaths& paths);

// The tab-joined row of the form's receipt; xpCheck1 decides income or expense.
std::string ledgerRowText(const ReceiptForm& form);

// Files the form's receipt as row 1, makes it current and saves. The print command calls it when Save_Check is on.
void fileReceipt(ReceiptLedger& ledger, const ReceiptForm& form, const ProgramPaths& paths);
// The same for a row already split into its fields, as the print command hands it over.
void fileReceiptRow(ReceiptLedger& ledger, const std::vector<std::string>& fields, const ProgramPaths& paths);

} // namespace zw
