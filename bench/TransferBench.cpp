#include <benchmark/benchmark.h>

#include <chrono>

#include "net/Transfer.h"
#include "tests/app/TempFolder.h"
#include "tests/net/Peer.h"

namespace {

// A local HTTP server over an empty folder of its own; its /slow answer trickles for minutes. Stopped at the
// end.
struct SlowServer
{
    zw::test::TempFolder folder;
    zw::test::Peer peer{{"http", folder.path().string()}};
};

void pumpUntilFinished(zw::net::Transfer& transfer, zw::net::QueuePoster& queue)
{
    transfer.wait([&queue] { queue.pump(std::chrono::milliseconds(5)); });
}

// From abort() on a running download to the finished event on the caller's thread: the window's "Abbrechen".
void AbortRunningDownload(benchmark::State& state)
{
    static SlowServer server;
    for (auto _ : state) {
        state.PauseTiming();
        zw::net::QueuePoster queue;
        bool receiving = false;
        zw::net::Transfer transfer(queue,
                                   {[&](std::int64_t now, std::int64_t) { receiving = now > 0; }, {}, {}});
        transfer.start(zw::net::HttpGet{server.peer.url("http", "/slow"), server.folder / "slow.bin", {}});
        while (!receiving)
            queue.pump(std::chrono::milliseconds(5));
        state.ResumeTiming();
        transfer.abort();
        pumpUntilFinished(transfer, queue);
        if (!transfer.result().aborted || std::filesystem::exists(server.folder / "slow.bin"))
            state.SkipWithError("the aborted download did not end as aborted, or left a file");
    }
}
BENCHMARK(AbortRunningDownload)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20);

// From start to the time-out of a server that accepts and never answers, with a one-second silence limit.
void SilentServerTimesOut(benchmark::State& state)
{
    static zw::test::Peer silent({"silent"});
    for (auto _ : state) {
        zw::net::QueuePoster queue;
        zw::net::Transfer transfer(queue, {});
        transfer.start(zw::net::HttpGet{silent.url("http", "/version.txt"),
                                        {},
                                        {std::chrono::milliseconds(2000), std::chrono::seconds(1)}});
        pumpUntilFinished(transfer, queue);
        if (!transfer.result().timedOut)
            state.SkipWithError(transfer.result().description.c_str());
    }
}
BENCHMARK(SilentServerTimesOut)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

} // namespace
