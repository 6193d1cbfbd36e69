#pragma once

#include <array>
#include <string>

namespace zw {

class FormHost;
class ProgramPaths;
class ReceiptForm;
class Settings;

inline constexpr const char* kDefaultExemptionNote = "Von der Umsatzsteuer nach §19 UStG befreit.";

// What the window aussteller shows and saves.
struct IssuerEntry
{
    std::string text;          // RTFBox: the whole of aussteller.dat
    std::string taxNumber;     // steuernummer2
    bool showTaxNumber = false; // steuernummer1
    std::string exemptionNote; // para19
};

// One page of aussteller_pro.
struct IssuerPage
{
    std::string text;
    std::string taxNumber;
};

// The issuers: aussteller.dat (the active one), aussteller2.dat and aussteller3.dat with their tax numbers in
// the section Steuer. Failures are thrown as RunError.
class IssuerData
{
public:
    IssuerData(ReceiptForm& form, Settings& settings, const ProgramPaths& paths, FormHost& host);

    // Opening aussteller; a missing aussteller.dat throws RunError 53.
    IssuerEntry openAussteller() const;
    // xpButton1 of aussteller. The file gets the text and a line end, so each open and save adds an empty
    // line at the end: the file has always behaved so.
    void saveAussteller(const IssuerEntry& entry);

    // Opening aussteller_pro. A page shows its tax number only while the first issuer has one: the test is
    // made on Steuernummer for all three pages, on purpose.
    std::array<IssuerPage, 3> openAusstellerPro() const;
    // xpOption1(index): shows that issuer on the receipt and stores its page. The next start shows issuer 1.
    void chooseIssuer(int index, const IssuerPage& page);

private:
    std::string steuer(const char* key) const;

    ReceiptForm& m_form;
    Settings& m_settings;
    const ProgramPaths& m_paths;
    FormHost& m_host;
};

} // namespace zw
