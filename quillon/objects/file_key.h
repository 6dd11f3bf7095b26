// The key of an encrypted file from a password (ISO 32000-2, 7.6.4): the standard security handler
// of revisions 2 to 6.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillon::objects {

// What the encryption dictionary and the trailer say.
struct PasswordData {
  std::int32_t revision;  // R, 2 to 6
  std::size_t keyLength;  // bytes
  std::int32_t permissions;
  bool encryptMetadata;
  std::string owner;     // O
  std::string user;      // U
  std::string ownerKey;  // OE, from revision 5 on
  std::string userKey;   // UE, from revision 5 on
  std::string fileId;    // first string of the trailer's ID, up to revision 4
};

struct FileKey {
  std::string bytes;
  bool asOwner;  // the password is the owner's
};

// `password` as the file has it: PDFDocEncoding up to revision 4, UTF-8 afterwards. Nothing when it
// is neither the user's nor the owner's; one that is both is taken for the user's.
std::optional<FileKey> KeyFromPassword(const PasswordData& data, std::string_view password);

}  // namespace quillon::objects
