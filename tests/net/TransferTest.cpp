#include "net/Transfer.h"

#include <gtest/gtest.h>

#include "tests/net/Peer.h"

#include <csignal>
#include <fstream>
#include <random>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace zw::net {
namespace {

namespace fs = std::filesystem;
using test::Peer;

struct Recorder {
    QueuePoster poster;
    std::thread::id pumpThread = std::this_thread::get_id();
    bool eventsOnPumpThread = true;
    std::vector<std::pair<std::int64_t, std::int64_t>> progress;
    std::string transcript;
    TransferEvents events()
    {
        return {[this](std::int64_t now, std::int64_t total) {
                    eventsOnPumpThread &= std::this_thread::get_id() == pumpThread;
                    progress.emplace_back(now, total);
                },
                [this](const std::string& line) { transcript += line + "\n"; }, {}};
    }
    void waitFor(Transfer& t)
    {
        t.wait([this] { poster.pump(std::chrono::milliseconds(100)); });
    }
};

class TransferTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_dir = fs::temp_directory_path() / ("zw-net-" + std::to_string(getpid()));
        fs::create_directories(m_dir);
    }
    void TearDown() override { fs::remove_all(m_dir); }
    fs::path m_dir;
};

TEST_F(TransferTest, DownloadArrivesByteExactIntoFileWithProgressAnd404IsReported)
{
    std::string payload(3 * 1024 * 1024 + 17, '\0');
    std::mt19937 random(7);
    for (auto& c : payload)
        c = static_cast<char>(random());
    std::ofstream(m_dir / "setup.exe", std::ios::binary) << payload;
    Peer server({"http", m_dir.string()});

    Recorder rec;
    Transfer download(rec.poster, rec.events());
    download.start(HttpGet{server.url("http", "/setup.exe"), m_dir / "got.exe", {}});
    rec.waitFor(download);
    EXPECT_TRUE(download.result().ok()) << download.result().description;
    EXPECT_EQ(download.result().responseCode, 200);
    std::ifstream in(m_dir / "got.exe", std::ios::binary);
    EXPECT_TRUE(std::string(std::istreambuf_iterator<char>(in), {}) == payload);
    ASSERT_FALSE(rec.progress.empty());
    const auto size = static_cast<std::int64_t>(payload.size());
    EXPECT_EQ(rec.progress.back(), std::make_pair(size, size));
    EXPECT_TRUE(rec.eventsOnPumpThread);

    Recorder missingRec;
    Transfer missing(missingRec.poster, missingRec.events());
    missing.start(HttpGet{server.url("http", "/fehlt.txt"), m_dir / "fehlt.txt", {}});
    missingRec.waitFor(missing);
    EXPECT_EQ(missing.result().curlCode, 0);
    EXPECT_EQ(missing.result().responseCode, 404);
    EXPECT_FALSE(missing.result().ok());
    EXPECT_FALSE(fs::exists(m_dir / "fehlt.txt")); // no half or error page left as the file
}

TEST_F(TransferTest, AbortEndsASlowDownloadAndASilentServerTimesOut)
{
    Peer server({"http", m_dir.string()});
    Recorder rec;
    Transfer slow(rec.poster, rec.events());
    slow.start(HttpGet{server.url("http", "/slow"), m_dir / "slow.bin", {}});
    while (rec.progress.empty() || rec.progress.back().first == 0)
        rec.poster.pump(std::chrono::milliseconds(100));
    slow.abort();
    rec.waitFor(slow);
    EXPECT_TRUE(slow.result().aborted);
    EXPECT_FALSE(fs::exists(m_dir / "slow.bin"));

    Peer silent({"silent"});
    Recorder silentRec;
    Transfer stuck(silentRec.poster, silentRec.events());
    stuck.start(HttpGet{silent.url("http", "/version.txt"), {}, {std::chrono::milliseconds(2000), std::chrono::seconds(1)}});
    silentRec.waitFor(stuck);
    EXPECT_TRUE(stuck.result().timedOut) << stuck.result().description;
}

TEST_F(TransferTest, SmtpSendWithLoginKeepsCredentialsOutOfTheTranscript)
{
    const fs::path received = m_dir / "mail.eml";
    Peer server({"smtp", received.string()});
    const std::string message = "From: kasse@example.org\r\nTo: chef@example.org\r\nCc: buero@example.org\r\n"
                                "Subject: Quittung\r\n\r\nAnbei die Quittung.\r\n";
    Recorder rec;
    Transfer send(rec.poster, rec.events());
    SmtpSend mail;
    mail.url = server.url("smtp");
    mail.user = "kasse";
    mail.password = "Geheim-42";
    mail.from = "<kasse@example.org>";
    mail.recipients = {"<chef@example.org>", "<buero@example.org>"};
    mail.message = message;
    send.start(mail);
    rec.waitFor(send);
    EXPECT_TRUE(send.result().ok()) << send.result().description << "\n" << rec.transcript;
    std::ifstream in(received, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), message);
    EXPECT_NE(rec.transcript.find("AUTH"), std::string::npos);
    for (const char* secret : {"Geheim-42", "R2VoZWltLTQy", "a2Fzc2U", "AGthc3NlAEdlaGVpbS00Mg"})
        EXPECT_EQ(rec.transcript.find(secret), std::string::npos) << secret << "\n" << rec.transcript;
}

} // namespace
} // namespace zw::net
