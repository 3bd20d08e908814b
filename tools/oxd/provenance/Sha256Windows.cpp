#include "oxd/provenance/HexText.h"
#include "oxd/provenance/Sha256.h"

#include <array>
#include <stdexcept>

#include <windows.h>

#include <bcrypt.h>

namespace oxd {

namespace {

void RequireHashed(NTSTATUS status)
{
    if (status < 0) {
        throw std::runtime_error("Windows does not compute SHA-256");
    }
}

} // namespace

// The system's own, with handles that close themselves.
struct Sha256::State
{
    State()
    {
        RequireHashed(BCryptOpenAlgorithmProvider(&algorithm, BCRYPT_SHA256_ALGORITHM, nullptr, 0));
        const NTSTATUS status = BCryptCreateHash(algorithm, &hash, nullptr, 0, nullptr, 0, 0);
        if (status < 0) {
            BCryptCloseAlgorithmProvider(algorithm, 0);
        }
        RequireHashed(status);
    }
    ~State()
    {
        BCryptDestroyHash(hash);
        BCryptCloseAlgorithmProvider(algorithm, 0);
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    BCRYPT_ALG_HANDLE algorithm = nullptr;
    BCRYPT_HASH_HANDLE hash = nullptr;
};

Sha256::Sha256() : m_state(std::make_unique<State>())
{
}

Sha256::~Sha256() = default;

// The system counts bytes in 32 bits.
void Sha256::Add(std::string_view bytes)
{
    constexpr std::size_t most = std::size_t{1} << 30;
    while (!bytes.empty()) {
        const std::string_view part = bytes.substr(0, most);
        auto* const begin = reinterpret_cast<PUCHAR>(const_cast<char*>(part.data())); // only read
        RequireHashed(BCryptHashData(m_state->hash, begin, static_cast<ULONG>(part.size()), 0));
        bytes.remove_prefix(part.size());
    }
}

std::string Sha256::HexDigest()
{
    std::array<unsigned char, 32> digest{};
    RequireHashed(BCryptFinishHash(m_state->hash, digest.data(), static_cast<ULONG>(digest.size()), 0));
    return HexText(digest);
}

} // namespace oxd
