#include "service/ErrorReport.h"

namespace zw {

const std::string_view kErrorReportTemplate =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1031{\\fonttbl{\\f0\\fswiss\\fcharset0 Arial;}}\r\n"
    "\\viewkind4\\uc1\\pard\\f0\\fs20 Fehlermeldung:\r\n"
    "\\par \\b <NUMMER>\r\n"
    "\\par \\b0 \r\n"
    "\\par Fehlerbeschreibung:\r\n"
    "\\par \\b <BEZEICHNUNG>\r\n"
    "\\par \\b0 \r\n"
    "\\par Betrifft die Form:\r\n"
    "\\par \\b <FORM>\r\n"
    "\\par \\b0 \r\n"
    "\\par Der Fehler ist am \\b\\i <DATUM> \\b0\\i0 im Programm\\b\\i  <PROGRAMMNAME> \\b0\\i0 mit der Version "
    "\\b\\i <VERSION> \\b0\\i0 aufgetreten.\r\n"
    "\\par }\r\n";

std::string stringReplace(std::string_view text, std::string_view find, std::string_view replacement)
{
    if (find.empty())
        return std::string(text);
    std::string out;
    out.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        if (text.compare(at, find.size(), find) == 0) {
            out += replacement;
            at += find.size();
        } else {
            out += text[at++];
        }
    }
    return out;
}

std::string fillErrorReport(std::string_view reportTemplate, const Fault& fault, std::string_view dateTime,
                            std::string_view programName, std::string_view version)
{
    std::string report(reportTemplate);
    report = stringReplace(report, "<NUMMER>", fault.number);
    report = stringReplace(report, "<BEZEICHNUNG>", fault.description);
    report = stringReplace(report, "<FORM>", fault.form);
    report = stringReplace(report, "<DATUM>", dateTime);
    report = stringReplace(report, "<PROGRAMMNAME>", programName);
    report = stringReplace(report, "<VERSION>", version);
    return report;
}

} // namespace zw
