#pragma once

#include <array>
#include <string_view>

namespace zw {

// The splash window's step list: what it shows and how far the bar grows. It loads nothing itself.
struct SplashStep
{
    std::string_view text;
    int growth;
};

inline constexpr std::array<SplashStep, 26> kSplashSteps = {{
    {"Programm startet...", 4},
    {"Autovervollständigung öffnen...", 4},
    {"ShortCutBar öffnen...", 4},
    {"Hintergrund öffnen...", 4},
    {"Menü-Style öffnen...", 4},
    {"Druckmenü öffnen...", 4},
    {"Check auf Belegnummer...", 4},
    {"Belegart öffnen...", 4},
    {"Check auf Lineal an/aus...", 4},
    {"Ausstellerort öffnen...", 4},
    {"Check auf Währung...", 4},
    {"Button-Style öffnen...", 4},
    {"Schriftart auf ARIAL...", 4},
    {"Menü-Checks vorbereiten...", 4},
    {"Datum formatieren...", 4},
    {"Check >Tipp des Tages<...", 4},
    {"MwSt.-Wert öffnen...", 4},
    {"Druckwerte öffnen...", 4},
    {"Belegnummer öffnen...", 4},
    {"Einnahmen öffnen...", 4},
    {"Ausgaben öffnen...", 4},
    {"Check auf Logo an/aus...", 4},
    {"Check auf Grafiken...", 4},
    {"Aussteller öffnen...", 2},
    {"Druckdialog einrichten...", 2},
    {"Programmfenster öffnen...", 4},
}};

inline constexpr std::string_view kSplashTitle = "Zettelwerk";

} // namespace zw
