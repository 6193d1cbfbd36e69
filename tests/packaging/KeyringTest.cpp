#include <QCoreApplication>
#include <cstdlib>
#include <gtest/gtest.h>

#include "app/MailPassword.h"
#include "mail/MailDraft.h"
#include "tests/app/PeerProgram.h"
#include "tests/core/FakeHost.h"
#include "desktop/KeyringPasswordStore.h"

namespace zw {
namespace {

std::string storedPlain(const test::MemorySettings& settings)
{
    return settings.get(kApplicationName, "EMail", "Passwort", "<none>");
}

// What secret-tool, another client of the Secret Service, finds under the program's entry.
std::string lookupInKeyring()
{
    return test::runPeer("secret-tool lookup server Zettelwerk user '" + std::string(kMailPasswordKey) + "'");
}

// The mail account saves through the installed keeper: an earlier version's plain password is read as it is, and
// the next save moves it into the keyring, leaving an empty key in the settings file.
TEST(Keyring, APlainPasswordMovesIntoThePrivateKeyringAtTheAccountsNextSave)
{
    if (!std::getenv("ZW_PRIVATE_KEYRING"))
        GTEST_SKIP() << "no private keyring could be started";
    KeyringPasswordStore keyring;
    MailPassword keeper(&keyring);
    test::MemorySettings settings;
    settings.save(kApplicationName, "EMail", "Passwort", "klartext");
    {
        InstalledMailPassword installed(keeper);
        MailAccount account = loadMailAccount(settings);
        EXPECT_EQ(account.password, "klartext");
        account.password = "Geheimnis äöü 123";
        saveMailAccount(settings, account);
    }
    EXPECT_EQ(storedPlain(settings), "");
    EXPECT_EQ(keeper.takePlainTextNotice(), "");
    if (test::toolAvailable("secret-tool")) {
        EXPECT_EQ(lookupInKeyring(), "Geheimnis äöü 123");
    }
    KeyringPasswordStore anotherRun;
    EXPECT_EQ(MailPassword(&anotherRun).read(settings), "Geheimnis äöü 123");
    EXPECT_EQ(loadMailAccount(settings).password, "") << "without a keeper only the settings file counts";
}

TEST(Keyring, UnreachableKeyringRefusesAndThePasswordStaysInPlainTextWithOneNotice)
{
    if (!std::getenv("ZW_NO_KEYRING"))
        GTEST_SKIP() << "runs where no session bus is reachable";
    KeyringPasswordStore keyring;
    test::MemorySettings settings;
    MailPassword password(&keyring);
    password.save(settings, "geheim");
    EXPECT_EQ(storedPlain(settings), "geheim");
    EXPECT_NE(password.takePlainTextNotice(), "");
    password.save(settings, "zweites");
    EXPECT_EQ(password.takePlainTextNotice(), "") << "said once";
}

} // namespace
} // namespace zw

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
