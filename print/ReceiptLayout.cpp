#include "print/ReceiptLayout.h"

#include <algorithm>
#include <array>

namespace zw {
namespace {

using F = FormElement;

constexpr std::array<LayoutEntry, 36> kLayout = {{
    {F::Label1, 240, 240, 3615, 495},
    {F::Label18, 3720, 240, 1230, 195},
    {F::Text1, 3720, 480, 1215, 285, Align::Right, false, true},
    {F::Label3, 5160, 240, 735, 255},
    {F::Text2, 5160, 480, 1215, 285, Align::Centre, false, true, 3},
    {F::Image3, 6600, 240, 1740, 555},
    {F::Label2, 360, 840, 855, 255},
    {F::RTFBox, 360, 1080, 4455, 1095, Align::Left, true, true},
    {F::Image7, 240, 840, 4695, 1455},
    {F::Label12, 5040, 1080, 495, 255},
    {F::Text10, 6480, 960, 1695, 285, Align::Right, false, true, 15},
    {F::para19, 5040, 1080, 3255, 615, Align::Left, true, false},
    {F::Text3, 5160, 1440, 495, 255, Align::Centre, false, true},
    {F::Text11, 6480, 1440, 1695, 285, Align::Right, false, true, 15, {}, Typing::ReadOnly},
    {F::Label13, 5040, 1560, 135, 255},
    {F::Label14, 5760, 1560, 615, 255},
    {F::Label15, 5040, 2040, 1215, 255},
    {F::Text12, 6480, 1920, 1695, 285, Align::Right, false, true, 15},
    {F::Label4, 240, 2350, 4695, 255},
    {F::Text4, 360, 2640, 7815, 285, Align::Left, false, true},
    {F::Label5, 240, 3120, 735, 255},
    {F::Text5, 600, 3120, 7695, 285, Align::Left, false, true},
    {F::Text6, 600, 3600, 7695, 285, Align::Left, false, true},
    {F::Label6, 240, 4080, 735, 255},
    {F::Text7, 600, 4080, 7695, 285, Align::Left, false, true},
    {F::Label7, 240, 4440, 3495, 255},
    {F::Label8, 240, 4680, 735, 255},
    {F::Text8, 840, 4680, 3135, 285, Align::Left, false, true},
    {F::Label9, 4320, 4680, 735, 255},
    {F::Text9, 5040, 4680, 3255, 285, Align::Left, false, true, 10, "99.99.9999; "},
    {F::Label10, 240, 5040, 3495, 255},
    {F::Text14, 240, 5280, 3855, 615, Align::Left, true, true},
    {F::Label11, 4320, 5040, 3495, 255},
    {F::Image6, 4320, 5280, 3855, 855},
    {F::Label29, 240, 6000, 1095, 135},
    {F::steuernummer2, 1440, 6000, 2295, 255},
}};

} // namespace

std::span<const LayoutEntry> receiptLayout() { return kLayout; }

CaptionSpan captionSpan(const LayoutEntry& entry, int textWidth)
{
    // The written area of the form: from the leftmost entry to the right edge of the stamp.
    constexpr int kAreaLeft = 240 / kTwipsPerPixel;
    constexpr int kAreaRight = (6600 + 1740) / kTwipsPerPixel;
    const int extra = std::clamp(textWidth - entry.widthPixels(), 0, entry.widthPixels() / 2);
    // Room the form's edge takes on one side goes to the other.
    int left = entry.leftPixels() - (extra + 1) / 2;
    int right = left + entry.widthPixels() + extra;
    if (left < kAreaLeft) {
        right += kAreaLeft - left;
        left = kAreaLeft;
    }
    if (right > kAreaRight) {
        left = std::max(kAreaLeft, left - (right - kAreaRight));
        right = kAreaRight;
    }
    CaptionSpan span{left, std::max(0, right - left)};
    // Smaller than seven tenths a text is no longer read; what is wider still is cut at the end of its room.
    if (textWidth > span.width && textWidth > 0)
        span.fontScale = std::max(0.7, static_cast<double>(span.width) / textWidth);
    return span;
}

std::optional<LayoutEntry> layoutOf(FormElement element)
{
    for (const auto& entry : receiptLayout()) {
        if (entry.element == element)
            return entry;
    }
    return std::nullopt;
}

} // namespace zw
