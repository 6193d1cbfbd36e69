#include "ui/ExportCommands.h"

namespace zw {

void installRtfExport(const ExportContext&) {}

} // namespace zw
