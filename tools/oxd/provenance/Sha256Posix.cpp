#include "oxd/provenance/HexText.h"
#include "oxd/provenance/Sha256.h"

#include <nettle/sha2.h>

#include <array>

namespace oxd {

// The library neither allocates nor opens anything, so that nothing here fails.
struct Sha256::State
{
    sha256_ctx context{};
};

Sha256::Sha256() : m_state(std::make_unique<State>())
{
    sha256_init(&m_state->context);
}

Sha256::~Sha256() = default;

void Sha256::Add(std::string_view bytes)
{
    sha256_update(&m_state->context, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
}

std::string Sha256::HexDigest()
{
    std::array<unsigned char, SHA256_DIGEST_SIZE> digest{};
    sha256_digest(&m_state->context, digest.size(), digest.data());
    return HexText(digest);
}

} // namespace oxd
