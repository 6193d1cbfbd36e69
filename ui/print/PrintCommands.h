#pragma once

#include "print/PrintCommand.h"

namespace zw {

class ProgramPaths;
class Quittung;
class ReceiptForm;
class Settings;

// The print button with its dialog, the copy as picture, the issuer windows, the logo, signature and stamp
// commands. fileReceipt files a printed receipt when Save_Check is on; left empty, the window's ledger part does.
void installPrinting(Quittung& window, ReceiptForm& form, Settings& settings, const ProgramPaths& paths,
                     FileReceipt fileReceipt);

} // namespace zw
