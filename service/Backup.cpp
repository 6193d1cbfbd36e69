#include "service/Backup.h"

#include <cctype>
#include <cstdint>
#include <string_view>

#include "app/AtomicFile.h"
#include "app/CommonDialog.h"
#include "core/FormHost.h"
#include "app/ProgramPaths.h"
#include "app/TextFile.h"
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

namespace {

// A word for the shell that stands for `text` exactly.
std::string shellQuoted(std::string_view text)
{
    std::string out = "'";
    for (char c : text)
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

// Base64 in lines of 76 characters, for base64 -d.
std::string base64Lines(std::string_view bytes)
{
    static constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    std::size_t column = 0;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const auto byte = [&](std::size_t k) { return k < bytes.size() ? static_cast<unsigned char>(bytes[k]) : 0u; };
        const unsigned value = byte(i) << 16 | byte(i + 1) << 8 | byte(i + 2);
        out += kDigits[value >> 18 & 63];
        out += kDigits[value >> 12 & 63];
        out += i + 1 < bytes.size() ? kDigits[value >> 6 & 63] : '=';
        out += i + 2 < bytes.size() ? kDigits[value & 63] : '=';
        if ((column += 4) == 76) {
            out += '\n';
            column = 0;
        }
    }
    return column > 0 ? out + '\n' : out;
}

} // namespace

std::string settingsRestoreScript(const fs::path& settingsFile, std::string_view settingsBytes)
{
    const std::string file = shellQuoted(settingsFile.string());
    // The settings travel as base64, so no byte of them can end the script's text early.
    return "#!/bin/sh\n"
           "# Zettelwerk: spielt die gesicherten Einstellungen wieder ein.\n"
           "set -e\n"
           "mkdir -p \"$(dirname " + file + ")\"\n"
           "base64 -d > " + file + ".zwtmp <<'ZETTELWERK_EINSTELLUNGEN'\n" +
           base64Lines(settingsBytes) +
           "ZETTELWERK_EINSTELLUNGEN\n"
           "chmod 600 " + file + ".zwtmp\n"
           "mv -f " + file + ".zwtmp " + file + "\n"
           "echo " + shellQuoted("Die Einstellungen von Zettelwerk wurden wieder eingespielt: " + settingsFile.string()) +
           "\n";
}

fs::path writeSettingsExportScript(const ProgramPaths& paths, const std::string& chosenFile,
                                   const fs::path& settingsFile)
{
    std::string settings;
    std::error_code missing;
    if (fs::exists(settingsFile, missing))
        settings = readFileBytes(settingsFile);
    const fs::path script = paths.home() / "save_reg.sh";
    // The restore script is written whole beside its name and then renamed, so a file of that name is complete.
    // Both scripts hold the settings and so the mail password: they are their owner's alone.
    writeFileAtomically(script,
                        "#!/bin/sh\numask 077\ncat > " + chosenFile + ".zwtmp <<'ZETTELWERK_SICHERUNG'\n" +
                            settingsRestoreScript(settingsFile, settings) +
                            "ZETTELWERK_SICHERUNG\nchmod 700 " + chosenFile + ".zwtmp && mv -f " + chosenFile +
                            ".zwtmp " + chosenFile + "\n",
                        0700);
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
    dialog.Filter = "Registrierungseintrag zum Starten (*.sh)|*.sh";
    dialog.ShowSave();
    if (dialog.FileName.empty())
        return;
    start(writeSettingsExportScript(paths, dialog.FileName, settingsFile));
    host.showMessage(settingsExportMessage(dialog.FileName), MessageStyle::Information, "Sicherung angelegt");
}

} // namespace zw
