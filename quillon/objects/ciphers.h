// The ciphers and digests of encrypted PDF files (ISO 32000-2, 7.6), from the system's library: its
// own on Windows, libcrypto elsewhere. Throws HostFailure when the library refuses.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillon::objects {

inline constexpr std::size_t kAesBlock = 16;

enum class Digest { kMd5, kSha256, kSha384, kSha512 };
std::string DigestOf(Digest digest, std::string_view data);

// RC4 undoes itself. Keys of 5 to 16 bytes.
std::string ApplyRc4(std::string_view key, std::string_view data);

// Cipher block chaining without padding: `data` are whole blocks, `iv` one. Keys of 16 or 32 bytes.
std::string EncryptAes(std::string_view key, std::string_view iv, std::string_view data);
std::string DecryptAes(std::string_view key, std::string_view iv, std::string_view data);

// Bytes nobody can foretell.
std::string RandomBytes(std::size_t count);

}  // namespace quillon::objects
