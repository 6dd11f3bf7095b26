// Documents encrypted with the standard security handler (ISO 32000-2, 7.6): their key, and what of
// them is encrypted how. Everything is read decrypted and written back under the same settings.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "quillon/objects/document.h"

namespace quillon::objects {

enum class CryptMethod : std::uint8_t { kIdentity, kRc4, kAes128, kAes256 };

struct Protection {
  std::string key;  // empty: the document was opened without; only attachments take it
  bool asOwner = false;
  bool encryptMetadata = true;
  CryptMethod strings = CryptMethod::kRc4;
  CryptMethod streams = CryptMethod::kRc4;
  CryptMethod files = CryptMethod::kRc4;       // embedded ones
  std::map<std::string, CryptMethod> filters;  // the crypt filters by name
  std::uint32_t dictNumber = 0;  // object number of the encryption dictionary, whose own strings
                                 // are not encrypted; 0 when it is direct
};

// Reads the trailer's Encrypt entry and finds the key from the password that the document is opened
// with, then from the empty one; false when there is no such entry. Throws kErrorPassword when no
// password fits, kErrorNotOffered for other handlers.
bool PrepareDecryption(Document& doc, std::uint32_t trailerDict);

// Decrypts the strings of an object that was just read from the file.
void DecryptStrings(Document& doc, std::uint32_t number, const Value& value);

// How an object's strings and data are written.
struct ObjectCipher {
  const Protection* protection;  // null: as they are
  std::uint32_t number;
  std::uint16_t generation;
};
ObjectCipher CipherFor(const Document& doc, std::uint32_t number);
std::string EncryptedString(const ObjectCipher& cipher, std::string_view bytes);
std::string EncryptedData(Document& doc, const ObjectCipher& cipher, std::uint32_t streamDict,
                          std::string_view bytes);

// Whether the first filter of a stream is Crypt, which only its own document can undo.
bool HasCryptFilter(Document& doc, std::uint32_t streamDict);

// A stream's data in the file, decrypted. `streamDict` decides how.
std::string DecryptedData(Document& doc, std::uint32_t number, std::uint32_t streamDict,
                          std::string_view bytes);

// Whether an entry of a dictionary is never encrypted: the Contents of a signature, which must
// stand at its place in the file as it is.
bool IsPlainEntry(Document& doc, std::uint32_t dictCell, NameCode key);

}  // namespace quillon::objects
