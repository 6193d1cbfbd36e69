#include <chrono>
#include <ostream>

#include "app/VendorAddresses.h"
#include "app/Version.h"
#include "core/RunError.h"
#include "service/Backup.h"
#include "service/WebUpdate.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Environment.h"

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
    const int count = pack ? packData(paths, folder, {}) : restoreData(paths, folder, {});
    context.out << (pack ? packedText(count) : restoredText(count)) << "\n";
    return count > 0 ? 0 : 1;
}

} // namespace

// `backup FOLDER`: ProgramPath/daten/ into FOLDER/backup_zw6.zip, as the backup window packs it.
int runBackup(CliContext& context) { return backupJob(context, true); }

// `restore FOLDER`: FOLDER/backup_zw6.zip back over the program folder.
int runRestore(CliContext& context) { return backupJob(context, false); }

// `update check`: the update window's check against the vendor's server; the status text and the server's
// version.
int runUpdate(CliContext& context)
{
    if (context.arguments.size() != 1 || context.arguments[0] != "check") {
        context.err << "Aufruf: zettelwerk-cli update check\n";
        return 2;
    }
    const auto paths = programPaths(context);
    net::QueuePoster queue;
    net::Transfer transfer(queue, {});
    transfer.start(net::HttpGet{updateDescriptionUrl(vendorAddresses(paths)), {}, {}, 0});
    transfer.wait([&queue] { queue.pump(std::chrono::milliseconds(50)); });
    try {
        UpdateCheck check;
        const auto outcome = check.take(transfer.body(), paths.home() / "webup.inf", versionText());
        context.out << updateStatusText(outcome) << "\n" << check.captions[2] << "\n";
        return 0;
    } catch (const RunError& error) {
        context.err << "Laufzeitfehler " << error.number() << ": " << error.description() << "\n";
        if (!transfer.result().ok())
            context.err << transfer.result().description << "\n";
        return 1;
    }
}

} // namespace zw::cli
