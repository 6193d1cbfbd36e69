#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zw {

class Settings;

// Where secrets live when not in the settings file: the desktop's keyring (Secret Service).
class PasswordStore
{
public:
    virtual ~PasswordStore() = default;
    // The secret under key; nullopt when there is none or the keyring cannot be reached.
    virtual std::optional<std::string> read(std::string_view key) = 0;
    // False when the keyring cannot be reached or refuses.
    virtual bool write(std::string_view key, const std::string& secret) = 0;
};

// EMail/Passwort: kept in the keyring with an empty key in the settings file where a keyring takes it; else in
// plain text in the settings file, as the program always did.
class MailPassword
{
public:
    explicit MailPassword(PasswordStore* keyring) : m_keyring(keyring) {}

    // A plain password in the settings file (not yet moved, or no keyring) wins over the keyring's.
    std::string read(const Settings& settings) const;
    // Moves a plain password into the keyring on the first save the keyring takes.
    void save(Settings& settings, const std::string& password);
    // Once per run after a save that a keyring did not take: the notice for the mail assistant, else "".
    std::string takePlainTextNotice();

private:
    PasswordStore* m_keyring;
    bool m_keptInPlainText = false;
    bool m_told = false;
};

inline constexpr std::string_view kMailPasswordKey = "EMail/Passwort";

// The keeper the mail account reads and saves through. The program's main() installs one over the desktop's
// keyring for its run; without that (the command line, the tests) the password stays in the settings file.
MailPassword& mailPassword();
void installMailPassword(MailPassword* keeper);

// Installs a keeper for as long as it lives.
class InstalledMailPassword
{
public:
    explicit InstalledMailPassword(MailPassword& keeper) { installMailPassword(&keeper); }
    ~InstalledMailPassword() { installMailPassword(nullptr); }
    InstalledMailPassword(const InstalledMailPassword&) = delete;
    InstalledMailPassword& operator=(const InstalledMailPassword&) = delete;
};

} // namespace zw
