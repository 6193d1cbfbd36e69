#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/FormElement.h"

namespace zw {

class ProgramPaths;
class ReceiptForm;
class Settings;
class WindowParts;

// The platform's colour number of the button face: a system colour, not an RGB value.
inline constexpr std::uint32_t kButtonFaceColour = 0x8000000F;

// One entry of the menu `higifa`: the form's picture, the stamp area's picture and the fields' back colour.
struct ReceiptColour
{
    std::string_view entry;
    std::string_view background; // below the program folder
    std::string_view stampArea;
    std::uint32_t fieldColour;   // platform colour number: red in the low byte, blue in the high one
};

std::span<const ReceiptColour> receiptColours();

// The fields that take the receipt colour, in the order they are coloured; Text4 keeps its own background.
inline constexpr std::array<FormElement, 12> kColouredFields = {
    FormElement::Text1, FormElement::Text2, FormElement::Text3, FormElement::Text10,
    FormElement::Text11, FormElement::Text12, FormElement::Text5, FormElement::Text6,
    FormElement::Text7, FormElement::Text8, FormElement::Text9, FormElement::Text14};

struct Rgb
{
    int red = 0;
    int green = 0;
    int blue = 0;
    bool operator==(const Rgb&) const = default;
};

// A platform colour number as RGB; a system colour (high bit set) has no fixed RGB and gives nullopt.
std::optional<Rgb> rgbOfColourNumber(std::uint32_t colour);

// One entry of the menu `hintergr` and the path it stores in Options/Hintergrund.
struct WindowBackground
{
    std::string_view entry;
    std::string_view path;
};

std::span<const WindowBackground> windowBackgrounds();

// The style of a font chosen in the font dialog.
struct FontStyle
{
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeOut = false;
    bool operator==(const FontStyle&) const = default;
};

struct FontChoice
{
    std::string family;
    int pointSize = 9;
    FontStyle style;
};

// What the form shows beyond the receipt model and lasts for the session only: the receipt colour's field colour
// and the style of the font dialog's choice. The colour's stamp-area picture is a picture of the form itself.
class ReceiptLook
{
public:
    std::optional<std::uint32_t> fieldColour() const { return m_fieldColour; } // nullopt: fields see-through
    const std::optional<FontStyle>& fontStyle() const { return m_fontStyle; }   // nullopt: the form's own styles

    void setColour(std::uint32_t fieldColour);
    void setFontStyle(FontStyle style);

    void addListener(std::function<void()> listener) { m_listeners.push_back(std::move(listener)); }

private:
    void notify();

    std::optional<std::uint32_t> m_fieldColour;
    std::optional<FontStyle> m_fontStyle;
    std::vector<std::function<void()>> m_listeners;
};

// The appearance entries of the main window that the start-up logic does not already hold.
class AppearanceLogic
{
public:
    AppearanceLogic(ReceiptForm& form, Settings& settings, const ProgramPaths& paths, WindowParts& parts,
                    ReceiptLook& look);

    // hg_standard ... hg_hellgrau: the form's picture, the stamp area's picture in Image3 (it replaces the stamp
    // choice's picture) and the field colour; false for an unknown entry. Not stored: a colour lasts for the session.
    bool receiptColour(std::string_view entry);
    // hintergrund1 ... hintergrund4: loads the picture and stores its path.
    bool windowBackground(std::string_view entry);
    // `schrift`: Verdana for every label and field, amounts included. Not stored.
    void schrift();
    // The font dialog's preset: the font of Label1.
    std::string fontDialogPreset() const;
    // OK in the font dialog: the font goes to all labels and fields, then Label1 returns to 18 points.
    void applyChosenFont(const FontChoice& choice);

private:
    ReceiptForm& m_form;
    Settings& m_settings;
    const ProgramPaths& m_paths;
    WindowParts& m_parts;
    ReceiptLook& m_look;
};

} // namespace zw
