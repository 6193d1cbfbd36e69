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

// A keyring that takes what it is given, or refuses everything.
class FakeKeyring : public PasswordStore
{
public:
    explicit FakeKeyring(bool works) : m_works(works) {}
    std::optional<std::string> read(std::string_view) override { return m_works ? m_secret : std::nullopt; }
    bool write(std::string_view, const std::string& secret) override
    {
        if (m_works)
            m_secret = secret;
        return m_works;
    }

private:
    bool m_works;
    std::optional<std::string> m_secret;
};

std::string storedPlain(const test::MemorySettings& settings)
{
    return settings.get(kApplicationName, "EMail", "Passwort", "<none>");
}

TEST(MailPassword, PlainPasswordMovesIntoAWorkingKeyringAndStaysWithoutOneWithOneNotice)
{
    for (bool keyringWorks : {true, false}) {
        SCOPED_TRACE(keyringWorks ? "keyring" : "no keyring");
        FakeKeyring keyring(keyringWorks);
        test::MemorySettings settings;
        settings.save(kApplicationName, "EMail", "Passwort", "alt geheim");
        MailPassword password(&keyring);
        EXPECT_EQ(password.read(settings), "alt geheim") << "a password of an earlier version is read as it is";
        password.save(settings, "neu;geheim=ä");
        EXPECT_EQ(storedPlain(settings), keyringWorks ? "" : "neu;geheim=ä");
        EXPECT_EQ(MailPassword(&keyring).read(settings), "neu;geheim=ä");
        EXPECT_EQ(password.takePlainTextNotice().empty(), keyringWorks);
        password.save(settings, "drittes");
        EXPECT_EQ(password.takePlainTextNotice(), "") << "said once";
    }
}

TEST(MailPassword, TheMailAccountReadsAndSavesItsPasswordThroughTheInstalledKeeper)
{
    FakeKeyring keyring(/*works=*/true);
    MailPassword keeper(&keyring);
    test::MemorySettings settings;
    MailAccount account;
    account.server = "smtp.example.org";
    account.password = "geheim";
    {
        InstalledMailPassword installed(keeper);
        saveMailAccount(settings, account);
        EXPECT_EQ(storedPlain(settings), "");
        EXPECT_EQ(settings.get(kApplicationName, "EMail", "SMTP", ""), "smtp.example.org");
        EXPECT_EQ(loadMailAccount(settings).password, "geheim");
    }
    EXPECT_EQ(loadMailAccount(settings).password, "") << "without a keeper only the settings file counts";
}

// What secret-tool, another client of the Secret Service, finds under the program's entry.
std::string lookupInKeyring()
{
    return test::runPeer("secret-tool lookup server Zettelwerk user '" + std::string(kMailPasswordKey) + "'");
}

TEST(Keyring, PasswordLandsInThePrivateKeyringAndTheSettingsFileKeepsAnEmptyKey)
{
    if (!std::getenv("ZW_PRIVATE_KEYRING"))
        GTEST_SKIP() << "no private keyring could be started";
    KeyringPasswordStore keyring;
    test::MemorySettings settings;
    settings.save(kApplicationName, "EMail", "Passwort", "klartext");
    MailPassword password(&keyring);
    password.save(settings, "Geheimnis äöü 123");
    EXPECT_EQ(storedPlain(settings), "");
    EXPECT_EQ(password.takePlainTextNotice(), "");
    if (test::toolAvailable("secret-tool")) {
        EXPECT_EQ(lookupInKeyring(), "Geheimnis äöü 123");
    }
    KeyringPasswordStore anotherRun;
    EXPECT_EQ(MailPassword(&anotherRun).read(settings), "Geheimnis äöü 123");
}

TEST(Keyring, UnreachableKeyringRefusesAndThePasswordStaysInPlainText)
{
    if (!std::getenv("ZW_NO_KEYRING"))
        GTEST_SKIP() << "runs where no session bus is reachable";
    KeyringPasswordStore keyring;
    test::MemorySettings settings;
    MailPassword password(&keyring);
    password.save(settings, "geheim");
    EXPECT_EQ(storedPlain(settings), "geheim");
    EXPECT_NE(password.takePlainTextNotice(), "");
}

} // namespace
} // namespace zw

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
