#include <chrono>
#include <filesystem>
#include <ostream>

#include "app/VendorAddresses.h"
#include "app/Version.h"
#include "core/RunError.h"
#include "service/Backup.h"
#include "service/WebUpdate.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Environment.h"
#include "tools/Interrupt.h"

namespace zw::cli {

namespace {

int backupJob(CliContext& context, bool pack)
{
    if (context.arguments.size() != 1) {
        context.err << "Aufruf: zettelwerk-cli " << (pack ? "backup" : "restore") << " ORDNER\n";
        return 2;
    }
    const auto paths = programPaths(context);
    const std::string& folder = context.arguments[0];
    const auto notice = [&context](const std::string& message) { context.err << message << "\n"; };
    const int count = pack ? packData(paths, folder, {}, notice) : restoreData(paths, folder, {}, notice);
    context.out << (pack ? packedText(count) : restoredText(count)) << "\n";
    return count > 0 ? 0 : 1;
}

} // namespace

// `backup FOLDER`: ProgramPath/daten/ into FOLDER/backup_zw6.zip, as the backup window packs it.
int runBackup(CliContext& context) { return backupJob(context, true); }

// `restore FOLDER`: FOLDER/backup_zw6.zip back over the program folder.
int runRestore(CliContext& context) { return backupJob(context, false); }

namespace {

void reportFault(CliContext& context, const RunError& error)
{
    context.err << "Laufzeitfehler " << error.number() << ": " << error.description() << "\n";
}

// The check of the update window; false when it was interrupted or failed (the reason is on err).
bool checkForUpdate(CliContext& context, const ProgramPaths& paths, const InterruptWatch& interrupt,
                    UpdateCheck& check, UpdateOutcome& outcome)
{
    net::QueuePoster queue;
    net::Transfer transfer(queue, {});
    transfer.start(updateDescriptionRequest(vendorAddresses(paths)));
    transfer.wait([&] {
        if (interrupt.requested())
            transfer.abort();
        queue.pump(std::chrono::milliseconds(50));
    });
    if (transfer.result().aborted) {
        context.err << transfer.result().description << "\n";
        return false;
    }
    try {
        outcome = check.take(transfer.body(), paths.home() / "webup.inf", versionText());
        return true;
    } catch (const RunError& error) {
        reportFault(context, error);
        if (!transfer.result().ok())
            context.err << transfer.result().description << "\n";
        return false;
    }
}

// The window's fetch: the status lines as the window shows them, each once, and the rename at the end.
int fetchUpdate(CliContext& context, const UpdateCheck& check, std::string folder, const InterruptWatch& interrupt)
{
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error)) {
        context.err << "Bitte ein gültiges, vorhandenes Verzeichnis angeben.\n";
        return 1;
    }
    if (folder.back() != '/')
        folder += '/';
    context.out << "Status: Download wird gestartet. Bitte warten ...\n";
    net::QueuePoster queue;
    clsDownload download(queue);
    std::string shown;
    download.Update = [&] {
        const std::string status = downloadDisplay(download, {}).status;
        if (status != shown)
            context.out << status << "\n" << std::flush;
        shown = status;
    };
    download.Download(check.captions[4], folder);
    bool interrupted = false;
    download.wait([&] {
        if (interrupt.requested() && !interrupted) {
            interrupted = true;
            download.StopDownload();
        }
        queue.pump(std::chrono::milliseconds(50));
    });
    if (interrupted) {
        context.err << "Die Übertragung wurde abgebrochen.\n";
        return InterruptWatch::kExitStatus;
    }
    const std::string status = downloadEndStatus(download);
    if (status != shown)
        context.out << status << "\n";
    if (download.ErrorNumber != 0)
        return 1;
    try {
        context.out << renameInstaller(folder).string() << "\n";
        return 0;
    } catch (const RunError& fault) {
        reportFault(context, fault);
        return 1;
    }
}

} // namespace

// `update check`: the update window's check against the vendor's server; the status text and the server's
// version. `update fetch FOLDER`: the same check and, when it finds a newer version, the window's download of the
// installer it names into FOLDER, renamed as the window renames it. Ctrl-C ends either as the window's close does.
int runUpdate(CliContext& context)
{
    const bool fetch = context.arguments.size() == 2 && context.arguments[0] == "fetch";
    if (!fetch && (context.arguments.size() != 1 || context.arguments[0] != "check")) {
        context.err << "Aufruf: zettelwerk-cli update check | update fetch ORDNER\n";
        return 2;
    }
    const auto paths = programPaths(context);
    InterruptWatch interrupt;
    UpdateCheck check;
    UpdateOutcome outcome = UpdateOutcome::Older;
    if (!checkForUpdate(context, paths, interrupt, check, outcome))
        return interrupt.requested() ? InterruptWatch::kExitStatus : 1;
    context.out << updateStatusText(outcome) << "\n";
    if (!fetch) {
        context.out << check.captions[2] << "\n";
        return 0;
    }
    // As in the window, only a newer version can be fetched.
    return outcome == UpdateOutcome::Newer ? fetchUpdate(context, check, context.arguments[1], interrupt) : 0;
}

} // namespace zw::cli
