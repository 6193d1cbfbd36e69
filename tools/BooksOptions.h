#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "books/BookDate.h"
#include "tools/CliContext.h"

// What the cash book's commands share, with and without the toolkit.
namespace zw::cli::books {

inline constexpr const char* kOutsideNotice =
    "Die Belegliste wurde außerhalb von Zettelwerk geändert. Die Änderung ist im Änderungsprotokoll vermerkt.\n";

inline std::optional<BookDate> dateOption(CliContext& context, const std::string& name, bool& bad)
{
    const auto text = takeOption(context.arguments, name);
    if (!text)
        return std::nullopt;
    const auto date = parseGermanDate(*text);
    if (!date) {
        context.err << "\"" << *text << "\" ist kein Datum der Form TT.MM.JJJJ.\n";
        bad = true;
    }
    return date;
}

inline int usage(CliContext& context, const char* text)
{
    context.err << "Aufruf: zettelwerk-cli " << text << "\n";
    return 2;
}

} // namespace zw::cli::books
