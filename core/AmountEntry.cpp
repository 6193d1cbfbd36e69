#include "core/AmountEntry.h"

#include "core/ReceiptForm.h"

namespace zw {

void grossChanged(ReceiptForm& /*form*/) {}

} // namespace zw
