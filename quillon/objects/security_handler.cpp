#include "quillon/objects/security_handler.h"

#include <cstdlib>
#include <optional>

#include "quillon/objects/file_key.h"
#include "quillon/objects/load.h"
#include "quillon/objects/pdf_file.h"

namespace quillon::objects {
namespace {

std::string NameEntry(Document& doc, std::uint32_t dict, std::string_view key,
                      std::string_view otherwise) {
  const Value value = Dereference(doc, EntryValue(doc, dict, key));
  return std::string(value.tag == ValueTag::kName ? NameText(doc, value.payload) : otherwise);
}

std::string StringEntry(Document& doc, std::uint32_t dict, std::string_view key) {
  const std::uint32_t cell = CellOf(doc, EntryValue(doc, dict, key), CellKind::kString);
  return cell == 0 ? std::string() : std::string(StringBytes(doc, cell));
}

// Some producers write P as the unsigned number of the same bits.
std::int32_t PermissionBits(Document& doc, std::uint32_t dict) {
  const Value value = Dereference(doc, EntryValue(doc, dict, "P"));
  if (value.tag == ValueTag::kCell) {
    const Cell& cell = CellAt(doc.cells, value.payload);
    if (cell.kind == CellKind::kInteger) {
      const std::string text(TextOf(cell), cell.size);
      return static_cast<std::int32_t>(std::strtoll(text.c_str(), nullptr, 10));
    }
  }
  return IntegerEntry(doc, dict, "P", -1);
}

[[noreturn]] void FailUnknown(const std::string& what) {
  Fail(kErrorNotOffered, "The file is encrypted in a way that this program does not know: " + what);
}

bool EncryptMetadata(Document& doc, std::uint32_t dict) {
  const Value value = Dereference(doc, EntryValue(doc, dict, "EncryptMetadata"));
  return value.tag != ValueTag::kBoolean || value.payload != 0;
}

PasswordData ReadPasswordData(Document& doc, std::uint32_t dict, std::uint32_t trailer) {
  const std::int32_t version = IntegerEntry(doc, dict, "V", 0);
  PasswordData data{};
  data.revision = IntegerEntry(doc, dict, "R", 0);
  if (data.revision < 2 || data.revision > 6) {
    FailUnknown("revision " + std::to_string(data.revision) + ".");
  }
  // Version 4 has keys of 128 bits whatever Length says.
  std::int32_t bits = version == 2 ? IntegerEntry(doc, dict, "Length", 40) : 40;
  if (version == 4) bits = 128;
  if (version == 5) bits = 256;
  if (bits % 8 != 0 || bits < 40 || bits > 256) FailUnknown("keys of odd lengths.");
  data.keyLength = static_cast<std::size_t>(bits) / 8;
  if (data.revision < 5 && data.keyLength > 16) FailUnknown("keys of odd lengths.");
  data.permissions = PermissionBits(doc, dict);
  data.encryptMetadata = EncryptMetadata(doc, dict);
  data.owner = StringEntry(doc, dict, "O");
  data.user = StringEntry(doc, dict, "U");
  data.ownerKey = StringEntry(doc, dict, "OE");
  data.userKey = StringEntry(doc, dict, "UE");
  data.fileId = FirstFileId(doc, trailer);
  return data;
}

CryptMethod MethodOfFilter(Document& doc, std::uint32_t filter) {
  const std::string method = NameEntry(doc, filter, "CFM", "None");
  if (method == "None") return CryptMethod::kIdentity;
  if (method == "V2") return CryptMethod::kRc4;
  if (method == "AESV2") return CryptMethod::kAes128;
  if (method == "AESV3") return CryptMethod::kAes256;
  FailUnknown("the method " + method + ".");
}

void ReadFilters(Document& doc, std::uint32_t dict, Protection* protection) {
  const std::uint32_t filters = CellOf(doc, EntryValue(doc, dict, "CF"), CellKind::kDict);
  if (filters == 0) return;
  Cell& cell = CellAt(doc.cells, filters);
  for (std::uint32_t i = 0; i < cell.size; ++i) {
    const DictEntry& entry = EntriesOf(cell)[i];
    const std::uint32_t filter = CellOf(doc, entry.value, CellKind::kDict);
    if (filter == 0) continue;
    protection->filters[std::string(NameText(doc, entry.key))] = MethodOfFilter(doc, filter);
  }
}

CryptMethod MethodNamed(const Protection& protection, const std::string& name) {
  const auto filter = protection.filters.find(name);
  if (filter != protection.filters.end()) return filter->second;
  if (name != "Identity") FailUnknown("the crypt filter " + name + " is missing.");
  return CryptMethod::kIdentity;
}

void ReadMethods(Document& doc, std::uint32_t dict, Protection* protection) {
  const std::int32_t version = IntegerEntry(doc, dict, "V", 0);
  if (version == 1 || version == 2) return;
  if (version != 4 && version != 5) FailUnknown("version " + std::to_string(version) + ".");
  ReadFilters(doc, dict, protection);
  const std::string streams = NameEntry(doc, dict, "StmF", "Identity");
  protection->streams = MethodNamed(*protection, streams);
  protection->strings = MethodNamed(*protection, NameEntry(doc, dict, "StrF", "Identity"));
  protection->files = MethodNamed(*protection, NameEntry(doc, dict, "EFF", streams));
  protection->encryptMetadata = EncryptMetadata(doc, dict);
}

// UTF-8 as a byte a character: PDFDocEncoding and Latin-1 are the same where passwords are made of
// letters. Nothing for what does not fit.
std::optional<std::string> AsLatin1(std::string_view utf8) {
  std::string text;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    if (byte < 0x80) {
      text.push_back(utf8[i]);
    } else if ((byte == 0xC2 || byte == 0xC3) && i + 1 < utf8.size()) {
      text.push_back(static_cast<char>((byte & 3) << 6 | (utf8[++i] & 0x3F)));
    } else {
      return std::nullopt;
    }
  }
  return text;
}

std::optional<FileKey> FindKey(const PasswordData& data, const std::string& password) {
  if (data.revision < 5) {
    if (const auto latin1 = AsLatin1(password)) {
      if (auto key = KeyFromPassword(data, *latin1)) return key;
    }
  }
  if (auto key = KeyFromPassword(data, password)) return key;
  return password.empty() ? std::nullopt : KeyFromPassword(data, {});
}

// What was read before the key was known.
void DecryptWhatWasRead(Document& doc) {
  for (const std::uint32_t number : SlotNumbers(doc.objects)) {
    const ObjectSlot* slot = FindSlot(doc.objects, number);
    if (slot->loaded) DecryptStrings(doc, number, slot->value);
  }
}

// What the key is made from and the file has lost; nothing when it has all of it. Files without an
// ID are honest ones when they are whole.
std::optional<std::string> LostIngredient(const Document& doc, const PasswordData& data) {
  constexpr std::size_t kHash = 32;  // bytes
  constexpr std::size_t kSaltedHash = 48;
  const bool salted = data.revision >= 5;
  const std::size_t least = salted ? kSaltedHash : kHash;
  if (data.owner.size() < least) return "O entry";
  // From revision 3 on, half of it is padding.
  if (data.user.size() < (data.revision == 3 || data.revision == 4 ? kHash / 2 : least)) {
    return "U entry";
  }
  if (salted && data.ownerKey.size() < kHash) return "OE entry";
  if (salted && data.userKey.size() < kHash) return "UE entry";
  if (!salted && doc.scanned && data.fileId.empty()) return "ID";
  return std::nullopt;
}

// Says why a file does not open; no password can help where the key's ingredients are lost.
[[noreturn]] void FailPassword(const Document& doc, const PasswordData& data) {
  if (const auto lost = LostIngredient(doc, data)) {
    Fail(kErrorBadFile, "The file is encrypted, and its " + *lost +
                            ", from which the key is made, is lost or too short: no password "
                            "opens it. Get a copy that is whole.");
  }
  const std::string doubt = data.fileId.empty() && data.revision < 5
                                ? " It has no ID; if that was lost, no password opens it."
                                : "";
  Fail(kErrorPassword,
       (doc.password.empty() ? "The file is encrypted; it takes a password to open it."
                             : "The file is encrypted under another password than the one given.") +
           doubt);
}

}  // namespace

