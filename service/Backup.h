#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "service/ZipArchive.h"

namespace zw {

class CommonDialog;
class FormHost;
class ProgramPaths;

// The one archive name the backup writes and reads; the file list only shows "*.zip".
inline constexpr const char* kBackupArchiveName = "backup_zw6.zip";

// The chosen folder, a slash and the fixed name; a folder that already ends in a slash (the root) gets a
// second one, and the path is used as it stands.
std::string backupArchivePath(const std::string& folder);

// Packs ProgramPath/daten/ into the fixed archive in `folder` at level 6; returns the number of files stored.
int packData(const ProgramPaths& paths, const std::string& folder, const ZipStatus& status,
             const ZipNotice& notice = {});
// Restores the fixed archive in `folder` over the program folder without asking; returns the files restored.
// What it leaves out on purpose (a link out of the program folder, an archive that would write too much) is told
// through `notice`.
int restoreData(const ProgramPaths& paths, const std::string& folder, const ZipStatus& status,
                const ZipNotice& notice = {});

std::string packedText(int count);   // "<n> Datei(en) gesichert."
std::string restoredText(int count); // "<n> Datei(en) rückgesichert."

// The progress bar's value for a status text: its leading number, cut to 16 bits as the old integer conversion
// did; text without a leading number gives 0.
int progressValueOf(const std::string& statusText);

// The question before an archive is deleted, lines parted by CR LF.
std::string deleteArchiveQuestion(const std::string& folder, const std::string& file);

// Deletes the archive `file` chosen in `folder`. Nothing chosen, or a file that cannot be removed, throws RunError
// 53; the folder itself is never removed.
void deleteBackupArchive(const std::string& folder, const std::string& file);

// Makes <folder>/<name>. A folder that exists already, or one that cannot be made, throws RunError 75.
void createBackupFolder(const std::string& folder, const std::string& name);

// The file the settings export leaves: a shell script that puts `settingsBytes` back into `settingsFile` when it
// is run and says so in a German line.
std::string settingsRestoreScript(const std::filesystem::path& settingsFile, std::string_view settingsBytes);

// The settings export: writes ProgramPath/save_reg.sh, which writes the restore script of the settings as they are
// now to `chosenFile` (left unquoted, as the line has always been), and returns the script's path.
std::filesystem::path writeSettingsExportScript(const ProgramPaths& paths, const std::string& chosenFile,
                                                const std::filesystem::path& settingsFile);
// The message once the script has been started, lines parted by a single CR.
std::string settingsExportMessage(const std::string& chosenFile);

// The menu's settings export: asks for the file, writes the script, hands it to `start` and reports without
// waiting for it. A cancelled dialog keeps its earlier name and so exports there again, as it always has.
void regspeichern(CommonDialog& dialog, const ProgramPaths& paths, const std::filesystem::path& settingsFile,
                  FormHost& host, const std::function<void(const std::filesystem::path& script)>& start);

} // namespace zw
