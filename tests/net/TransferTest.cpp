#include "net/Transfer.h"

#include <gtest/gtest.h>

#include "tests/app/TempFolder.h"
#include "tests/net/Peer.h"

#include <random>
#include <thread>

namespace zw::net {
namespace {

using test::Peer;

struct Recorder {
    QueuePoster poster;
    std::thread::id pumpThread = std::this_thread::get_id();
    bool eventsOnPumpThread = true;
    std::vector<std::pair<std::int64_t, std::int64_t>> progress;
    TransferEvents events()
    {
        return {[this](std::int64_t now, std::int64_t total) {
                    eventsOnPumpThread &= std::this_thread::get_id() == pumpThread;
                    progress.emplace_back(now, total);
                },
                {}, {}};
    }
    void waitFor(Transfer& t)
    {
        t.wait([this] { poster.pump(std::chrono::milliseconds(100)); });
    }
};

class TransferTest : public ::testing::Test {
protected:
    zw::test::TempFolder m_dir;
};

TEST_F(TransferTest, DownloadArrivesByteExactIntoFileWithProgress)
{
    std::string payload(3 * 1024 * 1024 + 17, '\0');
    std::mt19937 random(7);
    for (auto& c : payload)
        c = static_cast<char>(random());
    zw::test::writeBytes(m_dir / "setup.exe", payload);
    Peer server({"http", m_dir.path().string()});

    Recorder rec;
    Transfer download(rec.poster, rec.events());
    download.start(HttpGet{server.url("http", "/setup.exe"), m_dir / "got.exe", {}});
    rec.waitFor(download);
    EXPECT_TRUE(download.result().ok()) << download.result().description;
    EXPECT_EQ(download.result().responseCode, 200);
    EXPECT_EQ(zw::test::firstDifference(zw::test::readBytes(m_dir / "got.exe"), payload), "");
    ASSERT_FALSE(rec.progress.empty());
    const auto size = static_cast<std::int64_t>(payload.size());
    EXPECT_EQ(rec.progress.back(), std::make_pair(size, size));
    EXPECT_TRUE(rec.eventsOnPumpThread);
}

// An abort is checked where the program aborts: the update fetch's Ctrl-C and the SMTP session's Abort.
TEST_F(TransferTest, ASilentServerTimesOut)
{
    Peer silent({"silent"});
    Recorder silentRec;
    Transfer stuck(silentRec.poster, silentRec.events());
    stuck.start(HttpGet{silent.url("http", "/version.txt"), {}, {std::chrono::milliseconds(2000), std::chrono::seconds(1)}});
    silentRec.waitFor(stuck);
    EXPECT_TRUE(stuck.result().timedOut) << stuck.result().description;
}

// A trickle slower than the limit, a chain of redirects, and answers curl describes in English: each ends with
// its code and a German sentence.
TEST_F(TransferTest, RunawayAndBrokenAnswersEndWithAGermanSentence)
{
    Peer server({"http", m_dir.path().string()});
    const Timeouts quick{std::chrono::milliseconds(2000), std::chrono::seconds(1)};
    struct Row
    {
        std::string url;
        int curlCode;
        std::string description;
    } rows[] = {
        {server.url("http", "/drip"), 28, "Zeitüberschreitung: der Server antwortet nicht."},
        {server.url("http", "/loop/0"), 47, "Der Server leitet zu oft weiter (mehr als 5 Mal)."},
        {server.url("http", "/loop/5"), 0, "Die Übertragung ist abgeschlossen."},
        {server.url("http", "/garbage"), 1, "Die Adresse nennt ein Protokoll, das nicht unterstützt wird."},
        {server.url("gopher", "/"), 1, "Die Adresse nennt ein Protokoll, das nicht unterstützt wird."},
        {"http://[::1", 3, "Die Adresse des Servers ist ungültig."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.url);
        Recorder rec;
        Transfer get(rec.poster, rec.events());
        get.start(HttpGet{row.url, {}, quick});
        rec.waitFor(get);
        EXPECT_EQ(get.result().curlCode, row.curlCode);
        EXPECT_EQ(get.result().description, row.description);
    }
}

} // namespace
} // namespace zw::net
