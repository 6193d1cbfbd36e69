#include "ui/ExportCommands.h"

namespace zw {

void installDocumentExports(const ExportContext&) {}

} // namespace zw
