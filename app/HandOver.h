#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zw {

class FaultReporter;

// A receipt file given to the program from outside: on its command line, or by a second start that hands it to
// the program already running.

// The receipt file of the command line (the arguments after the program's own name), made absolute against the
// working folder so that a running program finds it too; empty without one.
std::filesystem::path receiptFileArgument(const std::vector<std::string>& arguments,
                                          const std::filesystem::path& workingFolder);

// The local socket of the running program: one per user and program folder, in $XDG_RUNTIME_DIR when there is
// one, else a bare name the toolkit places in the temporary folder.
std::string handOverServerName(const std::filesystem::path& home, std::string_view runtimeFolder, unsigned userId);

// One hand-over on the socket: the path, ended by a NUL (which no path holds). The running program answers with
// kHandOverTaken once it has the path, and opens the file after that.
std::string handOverMessage(const std::filesystem::path& file);
// The path once its message arrived whole; the buffer keeps what follows.
std::optional<std::filesystem::path> takeHandOverMessage(std::string& buffer);
inline constexpr std::string_view kHandOverTaken = "1";

// A .ZWI file is the older format; anything else reads as .ZW5, as the file dialog's choice does.
bool isOldReceiptFile(const std::filesystem::path& file);

// Opens the file as "Quittung öffnen..." does: a fault (a missing or short file) goes to the reporter under the
// main window's name, and the program runs on.
void openReceiptFromOutside(const std::filesystem::path& file,
                            const std::function<void(const std::filesystem::path&)>& openCurrent,
                            const std::function<void(const std::filesystem::path&)>& openOld, FaultReporter& reporter);

} // namespace zw
