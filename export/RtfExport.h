#pragma once

#include <functional>
#include <optional>
#include <string>

#include "core/FormElement.h"
#include "export/BitmapFile.h"
#include "export/rtf/RtfDocument.h"

namespace zw {

class CommonDialog;

// Pictures go on paper at the screen's kTwipsPerPixel: the receipt's 570 x 429 pixels are 8550 x 6435 twips.

// The font that the RTF view types in until the user chooses another.
inline constexpr const char* kRtfViewFontName = "Arial";
inline constexpr int kRtfViewFontHalfPoints = 20;

// The view's page: A4 with margins of 2 cm, wide enough for the receipt's 8550 twips.
inline constexpr rtf::PageLayout kRtfViewPage{};

// A picture run's picture: the pixels as PNG, sized on the page at the screen's resolution.
rtf::Picture pngPicture(const Bitmap& picture);

// The document of the window rtfexp right after it opened: one paragraph holding the receipt's photograph.
// Saving that window unchanged writes exactly writeRtf() of this document.
rtf::Document receiptRtfDocument(const Bitmap& capture);

// export_bar: asks for the file name (title, filter and flags of the RTF export) and writes the document there.
// Gives the path written, or nothing when the dialog was cancelled or the file could not be written: both end
// the command silently with nothing changed.
std::optional<std::string> exportRtfFile(CommonDialog& dialog, const std::function<rtf::Document()>& document);

// What the font dialog shows and returns.
struct FontDialogValues
{
    std::string name;
    double pointSize = 10;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikethrough = false;
    rtf::Colour colour;
    bool operator==(const FontDialogValues&) const = default;
};

// The font of the selection in the box; a value that differs within the selection is nothing.
struct SelectionFont
{
    std::optional<std::string> name;
    std::optional<double> pointSize;
    std::optional<bool> bold;
    std::optional<bool> italic;
};

// The dialog's preset: the selection's name, size, bold and italic, with the view's font where the selection
// has no single value.
FontDialogValues fontDialogPreset(const SelectionFont& selection);

// Shows the font dialog: gives the chosen values, or throws RunError (32755 when the user cancels).
using FontDialogPresenter = std::function<FontDialogValues(const FontDialogValues& preset)>;

struct FontCommandOutcome
{
    std::optional<FontDialogValues> chosen; // what the selection takes
    std::string message;                    // a failure to show; empty when there is none
};

// schriftart_bar with its trap: a choice goes to the selection, a cancel does nothing, any other fault becomes
// the message "Fehler <n> bei Auswahl der Schriftart." and its description on the next line.
FontCommandOutcome schriftartBar(const SelectionFont& selection, const FontDialogPresenter& show);

} // namespace zw
