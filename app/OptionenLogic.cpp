#include "app/OptionenLogic.h"

#include <array>
#include <filesystem>

#include "app/ProgramPaths.h"
#include "app/QuittungLogic.h"
#include "app/SmallFiles.h"
#include "app/TextFile.h"
#include "core/FormHost.h"
#include "core/GermanNumbers.h"
#include "core/ReceiptForm.h"
#include "core/ReceiptTypes.h"
#include "core/RunError.h"
#include "core/Settings.h"

namespace zw {
namespace {

constexpr std::string_view kStandardRate = "19";

// The style names the window shows; "Cool" and "Extra" are written by no one, "Flat" and the Office styles stay
// unshown.
constexpr std::array<std::string_view, 5> kShownButtonStyles = {"Vista", "Standard", "Cool", "Extra", "XP-Style"};

} // namespace

OptionenLogic::OptionenLogic(ReceiptForm& form, Settings& settings, const ProgramPaths& paths, FormHost& host,
                             WindowParts& parts)
    : m_form(form), m_settings(settings), m_paths(paths), m_host(host), m_parts(parts)
{
}

void OptionenLogic::load()
{
    // The two switches without a load step show what is stored, as the start gave it to them.
    try {
        m_fields.ruler_check1 = switchValue(m_settings.get(kApplicationName, "Options", "Ruler", "1")) != 0;
    } catch (const RunError&) {
    }
    try {
        m_fields.chkLoadTipsAtStartup =
            switchValue(m_settings.get(kTipApplicationName, "Options", "Show Tips at Startup", "1")) != 0;
    } catch (const RunError&) {
    }

    auto date = m_settings.get(kApplicationName, "Options", "Datumanzeige", "");
    m_fields.xpCheck1 = date.empty() ? 0 : switchValue(date);
    auto calculation = m_settings.get(kApplicationName, "Options", "Berechnung", "");
    m_fields.checkGB_Berechnung = calculation.empty() ? 1 : switchValue(calculation);
    m_fields.belegart_opt = m_form.text(FormElement::Label1);

    m_fields.mwstwert1 = kStandardRate;
    auto rateFile = m_paths.dataFile("mwst.dat");
    if (!smallfiles::isMissing(rateFile)) {
        // Unlike the main window, each line replaces the field: the last line wins.
        for (const auto& line : readTextLines(rateFile))
            m_fields.mwstwert1 = line;
    } else {
        writeTextLines(rateFile, {std::string(kStandardRate)});
    }
    if (m_fields.mwstwert1 == kStandardRate)
        chooseOption1();
    else
        chooseOption2();

    auto printFile = m_paths.dataFile("druck.dat");
    if (!smallfiles::isMissing(printFile)) {
        auto lines = readTextLines(printFile);
        std::size_t next = 0;
        while (next < lines.size()) {
            for (std::string* field : {&m_fields.abstand, &m_fields.anzahl, &m_fields.oben}) {
                if (next >= lines.size())
                    throw RunError::inputPastEnd();
                *field += lines[next++];
            }
        }
    } else {
        writeTextLines(printFile, {m_fields.abstand, m_fields.anzahl, m_fields.oben});
    }

    auto numberFile = m_paths.dataFile("nummer.dat");
    if (!smallfiles::isMissing(numberFile)) {
        m_fields.Text1.clear();
        for (const auto& line : readTextLines(numberFile))
            m_fields.Text1 += line;
    } else {
        smallfiles::saveNumber(numberFile, m_fields.Text1);
    }

    auto style = m_settings.get(kApplicationName, "Options", "Buttons", "");
    for (auto shown : kShownButtonStyles) {
        if (style == shown)
            m_fields.Label12 = style;
    }
}

void OptionenLogic::chooseOption1()
{
    m_fields.rateChoice = 1;
    m_fields.rateLocked = true;
    m_fields.mwstwert1 = kStandardRate;
}

void OptionenLogic::chooseOption2()
{
    m_fields.rateChoice = 2;
    m_fields.rateLocked = false;
}

void OptionenLogic::save()
{
    writeTextLines(m_paths.dataFile("mwst.dat"), {m_fields.mwstwert1});
    writeTextLines(m_paths.dataFile("druck.dat"), {m_fields.abstand, m_fields.anzahl, m_fields.oben});
    smallfiles::saveNumber(m_paths.dataFile("nummer.dat"), m_fields.Text1);
    m_settings.save(kApplicationName, "Options", "Berechnung", std::to_string(m_fields.checkGB_Berechnung));
    m_host.showNotice(Notice::optionen1);
}

void OptionenLogic::setDateAtStart(int value)
{
    m_fields.xpCheck1 = value;
    m_settings.save(kApplicationName, "Options", "Datumanzeige", std::to_string(value));
}

void OptionenLogic::setRuler(int value)
{
    m_fields.ruler_check1 = value;
    m_parts.showRulers(value != 0);
    m_settings.save(kApplicationName, "Options", "Ruler", std::to_string(value));
}

void OptionenLogic::setTipsAtStartup(int value)
{
    m_fields.chkLoadTipsAtStartup = value;
    m_settings.save(kTipApplicationName, "Options", "Show Tips at Startup", std::to_string(value));
}

std::string_view OptionenLogic::rulerCaption(int value) { return value != 0 ? "Lineal aktiviert" : "Lineal deaktiviert"; }

// The deletions ignore a failing store: deleting what is absent is such a failure.
void OptionenLogic::deletePlaceOfIssue()
{
    m_settings.removeSection(kApplicationName, "Ausstellungsort");
    m_form.setText(FormElement::Text8, "");
}

void OptionenLogic::takeReceiptType()
{
    m_form.setText(FormElement::Label1, m_fields.belegart_opt);
    m_settings.save(kApplicationName, "Options", "Belegart", m_fields.belegart_opt);
}

void OptionenLogic::deleteReceiptType()
{
    m_settings.remove(kApplicationName, "Options", "Belegart");
    m_form.setText(FormElement::Label1, std::string(kDefaultReceiptType));
    m_fields.belegart_opt = kDefaultReceiptType;
}

void OptionenLogic::deleteButtonStyle()
{
    m_settings.remove(kApplicationName, "Options", "Buttons");
    m_fields.Label12 = "Standard";
}

void OptionenLogic::deleteRuler() { m_settings.remove(kApplicationName, "Options", "Ruler"); }

} // namespace zw
