#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/ReceiptTypes.h"

namespace zw {

class FormHost;
class ProgramPaths;
class ReceiptForm;
class Settings;

// The steps of the start that another part of the main window carries out; a part registers for its step.
enum class StartStep {
    LoadAutocompletion,
    ShowTipWindow,
    SwitchLogoOn,      // ausstellerein
    SwitchSignatureOn, // einfst
};

// What the start and the commands need of the main window. The defaults do nothing, so a part not yet there is
// passed over like a failing step.
class WindowParts
{
public:
    virtual ~WindowParts() = default;
    virtual void runStartStep(StartStep /*step*/) {}
    virtual void setWindowBackground(const std::string& /*programPath*/) {}
    virtual void applyMenuDesign(int /*styleNumber*/) {}
    virtual void applyButtonStyle(int /*styleNumber*/) {}
    virtual void showRulers(bool /*visible*/) {}
    virtual void setLastFileCaption(const std::string& /*caption*/) {}
};

// The main window `Quittung` as logic: its load sequence, NewReceipt and the commands of the open receipt.
class QuittungLogic
{
public:
    using Today = std::function<std::string()>; // today as "dd.mm.yyyy"

    QuittungLogic(ReceiptForm& form, Settings& settings, const ProgramPaths& paths, FormHost& host,
                  WindowParts& parts, Today today);

    // The thirty-three load steps; every failing step is passed over, the last one ends the load quietly.
    void load();

    void neue();
    void einna();
    void ausga();
    // A click on xpCheck1.
    void incomeSwitchClicked(int value);
    void steueran();
    void steueraus();
    void eur();
    void ortfest();
    void beleg(ReceiptTypeMenu menu, int index);
    void spr_deutsch();
    void spr_englisch();
    void felder();

    // Menu designs "XP", "2003", "2007", "VS2005" and button styles "Standard" ... "Vista".
    bool menuDesign(std::string_view stored);
    bool buttonStyle(std::string_view stored);
    void schriftarial();

    // Switches of the shortcut bar that store at once.
    void saveCheckChanged(int value);
    void quittnrChanged(int value);
    // xpCheck2 and the toolbar key bm_kalenderbutton: the calendar button of Text9, kept in Options/Kalender.
    void calendarSwitchChanged(int value);
    void printLayoutChosen(int optionNumber);
    // Image2 / Image4 / Image5: druck.dat from the three fields.
    void savePrintSetup();

    // The exit doors: exxxit asks, the others do not. Returns true if the windows are to be unloaded now;
    // the guard keeps a second unload from running while one is under way.
    bool exxxit();
    bool beginUnload();
    void endUnload();

    std::string windowTitle() const;

private:
    void applyLabelSet(const std::array<std::string_view, kLabelSetSize>& captions);
    std::string setting(std::string_view section, std::string_view key) const;
    void store(std::string_view section, std::string_view key, std::string_view value);

    ReceiptForm& m_form;
    Settings& m_settings;
    const ProgramPaths& m_paths;
    FormHost& m_host;
    WindowParts& m_parts;
    Today m_today;
    bool m_unloading = false;
};

} // namespace zw
