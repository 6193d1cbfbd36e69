#include "service/Backup.h"

#include <cctype>
#include <cstdint>

#include "app/AtomicFile.h"
#include "app/CommonDialog.h"
#include "core/FormHost.h"
#include "app/ProgramPaths.h"
#include "core/RunError.h"

namespace fs = std::filesystem;

namespace zw {

std::string backupArchivePath(const std::string& folder)
{
    return folder + "/" + kBackupArchiveName;
}

int packData(const ProgramPaths& paths, const std::string& folder, const ZipStatus& status, const ZipNotice&)
{
    ZipArchive zip;
    zip.SetLanguage(1);
    zip.SetCompressionRate(6);
    return zip.ZipFolder(backupArchivePath(folder), paths.dataFolder() / "", "", 1, status);
}

int restoreData(const ProgramPaths& paths, const std::string& folder, const ZipStatus& status,
                const ZipNotice& notice)
{
    ZipArchive zip;
    zip.SetLanguage(1);
    return zip.UnZip(backupArchivePath(folder), paths.home(), "", 2, status, notice);
}

std::string packedText(int count) { return std::to_string(count) + " Datei(en) gesichert."; }
std::string restoredText(int count) { return std::to_string(count) + " Datei(en) rückgesichert."; }

int progressValueOf(const std::string& statusText)
{
    std::size_t i = 0;
    while (i < statusText.size() && statusText[i] == ' ')
        ++i;
    std::uint32_t value = 0;
    for (; i < statusText.size() && std::isdigit(static_cast<unsigned char>(statusText[i])); ++i)
        value = value * 10 + static_cast<std::uint32_t>(statusText[i] - '0');
    return static_cast<std::int16_t>(value & 0xFFFF);
}

std::string deleteArchiveQuestion(const std::string& folder, const std::string& file)
{
    return "Sind Sie sicher, dass Sie die Datei:\r\n\r\n" + folder + "/" + file +
           "\r\n\r\nvon Ihrem Datenträger löschen wollen?";
}

void deleteBackupArchive(const std::string& folder, const std::string& file)
{
    std::error_code error;
    if (file.empty() || !fs::is_regular_file(fs::path(folder) / file, error) || !fs::remove(fs::path(folder) / file, error))
        throw RunError::fileNotFound();
}

void createBackupFolder(const std::string& folder, const std::string& name)
{
    std::error_code error;
    if (name.empty() || !fs::create_directory(fs::path(folder) / name, error))
        throw RunError::pathFileAccess();
}

fs::path writeSettingsExportScript(const ProgramPaths& paths, const std::string& chosenFile,
                                   const fs::path& settingsFile)
{
    const fs::path script = paths.home() / "save_reg.sh";
    writeFileAtomically(script, "cp -f \"" + settingsFile.string() + "\" " + chosenFile + "\n", 0755);
    return script;
}

std::string settingsExportMessage(const std::string& chosenFile)
{
    return "Die Sicherung des Registrierungseintrags wurde unter:\r\r" + chosenFile +
           "\r\rabgelegt.\r\rUm die Sicherung einzuspielen, müssen Sie die angelegte\rDatei starten.";
}

void regspeichern(CommonDialog& dialog, const ProgramPaths& paths, const fs::path& settingsFile, FormHost& host,
                  const std::function<void(const fs::path& script)>& start)
{
    dialog.DialogTitle = "Sichern der Registrierung";
    dialog.Filter = "Registrierungseintrag (*.REG)|*.REG";
    dialog.ShowSave();
    if (dialog.FileName.empty())
        return;
    start(writeSettingsExportScript(paths, dialog.FileName, settingsFile));
    host.showMessage(settingsExportMessage(dialog.FileName), MessageStyle::Information, "Sicherung angelegt");
}

} // namespace zw
