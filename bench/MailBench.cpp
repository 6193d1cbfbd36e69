#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "mail/sevSMTP.h"
#include "tests/net/Peer.h"

namespace {

namespace fs = std::filesystem;

// A local aiosmtpd without login for the run; stopped at the end.
int smtpPort()
{
    static zw::test::Peer peer({"smtp-open", "/dev/null"});
    return peer.port();
}

// From Send to the server's acceptance of a message carrying a receipt picture (570 x 429, 24 bits: 734 KB).
void SendReceiptPicture(benchmark::State& state)
{
    const fs::path picture = fs::temp_directory_path() / ("zw-bench-mail-" + std::to_string(::getpid()) + ".bmp");
    std::ofstream(picture, std::ios::binary) << std::string(54 + 572 * 3 * 429, '\xF0');
    zw::net::QueuePoster queue;
    zw::sevSMTP smtp(queue, [&queue](const zw::net::Transfer& transfer) {
        while (!transfer.isFinished())
            queue.pump(std::chrono::milliseconds(5));
    });
    smtp.Server = "127.0.0.1:" + std::to_string(smtpPort());
    smtp.SenderAddress = "kasse@example.org";
    smtp.Recipient = "chef@example.org";
    smtp.Subject = "Quittung";
    smtp.PlainBody = "Anbei die Quittung.";
    smtp.ZipRate = static_cast<int>(state.range(0));
    smtp.AddAttachment(picture);
    for (auto _ : state) {
        if (smtp.Send() != 1)
            state.SkipWithError(smtp.LastError().c_str());
    }
    state.SetLabel(state.range(0) > 0 ? "zipped" : "as it is");
    fs::remove(picture);
}
BENCHMARK(SendReceiptPicture)->Arg(0)->Arg(10)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
