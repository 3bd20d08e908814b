// The checksum SHA-256, by which nobody takes other bytes for those that were recorded.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace oxd {

// Pass the bytes in any number of parts to Add, and call HexDigest once, in the end. Not thread-safe. Functions throw
// std::runtime_error if the system that computes it fails.
class Sha256
{
public:
    Sha256();
    ~Sha256();
    Sha256(const Sha256&) = delete;
    Sha256& operator=(const Sha256&) = delete;

    void Add(std::string_view bytes);

    // 64 digits, the letters among them small.
    std::string HexDigest();

private:
    struct State;

    std::unique_ptr<State> m_state;
};

} // namespace oxd
