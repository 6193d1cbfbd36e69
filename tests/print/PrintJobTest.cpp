#include "print/PrintJob.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "print/PrintDialogFields.h"
#include "tests/app/TempFolder.h"
#include "tests/core/FakeHost.h"
#include "tests/export/PopplerPage.h"

// GCC 12 warns about members left to their defaults in designated initializers, which is what they are for
// here.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

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

// The first page as poppler draws it.
QImage renderPage(const QString& pdf)
{
    const Bitmap page = test::renderFirstPage(pdf.toStdString(), kRenderDotsPerInch);
    return QImage(page.pixels.data(), page.width, page.height, page.width * 3, QImage::Format_RGB888).copy();
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

// The ink on the page, in millimetres from the paper's edges. A receipt in its natural size, 570 x 429 pixels
// at 96 dots per inch, is 150.8 x 113.5 millimetres; A5 shrinks it to 111 x 90.
TEST_F(PrintJobTest, PutsTheReceiptsAtTheChosenMillimetresInTheirSize)
{
    struct Row
    {
        const char* name;
        PrintRequest request;
        QSizeF paper;
        Band column;
        std::vector<Band> rows;
    };
    const Row rows[] = {
        {"A4", {.x = "20", .y = "30"}, {210, 297}, {20, 170.8}, {{30, 143.5}}},
        {"two on A4", {.x = "10", .y = "5", .twoPerSheet = true}, {210, 297}, {10, 160.8},
         {{5, 118.5}, {160, 273.5}}},
        {"two on A5", {.paper = Paper::A5, .x = "10", .y = "5", .width = "111", .height = "90",
                       .twoPerSheet = true}, {148, 210}, {10, 121}, {{5, 95}, {110, 200}}},
        // The comma ends the number: 12. The part left of the paper is cut off.
        {"free size without height", {.paper = Paper::Free, .x = "-25", .y = "12,5", .width = "80"},
         {210, 297}, {0, 125.8}, {{12, 125.5}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ASSERT_EQ(job.print(blackReceipt(), row.request), 1);
        const QImage page = renderPage(pdfOf(1));
        EXPECT_NEAR(page.width() * kMillimetresPerDot, row.paper.width(), 1);
        EXPECT_NEAR(page.height() * kMillimetresPerDot, row.paper.height(), 1);
        const auto columns = inkBands(page, Qt::Horizontal);
        ASSERT_EQ(columns.size(), 1u);
        EXPECT_NEAR(columns[0].from, row.column.from, 0.5);
        EXPECT_NEAR(columns[0].to, row.column.to, 1);
        const auto bands = inkBands(page, Qt::Vertical);
        ASSERT_EQ(bands.size(), row.rows.size());
        for (std::size_t i = 0; i < bands.size(); ++i) {
            EXPECT_NEAR(bands[i].from, row.rows[i].from, 1) << i;
            EXPECT_NEAR(bands[i].to, row.rows[i].to, 1) << i;
        }
    }
}

// One job a run is judged through the print window, which prints two.
TEST_F(PrintJobTest, AZeroOrNegativeCountPrintsNothing)
{
    PrintRequest request{.runs = "0"};
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
        test::writeBytes(backend, "#!/bin/sh\n"
                           "[ $# -eq 0 ] && { echo 'file pdffolder \"Unknown\" \"PDF folder\"'; exit 0; }\n"
                           "out=${DEVICE_URI#pdffolder:}\n"
                           "if [ -n \"$6\" ]; then cp \"$6\" \"$out/job.part\"; else cat >\"$out/job.part\"; fi &&\n"
                           "  mv \"$out/job.part\" \"$out/job-$1.pdf\"\n");
        // Owner-only: cupsd then runs the backend as root, which may write into our root-owned folder.
        std::filesystem::permissions(backend, std::filesystem::perms::owner_all);
        const std::string dir = root.string();
        m_socket = dir + "/cups.sock";
        test::writeBytes(root / "cups-files.conf", "ServerRoot " + dir + "/conf\nServerBin " + dir + "/bin\nRequestRoot " +
                                                dir + "/spool\nTempDir " + dir + "/spool\nCacheDir " + dir +
                                                "/cache\nStateDir " + dir + "/state\nErrorLog " + dir +
                                                "/log/error_log\nAccessLog " + dir + "/log/access_log\nPageLog " +
                                                dir + "/log/page_log\n");
        test::writeBytes(root / "cupsd.conf", "Listen " + m_socket +
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


private:
    test::TempFolder m_folder;
    std::string m_socket;
    QProcess m_daemon;
    bool m_ready = false;
};

TEST(PrintThroughCups, JobsReachThePdfQueueAtTheirPlaceAndAVanishedPrinterIsReported)
{
    CupsServer server;
    if (!server.ready())
        GTEST_SKIP() << "no private print server could be started here (needs root and /usr/sbin/cupsd)";
    const QString out = QString::fromStdString(server.outFolder());
    const auto pdfsIn = [&out] { return QDir(out).entryList({"*.pdf"}, QDir::Files, QDir::Time); };
    const std::vector<QString> printers = PrintJob::printerNames();
    ASSERT_NE(std::find(printers.begin(), printers.end(), CupsServer::kQueue), printers.end());
    // The server names no default printer: the dialog opens at the one it lists, not at an empty choice.
    test::MemorySettings settings;
    EXPECT_EQ(openPrintDialog(ReceiptForm(), settings, QString()).printer, QString(CupsServer::kQueue));
    EXPECT_EQ(openPrintDialog(ReceiptForm(), settings, "Entfernt").printer, QString(CupsServer::kQueue));

    PrintJob job;
    PrintRequest request{.printer = CupsServer::kQueue, .x = "25", .y = "40", .runs = "2"};
    EXPECT_EQ(job.print(blackReceipt(), request), 2);
    // The backend renames each finished file to .pdf, so a listed file is whole.
    for (int i = 0; i < 200 && pdfsIn().size() < 2; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const QStringList pdfs = pdfsIn();
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
