#pragma once

namespace zw {

class ReceiptForm;

// Change of Text12: the automatic calculation while the user types.
void grossChanged(ReceiptForm& form);

} // namespace zw
