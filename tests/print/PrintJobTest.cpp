#include "print/PrintJob.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

#include "core/RunError.h"
#include "tests/app/TempFolder.h"
#include "tests/core/RunErrorNumber.h"

namespace zw {
namespace {

constexpr int kRenderDotsPerInch = 100;
constexpr double kMillimetresPerDot = 25.4 / kRenderDotsPerInch;

// A run of rows (or columns) that hold ink, in millimetres from the paper's edge.
struct Band
{
    double from;
    double to;
};

// The page as poppler draws it, in grey.
QImage renderPage(const QString& pdf, int page = 1)
{
    const QString base = pdf + ".page";
    QProcess pdftoppm;
    pdftoppm.start("pdftoppm", {"-r", QString::number(kRenderDotsPerInch), "-gray", "-f", QString::number(page),
                                "-l", QString::number(page), "-singlefile", pdf, base});
    pdftoppm.waitForFinished(30000);
    EXPECT_EQ(pdftoppm.exitCode(), 0);
    EXPECT_TRUE(pdftoppm.readAllStandardError().isEmpty());
    return QImage(base + ".pgm");
}

std::vector<Band> inkBands(const QImage& page, Qt::Orientation along)
{
    std::vector<Band> bands;
    const int length = along == Qt::Vertical ? page.height() : page.width();
    const int across = along == Qt::Vertical ? page.width() : page.height();
    int start = -1;
    for (int i = 0; i <= length; ++i) {
        bool ink = false;
        for (int j = 0; i < length && j < across && !ink; ++j)
            ink = qGray(along == Qt::Vertical ? page.pixel(j, i) : page.pixel(i, j)) < 100;
        if (ink && start < 0)
            start = i;
        if (!ink && start >= 0) {
            bands.push_back({start * kMillimetresPerDot, i * kMillimetresPerDot});
            start = -1;
        }
    }
    return bands;
}

QImage blackReceipt()
{
    QImage picture(570, 429, QImage::Format_RGB32);
    picture.fill(Qt::black);
    return picture;
}

class PrintJobTest : public ::testing::Test
{
protected:
    QString pdfOf(int run) const { return QString::fromStdString((folder / ("run" + std::to_string(run) + ".pdf")).string()); }
    PrintJob job{[this](int run) { return pdfOf(run); }};
    test::TempFolder folder;
};

TEST(PrintFields, MillimetresTakeTheLeadingNumberRoundedHalfToEven)
{
    const std::pair<const char*, int> rows[] = {{"20", 20},  {"12,5", 12}, {"12.5", 12}, {"13.5", 14},
                                                {"", 0},     {"abc", 0},   {"-25", -25}, {" 1 5", 15},
                                                {"7mm", 7}};
    for (auto [text, expected] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(millimetres(text), expected);
    }
}

TEST(PrintFields, RunsFailForAnEmptyOrWrongCount)
{
    for (const char* wrong : {"", "drei", "3x"}) {
        SCOPED_TRACE(wrong);
        EXPECT_EQ(test::errorNumberOf([&] { printRuns(wrong); }), 13);
    }
}

TEST_F(PrintJobTest, PutsTheReceiptAtTheChosenMillimetresInItsNaturalSizeOnA4)
{
    PrintRequest request;
    request.x = "20";
    request.y = "30";
    ASSERT_EQ(job.print(blackReceipt(), request), 1);

    QImage page = renderPage(pdfOf(1));
    ASSERT_FALSE(page.isNull());
    EXPECT_NEAR(page.width() * kMillimetresPerDot, 210, 1);
    EXPECT_NEAR(page.height() * kMillimetresPerDot, 297, 1);
    auto columns = inkBands(page, Qt::Horizontal);
    auto rows = inkBands(page, Qt::Vertical);
    ASSERT_EQ(columns.size(), 1u);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_NEAR(columns[0].from, 20, 1);
    EXPECT_NEAR(rows[0].from, 30, 1);
    // 570 x 429 pixels at 96 dots per inch.
    EXPECT_NEAR(columns[0].to - columns[0].from, 150.8, 1);
    EXPECT_NEAR(rows[0].to - rows[0].from, 113.5, 1);
}

TEST_F(PrintJobTest, TwoToASheetPutTheSecondAtTheFixedOffsetOfThePaper)
{
    struct Row
    {
        const char* name;
        Paper paper;
        double secondTop;
        double width;
        double height;
    };
    // A5 shrinks the picture to 111 by 90 millimetres.
    for (const Row& row : {Row{"A4", Paper::A4, 160, 150.8, 113.5}, Row{"A5", Paper::A5, 110, 111, 90}}) {
        SCOPED_TRACE(row.name);
        PrintRequest request;
        request.paper = row.paper;
        request.x = "10";
        request.y = "5";
        request.width = std::string(paperRow(row.paper).width);
        request.height = std::string(paperRow(row.paper).height);
        request.twoPerSheet = true;
        ASSERT_EQ(job.print(blackReceipt(), request), 1);
        const QImage page = renderPage(pdfOf(1));
        auto columns = inkBands(page, Qt::Horizontal);
        auto rows = inkBands(page, Qt::Vertical);
        ASSERT_EQ(columns.size(), 1u);
        ASSERT_EQ(rows.size(), 2u);
        EXPECT_NEAR(columns[0].from, 10, 1);
        EXPECT_NEAR(columns[0].to - columns[0].from, row.width, 1);
        EXPECT_NEAR(rows[0].from, 5, 1);
        EXPECT_NEAR(rows[1].from, row.secondTop, 1);
        EXPECT_NEAR(rows[1].to - rows[1].from, row.height, 1);
    }
}

TEST_F(PrintJobTest, AFreeSizeWithoutHeightAndANegativeLeftEdge)
{
    PrintRequest request;
    request.paper = Paper::Free;
    request.x = "-25";
    request.y = "12,5"; // the comma ends the number: 12
    request.width = "80";
    job.print(blackReceipt(), request);
    const QImage page = renderPage(pdfOf(1));
    auto columns = inkBands(page, Qt::Horizontal);
    auto rows = inkBands(page, Qt::Vertical);
    ASSERT_EQ(columns.size(), 1u);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_NEAR(columns[0].from, 0, 0.5);
    EXPECT_NEAR(columns[0].to, 150.8 - 25, 1);
    EXPECT_NEAR(rows[0].from, 12, 1);
}

TEST_F(PrintJobTest, EachRunIsAJobOfItsOwnAndAWrongCountPrintsNothing)
{
    PrintRequest request;
    request.runs = "3";
    EXPECT_EQ(job.print(blackReceipt(), request), 3);
    for (int run = 1; run <= 3; ++run)
        EXPECT_TRUE(QFile::exists(pdfOf(run))) << run;
    EXPECT_FALSE(QFile::exists(pdfOf(4)));

    QFile::remove(pdfOf(1));
    request.runs = "";
    EXPECT_THROW(job.print(blackReceipt(), request), RunError);
    request.runs = "0";
    EXPECT_EQ(job.print(blackReceipt(), request), 0);
    request.runs = "-2";
    EXPECT_EQ(job.print(blackReceipt(), request), 0);
    EXPECT_FALSE(QFile::exists(pdfOf(1)));
}

// lpstat -r exits 0 either way; only its words tell.
bool schedulerRunning()
{
    QProcess lpstat;
    lpstat.start("lpstat", {"-r"});
    lpstat.waitForFinished(5000);
    return lpstat.readAllStandardOutput().startsWith("scheduler is running");
}

void writeText(const std::filesystem::path& path, const std::string& text)
{
    std::ofstream(path) << text;
}

// A print server of its own: configuration, spool, logs and socket in a temporary folder, so the machine's
// printing stays as it was. Its one queue hands each job's PDF unchanged to a backend that files it in out/.
class CupsServer
{
public:
    CupsServer()
    {
        // cupsd drops to the lp user and refuses to run its backends otherwise.
        if (QStandardPaths::findExecutable("cupsd", {"/usr/sbin"}).isEmpty() || ::geteuid() != 0)
            return;
        const auto& root = m_folder.path();
        for (const char* sub : {"conf", "spool", "cache", "state", "log", "out", "bin/backend"})
            std::filesystem::create_directories(root / sub);
        // cups-pdf reads its settings from /etc/cups only, so a small backend of our own writes the PDFs.
        for (const char* sub : {"filter", "daemon", "notifier"})
            std::filesystem::create_directory_symlink(std::filesystem::path("/usr/lib/cups") / sub, root / "bin" / sub);
        const auto backend = root / "bin/backend/pdffolder";
        writeText(backend, "#!/bin/sh\n"
                           "[ $# -eq 0 ] && { echo 'file pdffolder \"Unknown\" \"PDF folder\"'; exit 0; }\n"
                           "out=${DEVICE_URI#pdffolder:}\n"
                           "if [ -n \"$6\" ]; then cp \"$6\" \"$out/job.part\"; else cat >\"$out/job.part\"; fi &&\n"
                           "  mv \"$out/job.part\" \"$out/job-$1.pdf\"\n");
        // Owner-only: cupsd then runs the backend as root, which may write into our root-owned folder.
        std::filesystem::permissions(backend, std::filesystem::perms::owner_all);
        const std::string dir = root.string();
        m_socket = dir + "/cups.sock";
        writeText(root / "cups-files.conf", "ServerRoot " + dir + "/conf\nServerBin " + dir + "/bin\nRequestRoot " +
                                                dir + "/spool\nTempDir " + dir + "/spool\nCacheDir " + dir +
                                                "/cache\nStateDir " + dir + "/state\nErrorLog " + dir +
                                                "/log/error_log\nAccessLog " + dir + "/log/access_log\nPageLog " +
                                                dir + "/log/page_log\n");
        writeText(root / "cupsd.conf", "Listen " + m_socket +
                                           "\nBrowsing No\nWebInterface No\nLogLevel warn\n"
                                           "<Location />\n  Order allow,deny\n  Allow all\n</Location>\n"
                                           "<Policy default>\n  <Limit All>\n    Order deny,allow\n  </Limit>\n"
                                           "</Policy>\n");
        qputenv("CUPS_SERVER", QByteArray::fromStdString(m_socket));
        m_daemon.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_daemon.start("/usr/sbin/cupsd", {"-f", "-c", QString::fromStdString(dir + "/cupsd.conf"), "-s",
                                           QString::fromStdString(dir + "/cups-files.conf")});
        if (!m_daemon.waitForStarted(5000))
            return;
        for (int i = 0; i < 100 && !schedulerRunning(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        QProcess lpadmin; // "raw queues are deprecated" goes to its error channel
        lpadmin.start("lpadmin", {"-p", kQueue, "-E", "-v", QString::fromStdString("pdffolder:" + outFolder()), "-m",
                                  "raw"});
        m_ready = lpadmin.waitForFinished(10000) && lpadmin.exitCode() == 0;
    }
    ~CupsServer()
    {
        if (m_daemon.state() != QProcess::NotRunning) {
            m_daemon.terminate();
            m_daemon.waitForFinished(10000);
        }
        qunsetenv("CUPS_SERVER");
    }
    bool ready() const { return m_ready; }
    std::string outFolder() const { return (m_folder / "out").string(); }
    static constexpr const char* kQueue = "ZettelwerkTest";

    // Waits until the queue is empty.
    static void drain()
    {
        for (int i = 0; i < 200; ++i) {
            QProcess lpstat;
            lpstat.start("lpstat", {"-o", kQueue});
            lpstat.waitForFinished(5000);
            if (lpstat.readAllStandardOutput().trimmed().isEmpty())
                return;
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    }

private:
    test::TempFolder m_folder;
    std::string m_socket;
    QProcess m_daemon;
    bool m_ready = false;
};

QStringList pdfsIn(const QString& folder)
{
    QDir dir(folder);
    return dir.entryList({"*.pdf"}, QDir::Files, QDir::Time);
}

TEST(PrintThroughCups, JobsReachThePdfQueueAtTheirPlaceAndAVanishedPrinterIsReported)
{
    CupsServer server;
    if (!server.ready())
        GTEST_SKIP() << "no private print server could be started here (needs root and /usr/sbin/cupsd)";
    const QString out = QString::fromStdString(server.outFolder());
    ASSERT_TRUE(PrintJob::printerNames().end() !=
                std::find(PrintJob::printerNames().begin(), PrintJob::printerNames().end(), CupsServer::kQueue));

    PrintJob job;
    PrintRequest request;
    request.printer = CupsServer::kQueue;
    request.x = "25";
    request.y = "40";
    request.runs = "2";
    EXPECT_EQ(job.print(blackReceipt(), request), 2);
    CupsServer::drain();
    for (int i = 0; i < 50 && pdfsIn(out).size() < 2; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const QStringList pdfs = pdfsIn(out);
    ASSERT_EQ(pdfs.size(), 2);
    QImage page = renderPage(out + "/" + pdfs.first());
    auto columns = inkBands(page, Qt::Horizontal);
    auto rows = inkBands(page, Qt::Vertical);
    ASSERT_EQ(columns.size(), 1u);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_NEAR(columns[0].from, 25, 1);
    EXPECT_NEAR(rows[0].from, 40, 1);

    QProcess::execute("lpadmin", {"-x", CupsServer::kQueue});
    try {
        job.print(blackReceipt(), request);
        ADD_FAILURE() << "no error";
    } catch (const RunError& error) {
        EXPECT_EQ(error.number(), 482);
        EXPECT_NE(error.description().find(CupsServer::kQueue), std::string::npos);
    }
}

} // namespace
} // namespace zw
