#pragma once

namespace zw {

class ProgramPaths;
class Quittung;
class ReceiptForm;

// The autocompletion of Text5 to Text8 from daten/autocom.dat, its notice autoge, and the window autocom_bear
// behind the command autver. The list is read at the main window's start and lives as long as the window.
void installAutocompletion(Quittung& window, ReceiptForm& form, const ProgramPaths& paths);

// The help window helpp3 with hilfe/index.html; the help commands open it.
void installHelpWindow(Quittung& window, const ProgramPaths& paths);

} // namespace zw
