#include "app/QuittungLogic.h"

#include <array>
#include <utility>

#include "app/LookChoices.h"
#include "app/ProgramPaths.h"
#include "app/SmallFiles.h"
#include "app/TextFile.h"
#include "app/Version.h"
#include "core/FormHost.h"
#include "core/GermanNumbers.h"
#include "core/Hints.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "core/Settings.h"

namespace zw {
namespace {

using F = FormElement;

// Runs one step of a sequence whose run-time faults are passed over; a programming error still escapes.
template <typename Step> void passOver(Step&& step)
{
    try {
        step();
    } catch (const RunError&) {
    }
}

} // namespace

QuittungLogic::QuittungLogic(ReceiptForm& form, Settings& settings, const ProgramPaths& paths, FormHost& host,
                             WindowParts& parts, Today today)
    : m_form(form), m_settings(settings), m_paths(paths), m_host(host), m_parts(parts), m_today(std::move(today))
{
}

std::string QuittungLogic::setting(std::string_view section, std::string_view key) const
{
    return m_settings.get(kApplicationName, section, key, "");
}

void QuittungLogic::store(std::string_view section, std::string_view key, std::string_view value)
{
    m_settings.save(kApplicationName, section, key, value);
}

void QuittungLogic::load()
{
    passOver([&] {
        m_form.setText(F::Text10, "");
        m_form.setText(F::Text11, "");
        m_form.setText(F::Text12, "");
        m_form.setVisible(F::betrag_duplikat, false);
    });
    passOver([&] { felder(); });
    passOver([&] {
        m_parts.runStartStep(StartStep::LoadAutocompletion);
        for (F hidden : {F::autoge, F::List1, F::para19, F::einbe, F::ausbe})
            m_form.setVisible(hidden, false);
    });
    // The shortcut bar and the ledger are built when their parts join the window, before the start.
    passOver([&] {
        m_form.setVisible(F::Image6, false);
        m_form.setVisible(F::Image7, false);
    });
    passOver([&] {
        if (auto background = setting("Options", "Hintergrund"); !background.empty())
            m_parts.setWindowBackground(background);
    });
    passOver([&] { m_form.setSaveCheck(switchValue(setting("Options", "Auto_Save"))); });
    passOver([&] {
        auto last = setting("Options", "Letzter_Beleg");
        m_parts.setLastFileCaption(last.empty() ? "Kein Pfad vorhanden..." : last);
    });
    passOver([&] {
        auto design = setting("Options", "Menue");
        if (design.empty())
            menuDesign("XP");
        else
            menuDesign(design); // an unknown value marks nothing and applies nothing
    });
    passOver([&] {
        auto layout = setting("Drucken", "Belege");
        m_form.setPrintLayout(printLayoutOfStored(layout));
    });
    passOver([&] {
        // The switch itself stores "0" and "1", but start-up reads "1" and "2"; a stored "0" keeps the default.
        auto number = setting("Drucken", "ZW_NR");
        if (number == "1")
            m_form.setQuittnr(1);
        else if (number == "2" || number.empty())
            m_form.setQuittnr(0);
    });
    passOver([&] {
        auto type = setting("Options", "Belegart");
        m_form.setText(F::Label1, type.empty() ? std::string(kDefaultReceiptType) : type);
    });
    passOver([&] {
        if (setting("Steuer", "Anzeigen") == "Nein")
            steueraus();
        else
            steueran();
    });
    passOver([&] {
        auto ruler = m_settings.get(kApplicationName, "Options", "Ruler", "1");
        m_parts.showRulers(switchValue(ruler) != 0);
    });
    passOver([&] {
        if (setting("Options", "Datumanzeige") == "1")
            m_form.setText(F::Text9, m_today());
    });
    passOver([&] { m_form.setText(F::Text8, setting("Ausstellungsort", "Text8.Text")); });
    passOver([&] {
        auto currency = setting("Waehrung", "waehr.Text");
        m_form.setText(F::Text2, currency.empty() ? "EUR" : currency);
        bool euro = currency.empty() || currency == "EUR";
        m_form.setChecked("eur", euro);
        m_form.setChecked("waehrungfestlegen", !euro);
    });
    passOver([&] {
        auto style = setting("Options", "Buttons");
        buttonStyle(style.empty() ? "Vista" : style);
    });
    passOver([&] {
        auto check = setting("Steuer", "Steuer_Check");
        if (check == "1") {
            m_form.setText(F::steuernummer2, setting("Steuer", "Steuernummer"));
        } else if (check == "0") {
            m_form.setVisible(F::Label29, false);
        } else if (check.empty()) {
            // Settings that could not be read are not a first start: the user was told of the file instead.
            if (m_settings.readable(kApplicationName))
                m_host.confirmQuestion("Sie haben noch keine Steuernummer hinterlegt.\rBitte tragen Sie diese im "
                                       "Menüpunkt Aussteller ein.",
                                       MessageStyle::Warning, "Steuernummer");
            m_form.setVisible(F::Label29, false);
        }
    });
    passOver([&] { schriftarial(); });
    passOver([&] {
        m_form.setChecked("steueran", m_form.isChecked("steueran"));
        m_form.setIncome(m_form.income());
    });
    passOver([&] {
        m_form.setText(F::Label16, hintGreeting());
        for (F hidden : {F::Text13, F::Command1, F::Datum2})
            m_form.setVisible(hidden, false);
        m_form.setText(F::Datum2, m_today());
    });
    // Step 23 (picture sizes) and 24 (the title) belong to the window.
    passOver([&] {
        auto tips = m_settings.get(kTipApplicationName, "Options", "Show Tips at Startup", "1");
        if (switchValue(tips) != 0)
            m_parts.runStartStep(StartStep::ShowTipWindow);
    });
    passOver([&] { smallfiles::loadRate(m_form, m_paths); });
    passOver([&] { smallfiles::loadPrintSetup(m_form, m_paths); });
    passOver([&] { smallfiles::loadNumber(m_form, m_paths); });
    passOver([&] {
        auto income = setting("Buchhaltung", "Einnahme");
        if (income.empty())
            store("Buchhaltung", "Einnahme", "0");
        else
            m_form.setText(F::einbe, income);
        auto expense = setting("Buchhaltung", "Ausgabe");
        if (expense.empty())
            store("Buchhaltung", "Ausgabe", "0");
        else
            m_form.setText(F::ausbe, expense);
    });
    passOver([&] {
        if (smallfiles::readMark(m_paths.dataFile("siglogoaa.dat")))
            m_parts.runStartStep(StartStep::SwitchLogoOn);
    });
    passOver([&] { m_form.setCalendarButton(switchValue(setting("Options", "Kalender"))); });
    passOver([&] {
        if (smallfiles::readMark(m_paths.dataFile("sigunteraa.dat")))
            m_parts.runStartStep(StartStep::SwitchSignatureOn);
    });
    passOver([&] { m_form.setText(F::RTFBox, readTextFile(m_paths.dataFile("aussteller.dat"))); });
}

void QuittungLogic::neue()
{
    smallfiles::advanceNumber(m_form, m_paths,
                              m_form.quittnr() == 1 ? smallfiles::NumberStep::Advance : smallfiles::NumberStep::Keep);
    m_host.showNotice(Notice::neue_quittung);
    auto currency = setting("Waehrung", "waehr.Text");
    m_form.setText(F::Text2, currency.empty() ? "EUR" : currency);
    for (F cleared : {F::Text10, F::Text11, F::Text12, F::Text4, F::Text5, F::Text6, F::Text7})
        m_form.setText(cleared, "");
    m_form.setText(F::Text8, setting("Ausstellungsort", "Text8.Text"));
    // The date stays empty even where the start fills it: a new receipt's date is typed.
    m_form.setText(F::Text9, "");
    m_form.setText(F::Text14, "");
    m_form.setText(F::RTFBox, "");
    smallfiles::loadRate(m_form, m_paths);
    passOver([&] { m_form.setText(F::RTFBox, readTextFile(m_paths.dataFile("aussteller.dat"))); });
}

void QuittungLogic::einna() { m_form.setIncome(1); }
void QuittungLogic::ausga() { m_form.setIncome(0); }
void QuittungLogic::incomeSwitchClicked(int value) { m_form.setIncome(value); }

void QuittungLogic::steueran()
{
    m_form.setChecked("steueran", true);
    m_form.setChecked("steueraus", false);
    for (F shown : {F::Text3, F::Text10, F::Text11, F::Label12, F::Label13, F::Label14})
        m_form.setVisible(shown, true);
    m_form.setVisible(F::para19, false);
    m_form.setFormBackground("\\hintergrund\\quittung_leer.jpg");
    store("Steuer", "Anzeigen", "Ja");
}

void QuittungLogic::steueraus()
{
    m_form.setChecked("steueran", false);
    m_form.setChecked("steueraus", true);
    for (F hidden : {F::Text3, F::Text10, F::Text11, F::Label12, F::Label13, F::Label14})
        m_form.setVisible(hidden, false);
    m_form.setText(F::para19, setting("Steuer", "Kleinunternehmer"));
    m_form.setVisible(F::para19, true);
    m_form.setFormBackground("\\hintergrund\\quittung_steueraus.jpg");
    store("Steuer", "Anzeigen", "Nein");
}

void QuittungLogic::eur()
{
    m_form.setText(F::Text2, "EUR");
    store("Waehrung", "waehr.Text", "EUR");
    m_form.setChecked("eur", true);
    m_form.setChecked("waehrungfestlegen", false);
    m_host.showNotice(Notice::optionen1);
}

void QuittungLogic::ortfest()
{
    auto answer = m_host.askText("Legen Sie hier den Ausstellungsort fest,\rum diesen nicht ständig neu eingeben "
                                 "zu müssen.",
                                 MessageStyle::QuestionOkCancel, "Ort des Ausstellers", m_form.text(F::Text8));
    if (!answer)
        return;
    m_form.setText(F::Text8, *answer);
    store("Ausstellungsort", "Text8.Text", *answer);
}

void QuittungLogic::beleg(ReceiptTypeMenu menu, int index)
{
    std::string title;
    int size = kTitlePointSize;
    if (menu == ReceiptTypeMenu::beleg1 && index == kOwnTypeIndex) {
        auto answer = m_host.askText("Hier haben Sie die Möglichkeit eine eingene Belegart\rzu bestimmen. Bitte "
                                     "geben Sie diese nun ein.",
                                     MessageStyle::QuestionOkCancel, "Eigene Belegart", "");
        if (!answer)
            return;
        title = *answer;
    } else if (auto type = receiptType(menu, index)) {
        title = type->title;
        size = type->pointSize;
    } else {
        return; // the separator and unknown indices do nothing
    }
    m_form.setPointSize(F::Label1, size);
    m_form.setText(F::Label1, "");
    m_form.setText(F::Label1, title);
    store("Options", "Belegart", m_form.text(F::Label1));
}

void QuittungLogic::applyLabelSet(const std::array<std::string_view, kLabelSetSize>& captions)
{
    for (std::size_t i = 0; i < kLabelSetElements.size(); ++i)
        m_form.setText(kLabelSetElements[i], std::string(captions[i]));
}

void QuittungLogic::spr_deutsch()
{
    m_form.setChecked("spr_deutsch", true);
    m_form.setChecked("spr_englisch", false);
    applyLabelSet(labelSet(LabelLanguage::German));
}

void QuittungLogic::spr_englisch()
{
    m_form.setChecked("spr_deutsch", false);
    m_form.setChecked("spr_englisch", true);
    applyLabelSet(labelSet(LabelLanguage::English));
}

void QuittungLogic::felder()
{
    if (setting("Felder", "Bezeichnung1").empty()) {
        spr_deutsch();
        return;
    }
    for (std::size_t i = 0; i < kLabelSetElements.size(); ++i)
        m_form.setText(kLabelSetElements[i], setting("Felder", "Bezeichnung" + std::to_string(i + 1)));
}

bool QuittungLogic::menuDesign(std::string_view stored)
{
    const LookChoice<MenuDesign>* chosen = nullptr;
    for (const auto& design : kMenuDesigns) {
        if (design.stored == stored)
            chosen = &design;
    }
    if (chosen == nullptr)
        return false;
    for (const auto& design : kMenuDesigns)
        m_form.setChecked(design.entry, &design == chosen);
    m_parts.applyMenuDesign(chosen->styleNumber());
    store("Options", "Menue", chosen->stored);
    return true;
}

bool QuittungLogic::buttonStyle(std::string_view stored)
{
    const LookChoice<ButtonStyle>* chosen = nullptr;
    for (const auto& style : kButtonStyles) {
        if (style.stored == stored)
            chosen = &style;
    }
    if (chosen == nullptr)
        return false;
    // The standard entry is not among the marked five and never shows a mark.
    for (const auto& style : kButtonStyles) {
        if (style.look != ButtonStyle::Standard3D)
            m_form.setChecked(style.entry, &style == chosen);
    }
    m_parts.applyButtonStyle(chosen->styleNumber());
    store("Options", "Buttons", chosen->stored);
    return true;
}

void QuittungLogic::schriftarial()
{
    m_form.setFontFamilies("Arial", "Courier New");
    m_form.setChecked("schriftarial", true);
    m_form.setChecked("schrift", false);
}

void QuittungLogic::saveCheckChanged(int value)
{
    m_form.setSaveCheck(value);
    store("Options", "Auto_Save", std::to_string(value));
}

void QuittungLogic::quittnrChanged(int value)
{
    m_form.setQuittnr(value);
    store("Drucken", "ZW_NR", std::to_string(value));
}

void QuittungLogic::calendarSwitchChanged(int value)
{
    m_form.setCalendarButton(value);
    store("Options", "Kalender", std::to_string(value));
}

void QuittungLogic::printLayoutChosen(int optionNumber)
{
    const auto layout = printLayoutOfOption(optionNumber);
    if (!layout)
        return;
    m_form.setPrintLayout(*layout);
    store("Drucken", "Belege", printLayoutRow(*layout).stored);
}

void QuittungLogic::savePrintSetup()
{
    smallfiles::savePrintSetup(m_form, m_paths);
    m_host.showNotice(Notice::optionen1);
}

bool QuittungLogic::exxxit()
{
    int answer = m_host.confirmQuestion("Wollen Sie das Programm jetzt beenden?", MessageStyle::QuestionYesNo,
                                        "Programm beenden");
    return answer == kAnswerYes;
}

bool QuittungLogic::beginUnload()
{
    if (m_unloading)
        return false;
    m_unloading = true;
    return true;
}

void QuittungLogic::endUnload() { m_unloading = false; }

std::string QuittungLogic::windowTitle() const { return "Zettelwerk V" + versionText(); }

} // namespace zw
