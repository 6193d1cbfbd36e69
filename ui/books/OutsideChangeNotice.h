#pragma once

namespace zw {

// Told once when the ledger was found changed outside the program.
inline constexpr const char* kOutsideChangeNotice = "Die Belegliste wurde außerhalb von Zettelwerk geändert. "
                                                    "Die Änderung ist im Änderungsprotokoll vermerkt.";

} // namespace zw
