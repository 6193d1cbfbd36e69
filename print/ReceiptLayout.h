#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "core/FormElement.h"

namespace zw {

// picSource: 8550 x 6435 twips, 570 x 429 pixels at 96 dots per inch.
inline constexpr int kFormWidthTwips = 8550;
inline constexpr int kFormHeightTwips = 6435;
inline constexpr int kFormWidthPixels = kFormWidthTwips / kTwipsPerPixel;
inline constexpr int kFormHeightPixels = kFormHeightTwips / kTwipsPerPixel;
// The background pictures are a little smaller than the area.
inline constexpr int kBackgroundWidthPixels = 566;
inline constexpr int kBackgroundHeightPixels = 425;

enum class Align { Left, Centre, Right };
// Whether a person may type into an editable field; a read-only one is written by the program only.
enum class Typing { Free, ReadOnly };

// The line editor's own limit: a field without a rule takes this many characters.
inline constexpr int kAnyLength = 32767;

// One element of the receipt area, in twips relative to it. Screen and photograph both read this table.
struct LayoutEntry
{
    FormElement element;
    int left;
    int top;
    int width;
    int height;
    Align align = Align::Left;
    bool multiLine = false;
    bool editable = false;
    int maxLength = kAnyLength;
    std::string_view inputMask = {}; // in the line editor's mask syntax ("9" a digit, after ";" the blank)
    Typing typing = Typing::Free;

    int leftPixels() const { return left / kTwipsPerPixel; }
    int topPixels() const { return top / kTwipsPerPixel; }
    int widthPixels() const { return width / kTwipsPerPixel; }
    int heightPixels() const { return height / kTwipsPerPixel; }
};

// Left edge and width in pixels of a one-line caption whose text is textWidth pixels wide. A text wider than
// its box takes the extra room half on each side, so neither neighbour is touched ("% MwSt."), up to half the box's
// width more and never beyond the form's written area; a text wider still (a long label of the user's own) is
// drawn smaller by fontScale, down to seven tenths, and cut at the end of its room beyond that, so it never runs
// over the form's frame or the ruler beside it.
struct CaptionSpan
{
    int left;
    int width;
    double fontScale = 1.0;
};
CaptionSpan captionSpan(const LayoutEntry& entry, int textWidth);

std::span<const LayoutEntry> receiptLayout();
std::optional<LayoutEntry> layoutOf(FormElement element);

// The rulers beside the form, in twips relative to the window's form area.
struct RulerPlacement
{
    int left;
    int top;
    int length;
};
inline constexpr RulerPlacement kRuler1{360, 120, 8655}; // along the top
inline constexpr RulerPlacement kRuler2{120, 360, 6435}; // along the side

} // namespace zw
