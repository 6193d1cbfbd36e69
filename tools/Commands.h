#pragma once

#include <span>

#include "tools/CliContext.h"

namespace zw::cli {

// Every command of the companion command line; each lives in its own file.
std::span<const CliCommand> commands();

int runAuditExport(CliContext& context);
int runBackup(CliContext& context);
int runExport(CliContext& context);
int runInfo(CliContext& context);
int runLedger(CliContext& context);
int runLedgerDatev(CliContext& context);
int runLedgerWithBooks(CliContext& context);
int runLedgerChart(CliContext& context);
int runJournal(CliContext& context);
int runLists(CliContext& context);
int runMail(CliContext& context);
int runRestore(CliContext& context);
int runUpdate(CliContext& context);
int runWords(CliContext& context);
int runGross(CliContext& context);
int runNet(CliContext& context);

} // namespace zw::cli
