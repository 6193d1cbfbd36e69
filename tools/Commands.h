#pragma once

#include <span>

#include "tools/CliContext.h"

namespace zw::cli {

// Every command of the companion command line; each lives in its own file.
std::span<const CliCommand> commands();

// zettelwerk-cli runs the commands that need neither the toolkit nor the network itself and hands every other
// one, with the same command line, to the full command line (zettelwerk-cli-full, beside it in the build and in
// the package's libexec folder), so that those load no more than they need. This is the hand-over.
int runInFullCommandLine(CliContext& context);
// The option, first on the full command line's arguments, that names zettelwerk-cli's folder.
inline constexpr const char* kFolderOption = "--cli-folder";

int runAuditExport(CliContext& context);
int runBackup(CliContext& context);
int runExport(CliContext& context);
int runInfo(CliContext& context);
int runLedger(CliContext& context);
int runLedgerDatev(CliContext& context);
int runLedgerWithBooks(CliContext& context);
int runLedgerChart(CliContext& context);
int runLedgerClose(CliContext& context);
int runLedgerFile(CliContext& context);
int runLedgerReport(CliContext& context);
int runJournal(CliContext& context);
int runLists(CliContext& context);
int runMail(CliContext& context);
int runRestore(CliContext& context);
int runUpdate(CliContext& context);
int runWords(CliContext& context);
int runGross(CliContext& context);
int runNet(CliContext& context);

} // namespace zw::cli
