#include "app/HandOver.h"

#include <QCoreApplication>
#include <QTimer>
#include <atomic>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

#include "app/QuittungLogic.h"
#include "core/ReceiptForm.h"
#include "ledger/ReceiptFile.h"
#include "tests/app/TempFolder.h"
#include "tests/core/FakeHost.h"
#include "tests/ui/FaultRecorder.h"
#include "ui/desktop/SingleInstance.h"

namespace zw {
namespace {

namespace fs = std::filesystem;

TEST(HandOver, CommandLineFileIsMadeAbsoluteAndOptionsArePassedOver)
{
    struct Case
    {
        std::vector<std::string> arguments;
        fs::path expected;
    };
    for (const Case& row : {Case{{}, ""}, Case{{"beleg.ZW5"}, "/home/anna/beleg.ZW5"},
                            Case{{"../alt/Müller 2.zwi"}, "/home/alt/Müller 2.zwi"},
                            Case{{"/srv/belege/a.ZW5"}, "/srv/belege/a.ZW5"},
                            Case{{"--reverse", "b.ZW5", "c.ZW5"}, "/home/anna/b.ZW5"}}) {
        SCOPED_TRACE(row.expected);
        EXPECT_EQ(receiptFileArgument(row.arguments, "/home/anna"), row.expected);
    }
}

TEST(HandOver, FileOpensByItsExtensionAndAnUnreadableOneShowsTheOpenCommandsError)
{
    test::TempFolder folder;
    // .ZW5: the kind of receipt first; .ZWI: the same lines without it.
    std::ofstream(folder / "beleg.ZW5") << "Quittung\r\n17\r\nEUR\r\n19\r\n\r\n\r\n119\r\n\r\nMüller\r\n\r\nBüro\r\nBerlin\r\n"
                                           "01.02.2026\r\n\r\n";
    std::ofstream(folder / "ALT.ZWI") << "4\r\nEUR\r\n19\r\n\r\n\r\n119\r\n\r\nSchröder\r\n\r\nBüro\r\nBerlin\r\n"
                                         "01.02.2026\r\n\r\n";
    std::ofstream(folder / "kurz.ZW5") << "Quittung\r\n5\r\n";
    struct Case
    {
        const char* name;
        const char* number; // nullptr: the fresh form's, untouched
        const char* fault;
    };
    for (const Case& row : {Case{"beleg.ZW5", "17", ""}, Case{"ALT.ZWI", "4", ""},
                            Case{"fehlt.ZW5", nullptr, "53 Quittung"}, Case{"kurz.ZW5", "5", "62 Quittung"}}) {
        SCOPED_TRACE(row.name);
        ReceiptForm form;
        test::MemorySettings settings;
        WindowParts parts;
        ReceiptFileCommands files(form, settings, parts);
        test::FaultRecorder faults;
        openReceiptFromOutside(
            folder / row.name, [&](const fs::path& file) { files.open(file); },
            [&](const fs::path& file) { files.openOld(file); }, faults);
        EXPECT_EQ(form.text(FormElement::Text1), row.number ? row.number : ReceiptForm().text(FormElement::Text1));
        EXPECT_EQ(faults.seen, *row.fault ? std::vector<std::string>{row.fault} : std::vector<std::string>{});
    }
}

// A socket file nobody listens on, as a program that crashed leaves it.
void leaveStaleSocket(const fs::path& path)
{
    int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.string().copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::close(descriptor);
}

TEST(HandOver, SecondStartHandsItsFileToTheRunningProgramWhichKeepsItsSocket)
{
    int argc = 1;
    char name[] = "HandOverTest";
    char* argv[] = {name, nullptr};
    QCoreApplication application(argc, argv);
    test::TempFolder folder;
    const auto socketName = QString::fromStdString(handOverServerName(folder / "home", folder.path().string(), 0));

    EXPECT_FALSE(handOver(socketName, "/tmp/a.ZW5")) << "nobody runs: the second start opens its own window";
    leaveStaleSocket(socketName.toStdString());
    std::vector<fs::path> opened;
    HandOverServer running(socketName, [&](const fs::path& file) { opened.push_back(file); });
    ASSERT_TRUE(running.claim()) << "a crashed program's socket is taken over";
    HandOverServer another(socketName, [](const fs::path&) {});
    EXPECT_FALSE(another.claim()) << "a start without a file leaves the running program its socket";

    std::atomic<int> answered = -1;
    std::thread secondStart([&] { answered = handOver(socketName, "/home/anna/Müller Beleg.ZW5") ? 1 : 0; });
    // The cap only keeps a broken hand-over from hanging the run.
    QTimer cap;
    cap.setSingleShot(true);
    cap.start(30000);
    while ((answered < 0 || opened.empty()) && cap.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    secondStart.join();
    EXPECT_EQ(answered, 1);
    EXPECT_EQ(opened, std::vector<fs::path>{"/home/anna/Müller Beleg.ZW5"});
}

} // namespace
} // namespace zw
