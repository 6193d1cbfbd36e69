#pragma once

#include <string>
#include <string_view>

namespace zw {

class FormHost;
class ProgramPaths;
class ReceiptForm;
class Settings;
class WindowParts;

// The controls of the settings window `optionen` that hold values, by their names.
struct OptionenFields
{
    int xpCheck1 = 0;
    int checkGB_Berechnung = 0;
    std::string belegart_opt;
    std::string mwstwert1;
    int rateChoice = 0;      // 1: Option1 (19 %, field locked), 2: Option2 (own rate, field open)
    bool rateLocked = false;
    std::string abstand;
    std::string anzahl;
    std::string oben;
    std::string Text1;
    std::string Label12;
    int ruler_check1 = 1;
    int chkLoadTipsAtStartup = 1;
};

// The settings window as logic: its load, the two rate choices, Save, the switches that store at once and the
// deletions. The window shows `fields()` and hands every change to one call here.
class OptionenLogic
{
public:
    OptionenLogic(ReceiptForm& form, Settings& settings, const ProgramPaths& paths, FormHost& host,
                  WindowParts& parts);

    const OptionenFields& fields() const { return m_fields; }
    OptionenFields& fields() { return m_fields; }

    // The load steps in order. A failing step throws RunError and leaves the later fields at their first values.
    void load();

    void chooseOption1();
    void chooseOption2();

    // Writes mwst.dat, druck.dat, nummer.dat, stores Options/Berechnung and shows the notice; the window closes.
    void save();

    // The switches that store at the moment of the change.
    void setDateAtStart(int value);
    void setRuler(int value);
    void setTipsAtStartup(int value);
    static std::string_view rulerCaption(int value);

    // Button1 to Button4 and Command1.
    void deletePlaceOfIssue();
    void takeReceiptType();
    void deleteReceiptType();
    void deleteButtonStyle();
    void deleteRuler();

private:
    ReceiptForm& m_form;
    Settings& m_settings;
    const ProgramPaths& m_paths;
    FormHost& m_host;
    WindowParts& m_parts;
    OptionenFields m_fields;
};

} // namespace zw
