#pragma once

#include <string>
#include <vector>

#include "ledger/ReceiptLedger.h"

namespace zw {

class ProgramPaths;
class ReceiptForm;

// `LoadLedger`: reads daten/belege.dat into the ledger and makes the folder report. A missing file throws
// RunError 53 before the folder is made; the ledger is then empty. A file that exists but cannot be read
// throws unreadableError and stays marked: saving and filing are refused for the run, the file is left
// untouched.
void loadLedger(ReceiptLedger& ledger, const ProgramPaths& paths);

// Reads belege.dat again when another program changed it since the ledger last read or wrote it; true when it
// did. Throws as loadLedger does; a file gone meanwhile empties the ledger.
bool reloadLedgerIfChanged(ReceiptLedger& ledger, const ProgramPaths& paths);

// `SaveLedger`: rewrites daten/belege.dat from the ledger, through a temporary file and a rename, under the
// file's lock; what another program wrote meanwhile is replaced.
void saveLedger(ReceiptLedger& ledger, const ProgramPaths& paths);

// Every change of the ledger by a program that shares the file: under belege.dat's lock, a file changed since the
// ledger last read or wrote it is read again (the grid follows), then `change` runs on the ledger and, unless it
// refuses, the file is saved, all before the lock is given back. Returns what `change` returned. A ledger that
// could not be read is refused before anything changes.
bool updateLedger(ReceiptLedger& ledger, const ProgramPaths& paths, const LedgerChangeRoutine& change);

// The tab-joined row of the form's receipt; xpCheck1 decides income or expense.
std::string ledgerRowText(const ReceiptForm& form);

// Files the form's receipt as row 1 of what is on disk, makes it current and saves. The print command calls it
// when Save_Check is on.
void fileReceipt(ReceiptLedger& ledger, const ReceiptForm& form, const ProgramPaths& paths);
// The same for a row already split into its fields, as the print command hands it over.
void fileReceiptRow(ReceiptLedger& ledger, const std::vector<std::string>& fields, const ProgramPaths& paths);
// The same for a caller without a grid (the command line): under the lock the row's line and then the file's
// bytes as they are go to the new file, so the ledger is never held in memory, however long.
void fileReceiptRowOnTop(const std::vector<std::string>& fields, const ProgramPaths& paths);

} // namespace zw
