#include <QApplication>
#include <charconv>
#include <filesystem>
#include <memory>
#include <ostream>

#include "app/TextFile.h"
#include "books/YearFigures.h"
#include "core/RunError.h"
#include "ledger/ReceiptLedger.h"
#include "print/YearChart.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Environment.h"
#include "tools/OpenedReceipt.h"

namespace zw::cli {
namespace {

constexpr const char* kUsage =
    "Aufruf: zettelwerk-cli ledger chart --year JJJJ [--size BREITExHÖHE] AUSGABE.png\n";

std::optional<int> numberOf(std::string_view text)
{
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

// "1280x800", each side from 200 to 10000 pixels.
std::optional<QSize> sizeOf(std::string_view text)
{
    const auto cross = text.find('x');
    if (cross == std::string_view::npos)
        return std::nullopt;
    const auto width = numberOf(text.substr(0, cross));
    const auto height = numberOf(text.substr(cross + 1));
    if (!width || !height || *width < 200 || *height < 200 || *width > 10000 || *height > 10000)
        return std::nullopt;
    return QSize(*width, *height);
}

} // namespace

// `ledger chart --year JJJJ OUT.png`: the picture of "Auswertung" from the program folder's ledger, read as the
// rows come, so no row is kept.
int runLedgerChart(CliContext& context)
{
    auto& arguments = context.arguments;
    arguments.erase(arguments.begin()); // "chart"
    const auto yearText = takeOption(arguments, "--year");
    const auto sizeText = takeOption(arguments, "--size");
    const int year = yearText ? numberOf(*yearText).value_or(0) : 0;
    const auto size = sizeText ? sizeOf(*sizeText) : kYearPictureSize;
    if (year < 1900 || year > 9999 || !size || arguments.size() != 1) {
        context.err << kUsage;
        return 2;
    }
    try {
        const ProgramPaths paths = programPaths(context);
        YearTally tally(year);
        LedgerReader reader([&tally](std::string_view row) { tally.add(row); });
        // Before the first filing there is no ledger: the year is drawn empty, as the window shows it.
        if (const auto ledger = paths.dataFile("belege.dat"); std::filesystem::exists(ledger))
            readFileInBlocks(ledger, [&reader](std::string_view block) { reader.feed(block); });
        reader.finish();
        const auto application = startToolkit<QApplication>();
        saveYearPicturePng(tally.finish(), arguments[0], *size);
        return 0;
    } catch (const RunError& error) {
        context.err << "Fehler " << error.number() << ": " << error.description() << "\n";
        return 1;
    }
}

} // namespace zw::cli
