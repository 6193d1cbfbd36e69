#pragma once

#include <array>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/FormElement.h"
#include "core/PrintLayout.h"

namespace zw {

class FormHost;
class Settings;

// The stamp field choice `opt_stamp`.
enum class StampChoice { None, Original, Copy };

// What changed, so that a window can mirror just that.
enum class FormAspect { Text, Visibility, Font, Switch, MenuCheck, Background, Picture };

struct FormChange
{
    FormAspect aspect;
    FormElement element = FormElement::Count; // for Text, Visibility, Font
    std::string_view name = {};               // for Switch and MenuCheck: the internal name
};

// The open receipt and the state of the form around it: field texts, captions, visibility, the switches of the
// shortcut bar, the print set-up numbers and the check marks of the menu. All writes to a field go through
// setText, which runs that field's change handling the way the form's Change events do.
class ReceiptForm
{
public:
    ReceiptForm();

    // The form reads settings (the automatic calculation) and reaches the user through the host.
    void attach(Settings* settings, FormHost* host);
    Settings* settings() const { return m_settings; }
    FormHost* host() const { return m_host; }

    const std::string& text(FormElement element) const { return m_texts[indexOf(element)]; }
    void setText(FormElement element, std::string value);
    void appendText(FormElement element, std::string_view value);

    bool isVisible(FormElement element) const { return m_visible[indexOf(element)]; }
    void setVisible(FormElement element, bool visible);

    int pointSize(FormElement element) const;
    void setPointSize(FormElement element, int points);

    // The form's fonts: one family for the captions and text fields, one for the three amount fields.
    const std::string& fontFamily(FormElement element) const;
    void setFontFamilies(std::string labelsAndFields, std::string amounts);

    // xpCheck1: 1 income, 0 expense. Its change sets its caption and the marks of einna / ausga.
    int income() const { return m_income; }
    void setIncome(int value);
    std::string_view incomeCaption() const;

    int saveCheck() const { return m_saveCheck; }
    void setSaveCheck(int value);
    int quittnr() const { return m_quittnr; }
    void setQuittnr(int value);
    int betragCheck() const { return m_betragCheck; }
    void setBetragCheck(int value);
    int calendarButton() const { return m_calendarButton; }
    void setCalendarButton(int value);
    PrintLayout printLayout() const { return m_printLayout; }
    void setPrintLayout(PrintLayout layout);
    StampChoice stampChoice() const { return m_stampChoice; }
    void setStampChoice(StampChoice choice);

    // The spin fields of the print set-up hold text, as the files they come from do.
    const std::string& abstand() const { return m_abstand; }
    const std::string& anzahl() const { return m_anzahl; }
    const std::string& oben() const { return m_oben; }
    void setAbstand(std::string value);
    void setAnzahl(std::string value);
    void setOben(std::string value);

    bool isChecked(std::string_view command) const;
    void setChecked(std::string_view command, bool checked);

    // The picture behind picSource, a path below the program folder ("\hintergrund\quittung_leer.jpg").
    const std::string& formBackground() const { return m_formBackground; }
    void setFormBackground(std::string path);

    // The file shown by a picture field (Image3, Image6, Image7); empty shows nothing.
    const std::string& picture(FormElement element) const { return m_pictures[indexOf(element)]; }
    void setPicture(FormElement element, std::string path);

    using Listener = std::function<void(const FormChange&)>;
    void addListener(Listener listener);

    // While a Batch lives the listeners hear nothing; at its end each changed aspect is told once, so a window
    // that loads a file of many lines mirrors the final text once instead of once per line. Batches nest.
    class Batch
    {
    public:
        explicit Batch(ReceiptForm& form);
        ~Batch();
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;

    private:
        ReceiptForm& m_form;
    };

private:
    struct PendingChange
    {
        FormAspect aspect;
        FormElement element;
        std::string name; // owned: the caller's view may be gone when the batch ends
    };

    void notify(const FormChange& change);
    void endBatch();
    void runChangeHandler(FormElement element);
    void setSwitch(int& member, int value, std::string_view name);

    Settings* m_settings = nullptr;
    FormHost* m_host = nullptr;
    std::array<std::string, kFormElementCount> m_texts;
    std::array<bool, kFormElementCount> m_visible;
    int m_label1PointSize;
    int m_fieldPointSize;
    std::string m_fontFamily = "Arial";
    std::string m_amountFontFamily = "Courier New";
    int m_income = 1;
    int m_saveCheck = 0;
    int m_quittnr = 0;
    int m_betragCheck = 0;
    int m_calendarButton = 0;
    PrintLayout m_printLayout = PrintLayout::OneReceipt;
    StampChoice m_stampChoice = StampChoice::None;
    std::string m_abstand;
    std::string m_anzahl;
    std::string m_oben;
    std::set<std::string, std::less<>> m_checked;
    std::string m_formBackground;
    std::array<std::string, kFormElementCount> m_pictures;
    std::vector<Listener> m_listeners;
    int m_batchDepth = 0;
    std::vector<PendingChange> m_pending;
};

} // namespace zw
