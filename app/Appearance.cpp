#include "app/Appearance.h"

#include "app/ProgramPaths.h"
#include "app/QuittungLogic.h"
#include "core/ReceiptForm.h"
#include "core/Settings.h"

namespace zw {
namespace {

constexpr std::array<ReceiptColour, 8> kReceiptColours = {{
    {"hg_standard", "\\hintergrund\\quittung_leer.jpg", "\\hintergrund\\stempel_weiss.bmp", kButtonFaceColour},
    {"hg_red", "\\hintergrund\\quittung_rot.bmp", "\\hintergrund\\stempel_rot.bmp", 255},
    {"hg_orange", "\\hintergrund\\quittung_orange.bmp", "\\hintergrund\\stempel_orange.bmp", 33023},
    {"hg_yellow", "\\hintergrund\\quittung_gelb.bmp", "\\hintergrund\\stempel_gelb.bmp", 65535},
    {"hg_green", "\\hintergrund\\quittung_gruen.bmp", "\\hintergrund\\stempel_gruen.bmp", 65280},
    {"hg_blue", "\\hintergrund\\quittung_blau.bmp", "\\hintergrund\\stempel_blau.bmp", 0xFF0000},
    {"hg_purple", "\\hintergrund\\quittung_purpur.bmp", "\\hintergrund\\stempel_purpur.bmp", 0x990099},
    {"hg_hellgrau", "\\hintergrund\\quittung_hellgrau.bmp", "\\hintergrund\\stempel_hellgrau.bmp", 0xE0E0E0},
}};

constexpr std::array<WindowBackground, 4> kWindowBackgrounds = {{
    {"hintergrund1", "\\hintergrund\\hg1.jpg"},
    {"hintergrund2", "\\hintergrund\\hg2.jpg"},
    {"hintergrund3", "\\hintergrund\\hg3.jpg"},
    {"hintergrund4", "\\hintergrund\\hg4.jpg"},
}};

// Label1 keeps its title size whatever the dialog chose.
constexpr int kLabel1PointSize = 18;

} // namespace

std::span<const ReceiptColour> receiptColours() { return kReceiptColours; }
std::span<const WindowBackground> windowBackgrounds() { return kWindowBackgrounds; }

std::optional<Rgb> rgbOfColourNumber(std::uint32_t colour)
{
    if ((colour & 0x80000000u) != 0)
        return std::nullopt;
    return Rgb{static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
               static_cast<int>((colour >> 16) & 0xFF)};
}

void ReceiptLook::setColour(std::uint32_t fieldColour)
{
    m_fieldColour = fieldColour;
    notify();
}

void ReceiptLook::setFontStyle(FontStyle style)
{
    m_fontStyle = style;
    notify();
}

void ReceiptLook::notify()
{
    for (const auto& listener : m_listeners)
        listener();
}

AppearanceLogic::AppearanceLogic(ReceiptForm& form, Settings& settings, const ProgramPaths& paths, WindowParts& parts,
                                 ReceiptLook& look)
    : m_form(form), m_settings(settings), m_paths(paths), m_parts(parts), m_look(look)
{
}

bool AppearanceLogic::receiptColour(std::string_view entry)
{
    for (const auto& colour : kReceiptColours) {
        if (colour.entry != entry)
            continue;
        // The colour's picture also replaces the picture without tax fields; the hidden fields stay hidden.
        m_form.setFormBackground(std::string(colour.background));
        m_form.setPicture(FormElement::Image3, m_paths.resolve(colour.stampArea).string());
        m_look.setColour(colour.fieldColour);
        return true;
    }
    return false;
}

bool AppearanceLogic::windowBackground(std::string_view entry)
{
    for (const auto& background : kWindowBackgrounds) {
        if (background.entry != entry)
            continue;
        m_parts.setWindowBackground(std::string(background.path));
        m_settings.save(kApplicationName, "Options", "Hintergrund", background.path);
        return true;
    }
    return false;
}

void AppearanceLogic::schrift()
{
    m_form.setFontFamilies("Verdana", "Verdana");
    m_form.setChecked("schrift", true);
    m_form.setChecked("schriftarial", false);
}

std::string AppearanceLogic::fontDialogPreset() const { return m_form.fontFamily(FormElement::Label1); }

void AppearanceLogic::applyChosenFont(const FontChoice& choice)
{
    m_form.setFontFamilies(choice.family, choice.family);
    m_form.setPointSize(FormElement::Text1, choice.pointSize);
    m_look.setFontStyle(choice.style);
    m_form.setPointSize(FormElement::Label1, kLabel1PointSize);
}

} // namespace zw
