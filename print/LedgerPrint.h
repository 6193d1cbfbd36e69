#pragma once

class QFontMetricsF;
class QPrinter;

namespace zw {

struct PrintedList;

// The average character width as the printer reports it for a TrueType font; the tab columns are multiples of it.
double averageCharacterWidth(const QFontMetricsF& metrics);

// Prints a ledger list: pieces at tab columns of the font's average character width, the printer's page breaks.
void printLedgerList(const PrintedList& list, QPrinter& printer);

} // namespace zw
