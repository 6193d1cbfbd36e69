#include "books/Sha256.h"

#include <openssl/evp.h>

#include "app/TextFile.h"
#include "core/RunError.h"

namespace zw {

namespace {

// Fetched once: OpenSSL 3 looks the implicit EVP_sha256() up again, under a lock, at every initialisation.
const EVP_MD* sha256Algorithm()
{
    static EVP_MD* const algorithm = EVP_MD_fetch(nullptr, "SHA256", nullptr);
    return algorithm != nullptr ? algorithm : EVP_sha256();
}

} // namespace

struct Sha256::Context
{
    EVP_MD_CTX* context = EVP_MD_CTX_new();
    ~Context() { EVP_MD_CTX_free(context); }
};

Sha256::Sha256() : m_context(std::make_unique<Context>())
{
    if (m_context->context == nullptr || EVP_DigestInit_ex(m_context->context, sha256Algorithm(), nullptr) != 1)
        throw RunError(7, "Nicht genügend Speicher");
}

Sha256::~Sha256() = default;

void Sha256::update(std::string_view bytes)
{
    EVP_DigestUpdate(m_context->context, bytes.data(), bytes.size());
}

std::string Sha256::finishHex()
{
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int length = 0;
    EVP_DigestFinal_ex(m_context->context, digest, &length);
    EVP_DigestInit_ex(m_context->context, sha256Algorithm(), nullptr);
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string hex;
    hex.reserve(2 * length);
    for (unsigned int i = 0; i < length; ++i) {
        hex += kDigits[digest[i] >> 4];
        hex += kDigits[digest[i] & 0xF];
    }
    return hex;
}

std::string sha256Hex(std::string_view bytes)
{
    Sha256 hash;
    hash.update(bytes);
    return hash.finishHex();
}

std::string sha256OfFile(const std::filesystem::path& file)
{
    Sha256 hash;
    readFileInBlocks(file, [&hash](std::string_view block) { hash.update(block); });
    return hash.finishHex();
}

} // namespace zw
