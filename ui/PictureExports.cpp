#include "ui/ExportCommands.h"

namespace zw {

void installPictureExports(const ExportContext&) {}

} // namespace zw
