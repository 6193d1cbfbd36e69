#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/FormElement.h"

namespace zw {

class ReceiptForm;
class Settings;

inline constexpr int kKeyBackspace = 8;
inline constexpr int kKeyReturn = 13;

// The date field's text after a lone "0": the mask keeps its separators and blanks.
inline constexpr std::string_view kDateShorthand = "0 .  .    ";

inline constexpr std::string_view kWrongKeyText = "Es können hier nur Zahlen bzw. Ziffern eingegeben werden.";
inline constexpr std::string_view kWrongKeyTitle = "Falsche Eingabe";
inline constexpr std::string_view kNoRateTitle = "Kein MwSt.-Wert!!!";
inline constexpr std::string_view kNoRateText = "A C H T U N G !!!\r==============\r\r"
                                                "Sie haben keinen MwSt.-Wert eingegeben. Bitte legen\r"
                                                "sie im nächsten Fenster einen MwSt.-Wert fest.";
inline constexpr std::string_view kTooLargeForWords =
    "+++ Der von Ihnen eingegebene Wert kann nicht umgewandelt werden, da er zu groß ist! +++";

// KeyPress of Text12, Text10 and Text9: returns the key code, or 0 when the key is cancelled. RETURN runs the
// field's calculation. Other elements take every key unchanged.
int keyPress(ReceiptForm& form, FormElement element, int keyCode);

// RETURN in Text12 (gross entered) and in Text10 (net entered). A run-time fault anywhere in the calculation
// ends in the "Kein MwSt.-Wert!!!" message and the settings window; fields already written stay written.
void returnInGross(ReceiptForm& form);
void returnInNet(ReceiptForm& form);

// For callers that have just written Text12 or Text10: the same calculation with the rounded words. They have
// no fault handling of their own; a RunError reaches the caller.
void rechnen1(ReceiptForm& form);
void rechnen2(ReceiptForm& form);

// The two ways to Text4. Both throw RunError for a gross text they cannot read.
void wordsByRounding(ReceiptForm& form);
void wordsByTruncation(ReceiptForm& form);

// RETURN in Text9: the shorthand becomes today's date from Datum2; anything else stays as typed.
void dateReturn(ReceiptForm& form);

// Change of Text12: the automatic calculation while the user types. Never shows a message.
void grossChanged(ReceiptForm& form);

// The same behaviour without a window, for the command line.
enum class WordsRule
{
    Truncation,
    Rounding
};

struct AmountFields
{
    std::string text10;
    std::string text11;
    std::string text12;
    std::string text4;
};

struct EntryOutcome
{
    AmountFields fields;                // the fields as the form shows them afterwards
    std::optional<std::string> message; // the text of the message the window would have shown
};

// RETURN in Text12 on a fresh form holding these texts; Rounding stands for betrag_check 1. The settings, if
// given, decide whether writing Text12 runs the automatic calculation, as they do in the window.
EntryOutcome grossEntry(std::string_view text12, std::string_view text3, WordsRule words,
                        Settings* settings = nullptr);
// RETURN in Text10 on a fresh form holding these texts.
EntryOutcome netEntry(std::string_view text10, std::string_view text3, Settings* settings = nullptr);
// What WordsByRounding or WordsByTruncation writes to Text4 for this gross text. Throws RunError.
std::string amountWords(std::string_view text12, WordsRule words);

} // namespace zw
