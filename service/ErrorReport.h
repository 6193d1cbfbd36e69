#pragma once

#include <string>
#include <string_view>

namespace zw {

// The rich-text report of the error window, with its six placeholders.
extern const std::string_view kErrorReportTemplate;

// Replaces every occurrence of `find` in one left-to-right scan, comparing case-sensitively. Replaced text is not
// scanned again. An empty `find` leaves the text as it is.
std::string stringReplace(std::string_view text, std::string_view find, std::string_view replacement);

// The three facts a failing routine hands over.
struct Fault
{
    std::string number;      // Label1
    std::string description; // Label2
    std::string form;        // Label3: the window's internal name, such as "optionen"
};

// The template with its placeholders filled in the fixed order NUMMER, BEZEICHNUNG, FORM, DATUM, PROGRAMMNAME,
// VERSION, each over the whole text. Values go in raw, so a description holding rich-text control characters or
// a later placeholder's name changes the report; that is how the window has always behaved.
std::string fillErrorReport(std::string_view reportTemplate, const Fault& fault, std::string_view dateTime,
                            std::string_view programName, std::string_view version);

} // namespace zw
