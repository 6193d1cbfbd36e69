#pragma once

#include "ui/export/ExportCommands.h"
#include "ui/frame/FrameCommands.h"
#include "ui/ledger/LedgerCommands.h"
#include "ui/lists/Autocompletion.h"
#include "ui/lists/ListPart.h"
#include "ui/mail/MailPart.h"
#include "ui/print/PrintCommands.h"
#include "ui/service/ServicePart.h"
#include "ui/service/SmallWindowsPart.h"

namespace zw {

struct PartContext;

// The install routines of the parts whose folder has no header for them.
void installCashBook(const PartContext& context);
void installDatevExport(const PartContext& context);
void installAuditExport(const PartContext& context);
void installYearChart(const PartContext& context);

} // namespace zw