bool PrepareDecryption(Document& doc, std::uint32_t trailerDict) {
  const Value entry = EntryValue(doc, trailerDict, "Encrypt");
  if (entry.tag == ValueTag::kNull) return false;
  if (doc.protection) return true;
  const std::uint32_t dict = CellOf(doc, entry, CellKind::kDict);
  if (dict == 0) FailUnknown("its encryption dictionary is missing.");
  const std::string handler = NameEntry(doc, dict, "Filter", "");
  if (handler != "Standard") FailUnknown("the handler is \"" + handler + "\".");
  auto protection = std::make_shared<Protection>();
  ReadMethods(doc, dict, protection.get());
  const PasswordData data = ReadPasswordData(doc, dict, trailerDict);
  const std::optional<FileKey> key = FindKey(data, doc.password);
  // Where nothing but attachments is encrypted, the rest is open to all.
  const bool filesOnly = protection->strings == CryptMethod::kIdentity &&
                         protection->streams == CryptMethod::kIdentity;
  if (!key && !(filesOnly && doc.password.empty())) {
    FailPassword(doc, data);
  }
  if (key) {
    protection->key = key->bytes;
    protection->asOwner = key->asOwner;
  }
  if (entry.tag == ValueTag::kReference) protection->dictNumber = entry.payload;
  doc.protection = std::move(protection);
  DecryptWhatWasRead(doc);
  return true;
}

}  // namespace quillon::objects

namespace quillon {

bool OpenedAsOwner(ObjectDoc doc) {
  const objects::Document& document = objects::DocumentOfHandle(doc);
  return document.protection && document.protection->asOwner;
}

}  // namespace quillon
