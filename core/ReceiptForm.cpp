#include "core/ReceiptForm.h"

#include <utility>

#include "core/AmountEntry.h"
#include "core/ReceiptTypes.h"

namespace zw {
namespace {

constexpr std::string_view kIncomeCaption = "Einnahme aktiv";
constexpr std::string_view kExpenseCaption = "Ausgabe aktiv";

} // namespace

ReceiptForm::ReceiptForm() : m_label1PointSize(kTitlePointSize), m_fieldPointSize(0)
{
    m_visible.fill(true);
    auto set = [this](FormElement element, std::string_view value) { m_texts[indexOf(element)] = value; };
    set(FormElement::Label1, kDefaultReceiptType);
    const auto& captions = labelSet(LabelLanguage::FormDefault);
    for (std::size_t i = 0; i < kLabelSetElements.size(); ++i)
        set(kLabelSetElements[i], captions[i]);
    set(FormElement::Label13, "+");
    set(FormElement::Label30, "*GiW = Gesamtbetrag in Worte");
    set(FormElement::Text1, "00000001");
    set(FormElement::Text2, "EUR");
    set(FormElement::Text3, "19");
    set(FormElement::Text10, "0,00");
    set(FormElement::Text11, "0,00");
    set(FormElement::Text12, "0,00");
    set(FormElement::einbe, "0");
    set(FormElement::ausbe, "0");
    for (FormElement hidden : {FormElement::betrag_duplikat, FormElement::Text13, FormElement::Command1,
                               FormElement::Datum2, FormElement::autoge, FormElement::List1, FormElement::einbe,
                               FormElement::ausbe, FormElement::para19, FormElement::Image6, FormElement::Image7})
        m_visible[indexOf(hidden)] = false;
    m_checked.insert("einna");
}

void ReceiptForm::attach(Settings* settings, FormHost* host)
{
    m_settings = settings;
    m_host = host;
}

void ReceiptForm::setText(FormElement element, std::string value)
{
    auto& slot = m_texts[indexOf(element)];
    if (slot == value)
        return;
    slot = std::move(value);
    notify({FormAspect::Text, element});
    runChangeHandler(element);
}

void ReceiptForm::appendText(FormElement element, std::string_view value)
{
    // In place: a copy of the whole field per appended line would make reading a long file quadratic.
    if (value.empty())
        return;
    m_texts[indexOf(element)].append(value);
    notify({FormAspect::Text, element});
    runChangeHandler(element);
}

void ReceiptForm::setVisible(FormElement element, bool visible)
{
    if (m_visible[indexOf(element)] == visible)
        return;
    m_visible[indexOf(element)] = visible;
    notify({FormAspect::Visibility, element});
}

int ReceiptForm::pointSize(FormElement element) const
{
    return element == FormElement::Label1 ? m_label1PointSize : m_fieldPointSize;
}

void ReceiptForm::setPointSize(FormElement element, int points)
{
    int& slot = element == FormElement::Label1 ? m_label1PointSize : m_fieldPointSize;
    if (slot == points)
        return;
    slot = points;
    notify({FormAspect::Font, element});
}

const std::string& ReceiptForm::fontFamily(FormElement element) const
{
    bool amount = element == FormElement::Text10 || element == FormElement::Text11 || element == FormElement::Text12;
    return amount ? m_amountFontFamily : m_fontFamily;
}

void ReceiptForm::setFontFamilies(std::string labelsAndFields, std::string amounts)
{
    m_fontFamily = std::move(labelsAndFields);
    m_amountFontFamily = std::move(amounts);
    notify({FormAspect::Font, FormElement::Count});
}

void ReceiptForm::setIncome(int value)
{
    m_income = value;
    setChecked("einna", value != 0);
    setChecked("ausga", value == 0);
    notify({FormAspect::Switch, FormElement::Count, "xpCheck1"});
}

std::string_view ReceiptForm::incomeCaption() const { return m_income == 0 ? kExpenseCaption : kIncomeCaption; }

void ReceiptForm::setSwitch(int& member, int value, std::string_view name)
{
    if (member == value)
        return;
    member = value;
    notify({FormAspect::Switch, FormElement::Count, name});
}

void ReceiptForm::setSaveCheck(int value) { setSwitch(m_saveCheck, value, "Save_Check"); }
void ReceiptForm::setQuittnr(int value) { setSwitch(m_quittnr, value, "quittnr"); }
void ReceiptForm::setBetragCheck(int value) { setSwitch(m_betragCheck, value, "betrag_check"); }
void ReceiptForm::setCalendarButton(int value) { setSwitch(m_calendarButton, value, "xpCheck2"); }

void ReceiptForm::setPrintLayout(PrintLayout layout)
{
    if (m_printLayout == layout)
        return;
    m_printLayout = layout;
    notify({FormAspect::Switch, FormElement::Count, "Option1"});
}

void ReceiptForm::setStampChoice(StampChoice choice)
{
    if (m_stampChoice == choice)
        return;
    m_stampChoice = choice;
    notify({FormAspect::Switch, FormElement::Count, "opt_stamp"});
}

void ReceiptForm::setAbstand(std::string value)
{
    m_abstand = std::move(value);
    notify({FormAspect::Switch, FormElement::Count, "abstand"});
}

void ReceiptForm::setAnzahl(std::string value)
{
    m_anzahl = std::move(value);
    notify({FormAspect::Switch, FormElement::Count, "anzahl"});
}

void ReceiptForm::setOben(std::string value)
{
    m_oben = std::move(value);
    notify({FormAspect::Switch, FormElement::Count, "oben"});
}

bool ReceiptForm::isChecked(std::string_view command) const { return m_checked.contains(command); }

void ReceiptForm::setChecked(std::string_view command, bool checked)
{
    auto found = m_checked.find(command);
    if ((found != m_checked.end()) == checked)
        return;
    if (checked)
        m_checked.emplace(command);
    else
        m_checked.erase(found);
    notify({FormAspect::MenuCheck, FormElement::Count, command});
}

void ReceiptForm::setFormBackground(std::string path)
{
    m_formBackground = std::move(path);
    notify({FormAspect::Background});
}

void ReceiptForm::setPicture(FormElement element, std::string path)
{
    m_pictures[indexOf(element)] = std::move(path);
    notify({FormAspect::Picture, element});
}

void ReceiptForm::addListener(Listener listener) { m_listeners.push_back(std::move(listener)); }

ReceiptForm::Batch::Batch(ReceiptForm& form) : m_form(form) { ++m_form.m_batchDepth; }

ReceiptForm::Batch::~Batch() { m_form.endBatch(); }

void ReceiptForm::notify(const FormChange& change)
{
    if (m_batchDepth > 0) {
        for (const auto& pending : m_pending)
            if (pending.aspect == change.aspect && pending.element == change.element && pending.name == change.name)
                return;
        m_pending.push_back({change.aspect, change.element, std::string(change.name)});
        return;
    }
    for (const auto& listener : m_listeners)
        listener(change);
}

void ReceiptForm::endBatch()
{
    if (--m_batchDepth > 0)
        return;
    const auto pending = std::move(m_pending);
    m_pending.clear();
    for (const auto& change : pending)
        notify({change.aspect, change.element, change.name});
}

void ReceiptForm::runChangeHandler(FormElement element)
{
    if (element == FormElement::Text12)
        grossChanged(*this);
}

} // namespace zw
