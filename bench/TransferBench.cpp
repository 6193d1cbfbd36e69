#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <unistd.h>

#include "net/Transfer.h"
#include "tests/net/Peer.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// A local HTTP server whose /slow answer trickles for minutes; stopped at the end.
const zw::test::Peer& httpPeer()
{
    static zw::test::Peer peer({"http", fs::temp_directory_path().string()});
    return peer;
}

// From abort() on a running download to the finished event on the caller's thread: the window's "Abbrechen".
void AbortRunningDownload(benchmark::State& state)
{
    const fs::path target = fs::temp_directory_path() / ("zw-bench-slow-" + std::to_string(::getpid()));
    for (auto _ : state) {
        state.PauseTiming();
        zw::net::QueuePoster queue;
        bool receiving = false;
        zw::net::Transfer transfer(queue,
                                   {[&](std::int64_t now, std::int64_t) { receiving = now > 0; }, {}, {}});
        transfer.start(zw::net::HttpGet{httpPeer().url("http", "/slow"), target, {}});
        while (!receiving)
            queue.pump(std::chrono::milliseconds(5));
        state.ResumeTiming();
        transfer.abort();
        while (!transfer.isFinished())
            queue.pump(std::chrono::milliseconds(5));
        if (!transfer.result().aborted || fs::exists(target))
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
        while (!transfer.isFinished())
            queue.pump(std::chrono::milliseconds(5));
        if (!transfer.result().timedOut)
            state.SkipWithError(transfer.result().description.c_str());
    }
}
BENCHMARK(SilentServerTimesOut)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

} // namespace
