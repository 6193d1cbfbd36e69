#include "service/WebUpdate.h"

#include <gtest/gtest.h>

#include "app/VendorAddresses.h"
#include "tests/app/TempFolder.h"
#include "tests/net/Peer.h"

namespace zw {
namespace {

namespace fs = std::filesystem;

class DownloadTest : public ::testing::Test
{
protected:
    // Runs one download to its end.
    void fetch(clsDownload& download, const std::string& url)
    {
        download.Download(url, (m_served / "ziel").string() + "/");
        download.wait([this] { m_queue.pump(std::chrono::milliseconds(50)); });
    }

    test::TempFolder m_folder;
    fs::path m_served = m_folder.path();
    net::QueuePoster m_queue;
};

// The installer that arrives whole, and its status lines, are service_cli_check.py's matter.
TEST_F(DownloadTest, EveryFailureHasItsNumberAndLeavesNoFile)
{
    test::Peer server({"http", m_served.string()});
    const struct
    {
        std::string url;
        int number;
        std::string description;
        int mostCounted; // an error page's bytes are never counted as received
    } failures[] = {
        {server.url("http", "/fehlt.exe"), 404, "Datei nicht gefunden", 0},
        {server.url("http", "/zero"), 3, "Downloadgröße 0 Byte", 0},
        {server.url("http", "/chunked"), 3, "Downloadgröße 0 Byte", 0},
        {server.url("http", "/reset"), 1, "Die Verbindung zum Server wurde unterbrochen.", 20000},
        {server.url("https", "/zettelwerk.exe"), 2, "URL nicht interpretierbar", 0},
        {"kein Ort", 2, "URL nicht interpretierbar", 0},
        {"http://127.0.0.1:1/zettelwerk.exe", 1, "Server nicht gefunden", 0},
    };
    for (const auto& failure : failures) {
        SCOPED_TRACE(failure.url);
        fs::remove_all(m_served / "ziel");
        fs::create_directory(m_served / "ziel");
        clsDownload download(m_queue);
        fetch(download, failure.url);
        EXPECT_EQ(download.ErrorNumber, failure.number);
        EXPECT_EQ(download.ErrorDescription, failure.description);
        EXPECT_LE(download.ReceivedBytes, failure.mostCounted);
        EXPECT_EQ(downloadDisplay(download, {}).status,
                  "Status: Fehler " + std::to_string(failure.number) + ", " + failure.description);
        EXPECT_TRUE(fs::is_empty(m_served / "ziel")) << "a short or foreign file was written";
    }
}

TEST_F(DownloadTest, TheDescriptionStopsAtItsLimitWhileItArrives)
{
    fs::create_directories(m_served / "update" / "quittung");
    test::writeBytes(m_served / "update" / "quittung" / "webup.inf", std::string(3 << 20, 'x'));
    test::Peer server({"http", m_served.string()});
    VendorAddresses vendor;
    vendor.updateServer = server.url("http", "/");
    net::Transfer description(m_queue, {});
    description.start(updateDescriptionRequest(vendor));
    description.wait([this] { m_queue.pump(std::chrono::milliseconds(50)); });
    EXPECT_TRUE(description.result().ok()) << description.result().description;
    EXPECT_EQ(description.body().size(), 524288u);
}

TEST(UpdateCheckTest, ASecondCheckAppendsToTheCaptionsAndSoComparesTheDoubledText)
{
    test::TempFolder folder;
    const fs::path copy = folder / "webup.inf";
    UpdateCheck check;
    const std::string answer = "abcdFüller\r\nZettelwerk 6\r\n6.0.0\r\n4 MB\r\nhttp://h/zettelwerk.exe\r\n";
    EXPECT_EQ(check.take(answer, copy, "6.0.0"), UpdateOutcome::Same);
    EXPECT_EQ(check.captions[0], std::string("\x08\0\0\0", 4) + "Füller"); // the first four characters are lost
    EXPECT_FALSE(fs::exists(copy));
    EXPECT_EQ(check.take(answer, copy, "6.0.0"), UpdateOutcome::Newer);
    EXPECT_EQ(check.captions[2], "6.0.06.0.0");
}

} // namespace
} // namespace zw
