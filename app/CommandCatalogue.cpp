#include "app/CommandCatalogue.h"

#include <array>
#include <cctype>

namespace zw {
namespace {

constexpr std::array<MenuEntry, 102> kMenu = {{
    {"datei", "&Datei", 0},
    {"neue", "&Neue Quittung erstellen", 1},
    {"oeffnen", "Quittung ö&ffnen...", 1, "F1"},
    {"oeffnen_vorv5", "Quittung bis Version 4.x öffnen...", 1},
    {"save", "Quittung &speichern unter...", 1, "F2"},
    {"step1", "-", 1},
    {"ed", "&Export...", 1},
    {"bmpdatei", "Als &BMP Datei", 2},
    {"jpeg", "Als &JPG Datei", 2},
    {"pngdatei", "Als &PNG Datei", 2},
    {"alsrtf", "Als &RTF Datei", 2},
    {"alsxml", "Als &XML Datei", 2},
    {"alspdf", "Als &PDF Datei", 2},
    {"betriebspruefung", "&Daten für die Betriebsprüfung...", 2},
    {"datev", "DATEV-Exp&ort...", 2},
    {"step2", "-", 1},
    {"updaten", "@BProgramm &updaten", 1, "F11"},
    // The update window's own way in: the command above only shows the vendor's version page.
    {"webup", "Nach Updates &suchen...", 1},
    {"whatistnew", "Was ist &neu in dieser Version?", 1},
    {"step3", "-", 1},
    {"sicherung", "@I&Datensicherung", 1},
    {"regspeichern", "@I&Registrierungseintragung sichern...", 1},
    {"step4", "-", 1},
    {"men_dat", "@ILetzte Datei...", 1},
    {"step5", "-", 1},
    {"exxxit", "Programm &beenden", 1, "F12"},
    {"ausf", "&Ausfüllen", 0},
    {"adfgs", "&Schrift der Quittung ändern...", 1},
    {"schriftarial", "Standardschrift &Arial anwenden", 2},
    {"schrift", "Schrift in &Verdana umwandeln", 2},
    {"step6", "-", 1},
    {"logo", "&Logodatei wählen...", 1},
    {"ausstellerein", "&Aussteller als Logo einfügen", 1},
    {"austeller_ent", "Aussteller als Logo e&ntfernen", 1},
    {"step7", "-", 1},
    {"dateiwst", "Stempel/Unterschrift &Datei wählen...", 1},
    {"einfst", "Stempel/Unterschrift &einfügen", 1},
    {"entfst", "Stempel/Unterschrift &entfernen", 1},
    {"step8", "-", 1},
    {"pdf_Schablone", "PDF Schablone zum Einscannen...", 1},
    {"bea", "&Bearbeiten", 0},
    {"quikop", "Quittung als Grafik &kopieren", 1},
    {"step9", "-", 1},
    {"bel", "&Belegart", 1},
    {"typpe", "&Typ", 1},
    {"einna", "&Einnahme", 2},
    {"ausga", "&Ausgabe", 2},
    {"steu", "&Steuer", 1},
    {"steueran", "MwSt. &an", 2},
    {"steueraus", "MwSt. &aus", 2},
    {"waehru", "&Währung", 1},
    {"eur", "&Euro", 2},
    {"waehrungfestlegen", "&Andere Währung festlegen", 2},
    {"ortfest", "&Ort festlegen", 1},
    {"higifa", "&Hintergrundfarbe des Belegs", 1},
    {"hg_standard", "&Standard", 2},
    {"hg_red", "@CS<<FF0000Rot", 2},
    {"hg_orange", "@CS<<FFAA00Orange", 2},
    {"hg_yellow", "@CS<<FFFF00Gelb", 2},
    {"hg_green", "@CS<<00FF00Grün", 2},
    {"hg_blue", "@CS<<0000FFBlue", 2},
    {"hg_purple", "@CS<<990099Purpur", 2},
    {"hg_hellgrau", "@CS<<D3D3D3Hellgrau", 2},
    {"sprachefeld", "&Sprache der Feldbezeichnungen", 1},
    {"spr_deutsch", "&Deutsch", 2},
    {"spr_englisch", "&Englisch", 2},
    {"einst", "&Einstellungen", 0},
    {"aussetller", "Austeller &eingeben...", 1, "F9"},
    {"optio", "&Programmeinstellungen", 1},
    {"autosta", "Auto&startfunktion", 1},
    {"autver", "&Autovervollständigung bearbeiten...", 1},
    {"sta", "Statist&ik", 0},
    {"report", "&Belegliste", 1},
    {"einnahmenn", "&Einnahmen", 1},
    {"ausgabenn", "&Ausgaben", 1},
    {"kasse", "&Kassenstand", 1},
    {"step_kassenbuch", "-", 1},
    {"tagesabschluss", "&Tagesabschluss...", 1},
    {"aenderungsprotokoll", "Ä&nderungsprotokoll...", 1},
    {"auswertung", "A&uswertung...", 1},
    // The same window again, where the year's figures are looked at.
    {"datev_statistik", "&DATEV-Export...", 1},
    {"desi", "D&esign", 0},
    {"butt", "&Buttons", 1},
    {"stand_button", "&Standard 3D", 2},
    {"flat_button", "&Flat", 2},
    {"xp_button", "&XP", 2},
    {"office_button", "&Office", 2},
    {"office2003_button", "Office &2003", 2},
    {"vista_button", "&Vista", 2},
    {"menuestyle", "&Menü", 1},
    {"xpdesign", "&XP-Design", 2},
    {"office2003er", "Office 200&3 Design", 2},
    {"office2007er", "Office 200&7 Design", 2},
    {"vbstudio05", "Visual Studio 200&5 Design", 2},
    {"hintergr", "&Hintergrund", 1},
    {"hintergrund1", "Hintergrund &1", 2},
    {"hintergrund2", "Hintergrund &2", 2},
    {"hintergrund3", "Hintergrund &3", 2},
    {"hintergrund4", "Hintergrund &4", 2},
    {"help", "&?", 0},
    {"hel11", "&Hilfe", 1},
    {"info", "Info zum &Programm", 1},
}};

// The help menu's further entries follow the first two.
constexpr std::array<MenuEntry, 11> kHelpTail = {{
    {"tipppp", "Tipp des &Tages anzeigen", 1},
    {"step10", "-", 1},
    {"besuch", "Besuchen Sie uns im &WWW", 1},
    {"www_start", "&Startseite", 2},
    {"www_download", "&Downloadbereich", 2},
    {"www_neu", "&Neuigkeiten", 2},
    {"softbew", "&Bewerten Sie unsere Software", 1},
    {"fehlmit", "Teilen Sie uns &Fehler in der Software mit", 1},
    {"anr", "Support - Senden Sie uns eine &Nachricht...", 1},
    // The newsletter window's way in; no entry above names it.
    {"newsletter_bestellen", "News&letter bestellen...", 1},
    {"copy", "@B&Copyright", 1},
}};

constexpr auto kWholeTree = [] {
    std::array<MenuEntry, kMenu.size() + kHelpTail.size()> all{};
    std::size_t i = 0;
    for (const auto& entry : kMenu)
        all[i++] = entry;
    for (const auto& entry : kHelpTail)
        all[i++] = entry;
    return all;
}();

bool isHexColour(std::string_view text)
{
    if (text.size() < 6)
        return false;
    for (std::size_t i = 0; i < 6; ++i) {
        if (!std::isxdigit(static_cast<unsigned char>(text[i])))
            return false;
    }
    return true;
}

} // namespace

std::span<const MenuEntry> menuTree() { return kWholeTree; }

CaptionFormat parseCaption(std::string_view caption)
{
    CaptionFormat format;
    while (caption.size() >= 2 && caption[0] == '@') {
        if (caption.substr(0, 5) == "@CS<<" && isHexColour(caption.substr(5))) {
            format.squareColour = caption.substr(5, 6);
            caption.remove_prefix(11);
        } else if (caption.substr(0, 5) == "@CT<<" && isHexColour(caption.substr(5))) {
            format.textColour = caption.substr(5, 6);
            caption.remove_prefix(11);
        } else if (caption[1] == 'B') {
            format.bold = true;
            caption.remove_prefix(2);
        } else if (caption[1] == 'I') {
            format.italic = true;
            caption.remove_prefix(2);
        } else if (caption[1] == 'U') {
            format.underline = true;
            caption.remove_prefix(2);
        } else {
            break; // an '@' that starts no markup is text
        }
    }
    format.text = caption;
    return format;
}

} // namespace zw
