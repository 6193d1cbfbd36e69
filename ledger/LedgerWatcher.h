#pragma once

#include <string_view>

namespace zw {

class ReceiptLedger;

// Told of every change of belege.dat under the file's lock, for a journal of the ledger: `begin` once the ledger
// holds what is on disk and before the change runs, every piece of the new file as it is written, and `end`
// after the whole new file was written and before it replaces the old one. What `end` throws leaves the old file.
class LedgerWatcher
{
public:
    virtual ~LedgerWatcher() = default;
    virtual void begin(const ReceiptLedger& ledger) = 0;
    virtual void piece(std::string_view bytes) = 0;
    virtual void end(const ReceiptLedger& ledger) = 0;
};

} // namespace zw
