#include "quillon/objects/file_key.h"

#include <algorithm>

#include "quillon/objects/ciphers.h"

namespace quillon::objects {
namespace {

constexpr std::size_t kHashLength = 32;
constexpr std::size_t kSaltLength = 8;
constexpr std::size_t kMaxUtf8Password = 127;

// Fills passwords up to 32 bytes (algorithm 2, step a).
constexpr std::string_view kPadding(
    "\x28\xBF\x4E\x5E\x4E\x75\x8A\x41\x64\x00\x4E\x56\xFF\xFA\x01\x08"
    "\x2E\x2E\x00\xB6\xD0\x68\x3E\x80\x2F\x0C\xA9\xFE\x64\x53\x69\x7A",
    32);

std::string Padded(std::string_view password) {
  std::string padded(password.substr(0, kPadding.size()));
  padded += kPadding.substr(0, kPadding.size() - padded.size());
  return padded;
}

std::string Md5(std::string_view data) { return DigestOf(Digest::kMd5, data); }

std::string Md5FiftyTimes(std::string digest, std::size_t length) {
  for (int i = 0; i < 50; ++i) digest = Md5(std::string_view(digest).substr(0, length));
  return digest;
}

std::string KeyXor(std::string key, int with) {
  for (char& byte : key) byte = static_cast<char>(byte ^ with);
  return key;
}

// Algorithm 2.
std::string KeyOfUser(const PasswordData& data, std::string_view paddedPassword) {
  std::string input(paddedPassword);
  input += std::string_view(data.owner).substr(0, 32);
  const auto bits = static_cast<std::uint32_t>(data.permissions);
  for (const unsigned shift : {0u, 8u, 16u, 24u}) {
    input.push_back(static_cast<char>(bits >> shift & 0xFF));
  }
  input += data.fileId;
  if (data.revision >= 4 && !data.encryptMetadata) input += "\xFF\xFF\xFF\xFF";
  std::string digest = Md5(input);
  if (data.revision >= 3) digest = Md5FiftyTimes(std::move(digest), data.keyLength);
  return digest.substr(0, data.keyLength);
}

// Algorithms 4, 5 and 6.
std::optional<std::string> CheckUser(const PasswordData& data, std::string_view paddedPassword) {
  std::string key = KeyOfUser(data, paddedPassword);
  if (data.revision == 2) {
    return ApplyRc4(key, kPadding) == data.user ? std::optional(key) : std::nullopt;
  }
  std::string expected = Md5(std::string(kPadding) + data.fileId);
  for (int i = 0; i < 20; ++i) expected = ApplyRc4(KeyXor(key, i), expected);
  const bool fits = std::string_view(data.user).substr(0, expected.size()) == expected;
  return fits ? std::optional(key) : std::nullopt;
}

// Algorithm 7: the owner's password gives the user's.
std::string UserFromOwner(const PasswordData& data, std::string_view password) {
  std::string digest = Md5(Padded(password));
  const std::size_t length = digest.size();
  if (data.revision >= 3) digest = Md5FiftyTimes(std::move(digest), length);
  const std::string key = digest.substr(0, data.keyLength);
  std::string user = data.owner.substr(0, 32);
  for (int i = data.revision == 2 ? 0 : 19; i >= 0; --i) user = ApplyRc4(KeyXor(key, i), user);
  return user;
}

std::optional<FileKey> KeyUpToRevision4(const PasswordData& data, std::string_view password) {
  if (auto key = CheckUser(data, Padded(password))) return FileKey{*key, false};
  if (auto key = CheckUser(data, UserFromOwner(data, password))) return FileKey{*key, true};
  return std::nullopt;
}

// The three digests take turns by what the block cipher gave (algorithm 2.B).
Digest DigestFor(std::string_view block) {
  int sum = 0;
  for (const char byte : block.substr(0, 16)) sum += static_cast<unsigned char>(byte);
  constexpr Digest kByRemainder[] = {Digest::kSha256, Digest::kSha384, Digest::kSha512};
  return kByRemainder[sum % 3];  // 256 leaves 1 when divided by 3
}

std::string HashPassword(const PasswordData& data, std::string_view password, std::string_view salt,
                         std::string_view user) {
  std::string input(password);
  input.append(salt).append(user);
  std::string key = DigestOf(Digest::kSha256, input);
  if (data.revision < 6) return key;
  for (int round = 1;; ++round) {
    std::string once(password);
    once.append(key).append(user);
    std::string repeated;
    for (int i = 0; i < 64; ++i) repeated += once;
    const std::string block =
        EncryptAes(key.substr(0, 16), std::string_view(key).substr(16, 16), repeated);
    key = DigestOf(DigestFor(block), block);
    if (round >= 64 && static_cast<unsigned char>(block.back()) <= round - 32) break;
  }
  return key.substr(0, kHashLength);
}

// `entry` is O or U: hash, validation salt, key salt; `wrapped` OE or UE.
std::optional<std::string> Unwrap(const PasswordData& data, std::string_view password,
                                  std::string_view entry, std::string_view wrapped,
                                  std::string_view user) {
  const std::string_view check = entry.substr(kHashLength, kSaltLength);
  if (HashPassword(data, password, check, user) != entry.substr(0, kHashLength)) {
    return std::nullopt;
  }
  const std::string_view salt = entry.substr(kHashLength + kSaltLength, kSaltLength);
  return DecryptAes(HashPassword(data, password, salt, user), std::string(kAesBlock, '\0'),
                    wrapped.substr(0, kHashLength));
}

std::optional<FileKey> KeyFromRevision5(const PasswordData& data, std::string_view password) {
  constexpr std::size_t kEntryLength = kHashLength + 2 * kSaltLength;
  const bool whole = data.user.size() >= kEntryLength && data.owner.size() >= kEntryLength &&
                     data.userKey.size() >= kHashLength && data.ownerKey.size() >= kHashLength;
  if (!whole) return std::nullopt;
  password = password.substr(0, kMaxUtf8Password);
  const std::string_view user = std::string_view(data.user).substr(0, kEntryLength);
  if (auto key = Unwrap(data, password, user, data.userKey, {})) return FileKey{*key, false};
  if (auto key = Unwrap(data, password, data.owner, data.ownerKey, user)) {
    return FileKey{*key, true};
  }
  return std::nullopt;
}

}  // namespace

std::optional<FileKey> KeyFromPassword(const PasswordData& data, std::string_view password) {
  return data.revision >= 5 ? KeyFromRevision5(data, password) : KeyUpToRevision4(data, password);
}

}  // namespace quillon::objects
