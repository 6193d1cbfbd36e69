#pragma once

#include <filesystem>

namespace zw {

class ReceiptForm;
class ProgramPaths;

// The one-value files of the data folder: mwst.dat, druck.dat, nummer.dat and the two mark files.
// Readers follow the old line-input rules on purpose (joined and appended lines); failures throw RunError.
namespace smallfiles {

// Only a path that does not exist is missing (a first start); a FIFO, a device, a folder or a file that cannot be
// read in its place is read and so fails with RunError 75, and stays as it is.
bool isMissing(const std::filesystem::path& file);

// mwst.dat as the main window reads it: all lines joined into Text3; a missing file is created from the
// joined text, that is, with one empty line, and Text3 keeps what it had.
void loadRate(ReceiptForm& form, const ProgramPaths& paths);

// druck.dat: three lines appended in turn to abstand, anzahl, oben while the file has more; a missing file is
// written from the fields. A file of fewer lines than a round needs ends in RunError 62 after the appends.
void loadPrintSetup(ReceiptForm& form, const ProgramPaths& paths);
void savePrintSetup(const ReceiptForm& form, const ProgramPaths& paths);

// nummer.dat: Text1 cleared, then every line appended; a missing file is written from Text1. Each routine holds
// the file's lock (app/FileLock) while it works.
void loadNumber(ReceiptForm& form, const ProgramPaths& paths);
void saveNumber(const std::filesystem::path& file, const std::string& number);

// NewReceipt's cycle: loadNumber, then with Advance the number one higher into Text1 and the file, all under one
// lock. A number that is no number, or a file that cannot be written, leaves the number as it is, silently.
enum class NumberStep
{
    Keep,
    Advance
};
void advanceNumber(ReceiptForm& form, const ProgramPaths& paths, NumberStep step);

// siglogoaa.dat / sigunteraa.dat: true only if the file exists and its value is 1. A value that is no number
// throws RunError 13, as the old numeric input did.
bool readMark(const std::filesystem::path& file);
void writeMark(const std::filesystem::path& file, bool on);

} // namespace smallfiles
} // namespace zw
