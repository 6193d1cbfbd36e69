#pragma once

#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace zw {

// SHA-256 fed piece by piece, so a file or a ledger is hashed as its bytes pass by instead of in a second pass.
class Sha256
{
public:
    Sha256();
    ~Sha256();
    Sha256(const Sha256&) = delete;
    Sha256& operator=(const Sha256&) = delete;

    void update(std::string_view bytes);
    // The digest as 64 lower-case hex digits; the hasher starts afresh afterwards.
    std::string finishHex();

private:
    struct Context;
    std::unique_ptr<Context> m_context;
};

std::string sha256Hex(std::string_view bytes);
// Throws RunError as readFileInBlocks does (53 missing, 75 unreadable).
std::string sha256OfFile(const std::filesystem::path& file);

// The hash that stands before the first entry of a chain.
inline constexpr std::string_view kNoHash = "0000000000000000000000000000000000000000000000000000000000000000";

} // namespace zw
