#include <ostream>
#include <string>

#include "app/SettingsStore.h"
#include "core/AmountEntry.h"
#include "core/RunError.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Environment.h"

namespace zw::cli {
namespace {

// The program's messages end their lines with a bare carriage return; a terminal wants line feeds.
std::string terminalText(std::string text)
{
    for (char& c : text) {
        if (c == '\r')
            c = '\n';
    }
    return text;
}

int usageError(CliContext& context, const char* usage)
{
    context.err << "Aufruf: zettelwerk-cli " << usage << "\n";
    return 2;
}

int printOutcome(CliContext& context, const EntryOutcome& outcome)
{
    if (outcome.message) {
        context.err << terminalText(*outcome.message) << "\n";
        return 1;
    }
    const AmountFields& fields = outcome.fields;
    context.out << fields.text10 << "\n"
                << fields.text11 << "\n"
                << fields.text12 << "\n"
                << fields.text4 << "\n";
    return 0;
}

} // namespace

int runWords(CliContext& context)
{
    constexpr const char* kUsage = "words --rounding|--truncation BETRAG";
    const bool rounding = takeFlag(context.arguments, "--rounding");
    const bool truncation = takeFlag(context.arguments, "--truncation");
    if (rounding == truncation || context.arguments.size() != 1)
        return usageError(context, kUsage);
    try {
        context.out << amountWords(context.arguments.front(),
                                   rounding ? WordsRule::Rounding : WordsRule::Truncation)
                    << "\n";
    } catch (const RunError& error) {
        // No routine traps a fault here; the window would show its number and text.
        context.err << "Laufzeitfehler " << error.number() << ": " << error.description() << "\n";
        return 1;
    }
    return 0;
}

int runGross(CliContext& context)
{
    constexpr const char* kUsage = "gross BETRAG --rate SATZ [--rounded-words]";
    const auto rate = takeOption(context.arguments, "--rate");
    const bool rounded = takeFlag(context.arguments, "--rounded-words");
    if (!rate || context.arguments.size() != 1)
        return usageError(context, kUsage);
    SettingsStore settings(settingsFolder(context));
    tellNoticesOnStandardError(settings);
    return printOutcome(context,
                        grossEntry(context.arguments.front(), *rate,
                                   rounded ? WordsRule::Rounding : WordsRule::Truncation, &settings));
}

int runNet(CliContext& context)
{
    constexpr const char* kUsage = "net BETRAG --rate SATZ";
    const auto rate = takeOption(context.arguments, "--rate");
    if (!rate || context.arguments.size() != 1)
        return usageError(context, kUsage);
    SettingsStore settings(settingsFolder(context));
    tellNoticesOnStandardError(settings);
    return printOutcome(context, netEntry(context.arguments.front(), *rate, &settings));
}

} // namespace zw::cli
