#pragma once

#include "app/MailPassword.h"

namespace zw {

// The desktop's Secret Service keyring through QtKeychain, under the service "Zettelwerk". Never falls back to a
// file of its own: without a keyring every call fails and the caller keeps the plain text.
class KeyringPasswordStore : public PasswordStore
{
public:
    std::optional<std::string> read(std::string_view key) override;
    bool write(std::string_view key, const std::string& secret) override;
};

} // namespace zw
