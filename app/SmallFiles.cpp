#include "app/SmallFiles.h"

#include <array>
#include <string>
#include <vector>

#include "app/FileLock.h"
#include "app/ProgramPaths.h"
#include "app/TextFile.h"
#include "core/FormElement.h"
#include "core/GermanNumbers.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"

namespace zw::smallfiles {
namespace {

std::string joined(const std::vector<std::string>& lines)
{
    std::string out;
    for (const auto& line : lines)
        out += line;
    return out;
}

} // namespace

bool isMissing(const std::filesystem::path& file)
{
    std::error_code error;
    return std::filesystem::status(file, error).type() == std::filesystem::file_type::not_found;
}

void loadRate(ReceiptForm& form, const ProgramPaths& paths)
{
    auto file = paths.dataFile("mwst.dat");
    if (isMissing(file)) {
        writeTextLines(file, {""});
        return;
    }
    auto rate = joined(readTextLines(file));
    ReceiptForm::Batch batch(form);
    form.setText(FormElement::Text3, "");
    form.setText(FormElement::Text3, rate);
}

void loadPrintSetup(ReceiptForm& form, const ProgramPaths& paths)
{
    auto file = paths.dataFile("druck.dat");
    if (isMissing(file)) {
        savePrintSetup(form, paths);
        return;
    }
    auto lines = readTextLines(file);
    // The three values grow here and reach the form once, also when a short round ends the read.
    ReceiptForm::Batch batch(form);
    std::array<std::string, 3> values = {form.abstand(), form.anzahl(), form.oben()};
    auto store = [&] {
        form.setAbstand(std::move(values[0]));
        form.setAnzahl(std::move(values[1]));
        form.setOben(std::move(values[2]));
    };
    std::size_t next = 0;
    while (next < lines.size()) {
        // Each round reads three lines; running out in the middle is the old "input past end".
        for (auto& value : values) {
            if (next >= lines.size()) {
                store();
                throw RunError::inputPastEnd();
            }
            value += lines[next++];
        }
    }
    store();
}

void savePrintSetup(const ReceiptForm& form, const ProgramPaths& paths)
{
    writeTextLines(paths.dataFile("druck.dat"), {form.abstand(), form.anzahl(), form.oben()});
}

namespace {

// The read of loadNumber for a caller that holds the file's lock already.
void loadNumberLocked(ReceiptForm& form, const std::filesystem::path& file)
{
    if (isMissing(file)) {
        writeTextLines(file, {form.text(FormElement::Text1)});
        return;
    }
    auto lines = readTextLines(file);
    ReceiptForm::Batch batch(form);
    form.setText(FormElement::Text1, "");
    for (const auto& line : lines)
        form.appendText(FormElement::Text1, line);
}

} // namespace

void loadNumber(ReceiptForm& form, const ProgramPaths& paths)
{
    auto file = paths.dataFile("nummer.dat");
    FileLock lock(file);
    loadNumberLocked(form, file);
}

void advanceNumber(ReceiptForm& form, const ProgramPaths& paths, NumberStep step)
{
    auto file = paths.dataFile("nummer.dat");
    // One lock from the read to the write, so that two programs never give out one number twice.
    FileLock lock(file);
    loadNumberLocked(form, file);
    if (step == NumberStep::Keep)
        return;
    try {
        form.setText(FormElement::Text1, formatNumber(parseAmount(form.text(FormElement::Text1)) + 1));
        writeTextLines(file, {form.text(FormElement::Text1)});
    } catch (const RunError&) {
        // A number that is no number is not advanced; the rest of the new receipt still comes.
    }
}

void saveNumber(const std::filesystem::path& file, const std::string& number)
{
    FileLock lock(file);
    writeTextLines(file, {number});
}

bool readMark(const std::filesystem::path& file)
{
    if (isMissing(file))
        return false;
    auto lines = readTextLines(file);
    if (lines.empty())
        throw RunError::inputPastEnd();
    // Numeric input takes the leading blank-delimited field; anything but a whole number fails.
    std::string value = lines.front();
    auto first = value.find_first_not_of(" \t");
    auto last = value.find_last_not_of(" \t");
    value = first == std::string::npos ? "" : value.substr(first, last - first + 1);
    if (value.empty() || value.find_first_not_of("0123456789-+") != std::string::npos)
        throw RunError::typeMismatch();
    return value == "1" || value == "+1" || value == "01";
}

void writeMark(const std::filesystem::path& file, bool on) { writeTextLines(file, {on ? "1" : "0"}); }

} // namespace zw::smallfiles
