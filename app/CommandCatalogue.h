#pragma once

#include <span>
#include <string>
#include <string_view>

namespace zw {

// One entry of the main menu tree. depth 0 is a top menu, 1 an entry or submenu in it, 2 an entry of a submenu.
// Captions keep the menu's own markup (@B, @I, @U, @CS<<rrggbb, @CT<<rrggbb) and '&' access keys.
struct MenuEntry
{
    std::string_view name;
    std::string_view caption;
    int depth;
    std::string_view shortcut = {}; // "F1", "F12", ...
};

std::span<const MenuEntry> menuTree();

// A caption read as formatting.
struct CaptionFormat
{
    std::string text; // what remains to be shown, '&' included
    bool bold = false;
    bool italic = false;
    bool underline = false;
    std::string squareColour; // "rrggbb" of the small colour square, or empty
    std::string textColour;   // "rrggbb", or empty
};

CaptionFormat parseCaption(std::string_view caption);

} // namespace zw
