#include "export/XmlExport.h"

#include <array>
#include <utility>

#include "app/AtomicFile.h"
#include "app/CommonDialog.h"
#include "app/Version.h"
#include "core/CodePage.h"
#include "core/ReceiptForm.h"

namespace zw {
namespace {

using F = FormElement;

constexpr std::array<std::pair<const char*, FormElement>, 14> kElements = {{
    {"Belegart", F::Label1},
    {"Nummer", F::Text1},
    {"Waehrung", F::Text2},
    {"MwSt", F::Text3},
    {"Netto", F::Text10},
    {"MwSt_Anteil", F::Text11},
    {"Brutto", F::Text12},
    {"Betrag_in_Worte", F::Text4},
    {"Von_Zeile_1", F::Text5},
    {"Von_Zeile_2", F::Text6},
    {"Fuer", F::Text7},
    {"Ort", F::Text8},
    {"Datum", F::Text9},
    {"Buchungsvermerk", F::Text14},
}};

} // namespace

std::string receiptXml(const ReceiptForm& form, std::string_view webAddress)
{
    const std::string indent = "     ";
    std::string xml = "<?xml version=\"1.0\"?>\r\n";
    xml += "<GENERATOR>Zettelwerk V" + versionText() + " (" + std::string(webAddress) + ")</GENERATOR>\r\n";
    xml += "<Quittung>\r\n";
    for (const auto& [tag, element] : kElements) {
        xml += indent + "<" + tag + ">\r\n";
        xml += indent + form.text(element) + "\r\n";
        xml += indent + "</" + tag + ">\r\n";
    }
    xml += "</Quittung>\r\n";
    return xml;
}

std::string receiptXmlBytes(const ReceiptForm& form, std::string_view webAddress)
{
    return utf8ToCp1252(receiptXml(form, webAddress));
}

void writeReceiptXml(const ReceiptForm& form, const std::filesystem::path& file, std::string_view webAddress)
{
    writeFileAtomically(file, receiptXmlBytes(form, webAddress));
}

void alsxml(CommonDialog& dialog, const ReceiptForm& form, std::string_view webAddress)
{
    dialog.Filter = "XML Datei (*.XML)|*.XML";
    dialog.CancelError = false;
    // The bitmap export leaves its "BMP" in the shared dialog; an XML file must not be named after it.
    dialog.DefaultExt.clear();
    dialog.ShowSave();
    if (dialog.FileName.empty())
        return;
    writeReceiptXml(form, dialog.FileName, webAddress);
}

} // namespace zw
