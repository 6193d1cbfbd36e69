#pragma once

#include <array>
#include <string_view>

namespace zw {

// The menu designs; the value is the style number of the menu component.
enum class MenuDesign { XP = 2, Office2003 = 3, Office2007 = 4, VisualStudio2005 = 5 };

// The looks of the print button; the value is its style number.
enum class ButtonStyle { Standard3D = 0, Flat = 1, XP = 2, Office = 3, Office2003 = 4, Vista = 5 };

// One menu entry that chooses a look: its name, the value it stores, and the look.
template <typename Look> struct LookChoice
{
    std::string_view entry;
    std::string_view stored;
    Look look;

    constexpr int styleNumber() const { return static_cast<int>(look); }
};

// Menu `menuestyle`, kept in Options/Menue.
inline constexpr std::array<LookChoice<MenuDesign>, 4> kMenuDesigns = {{
    {"xpdesign", "XP", MenuDesign::XP},
    {"office2003er", "2003", MenuDesign::Office2003},
    {"office2007er", "2007", MenuDesign::Office2007},
    {"vbstudio05", "VS2005", MenuDesign::VisualStudio2005},
}};

// Menu `butt`, kept in Options/Buttons; the standard entry never shows a mark.
inline constexpr std::array<LookChoice<ButtonStyle>, 6> kButtonStyles = {{
    {"stand_button", "Standard", ButtonStyle::Standard3D},
    {"flat_button", "Flat", ButtonStyle::Flat},
    {"xp_button", "XP-Style", ButtonStyle::XP},
    {"office_button", "Office", ButtonStyle::Office},
    {"office2003_button", "Office2003", ButtonStyle::Office2003},
    {"vista_button", "Vista", ButtonStyle::Vista},
}};

} // namespace zw
