#include "print/IssuerData.h"

#include <filesystem>
#include <optional>

#include "app/FileLock.h"
#include "app/ProgramPaths.h"
#include "app/TextFile.h"
#include "core/CodePage.h"
#include "core/FormHost.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "core/Settings.h"

namespace zw {
namespace {

constexpr std::array<const char*, 3> kFiles = {"aussteller.dat", "aussteller2.dat", "aussteller3.dat"};
constexpr std::array<const char*, 3> kTaxKeys = {"Steuernummer", "Steuernummer2", "Steuernummer3"};

// The issuer's text replaces the file whole; the lock keeps it from landing in the middle of another program's
// read-modify-replace of the same file.
void writeIssuerFile(const std::filesystem::path& file, const std::string& text)
{
    updateFileLocked(file, [&text](const FileOnDisk&) -> std::optional<std::string> {
        return utf8ToCp1252(text + "\r\n");
    });
}

} // namespace

IssuerData::IssuerData(ReceiptForm& form, Settings& settings, const ProgramPaths& paths, FormHost& host)
    : m_form(form), m_settings(settings), m_paths(paths), m_host(host)
{
}

std::string IssuerData::steuer(const char* key) const { return m_settings.get(kApplicationName, "Steuer", key, ""); }

IssuerEntry IssuerData::openAussteller() const
{
    IssuerEntry entry;
    entry.taxNumber = steuer("Steuernummer");
    entry.showTaxNumber = steuer("Steuer_Check") == "1";
    entry.exemptionNote = steuer("Kleinunternehmer");
    if (entry.exemptionNote.empty())
        entry.exemptionNote = kDefaultExemptionNote;
    entry.text = readTextFile(m_paths.dataFile(kFiles[0]));
    return entry;
}

void IssuerData::saveAussteller(const IssuerEntry& entry)
{
    m_host.showNotice(Notice::aussteller1);
    writeIssuerFile(m_paths.dataFile(kFiles[0]), entry.text);
    m_form.setText(FormElement::RTFBox, entry.text);
    m_settings.save(kApplicationName, "Steuer", "Steuernummer", entry.taxNumber);
    m_settings.save(kApplicationName, "Steuer", "Steuer_Check", entry.showTaxNumber ? "1" : "0");
    m_settings.save(kApplicationName, "Steuer", "Kleinunternehmer", entry.exemptionNote);
}

std::array<IssuerPage, 3> IssuerData::openAusstellerPro() const
{
    std::array<IssuerPage, 3> pages;
    const bool firstHasNumber = !steuer("Steuernummer").empty();
    for (std::size_t i = 0; i < pages.size(); ++i) {
        // A second or third issuer never saved has no file yet: its page starts empty.
        const auto file = m_paths.dataFile(kFiles[i]);
        if (i == 0 || std::filesystem::exists(file))
            pages[i].text = readTextFile(file);
        if (firstHasNumber)
            pages[i].taxNumber = steuer(kTaxKeys[i]);
    }
    return pages;
}

void IssuerData::chooseIssuer(int index, const IssuerPage& page)
{
    if (index < 0 || index > 2)
        throw RunError::invalidCall();
    const auto i = static_cast<std::size_t>(index);
    m_form.setText(FormElement::RTFBox, page.text);
    m_form.setText(FormElement::steuernummer2, page.taxNumber);
    writeIssuerFile(m_paths.dataFile(kFiles[i]), page.text);
    m_settings.save(kApplicationName, "Steuer", kTaxKeys[i], page.taxNumber);
}

} // namespace zw
