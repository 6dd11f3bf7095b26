// Which strings and streams are encrypted how, and doing it (ISO 32000-2, 7.6.3 and 7.6.6).
#include <algorithm>
#include <cstring>

#include "quillon/objects/ciphers.h"
#include "quillon/objects/load.h"
#include "quillon/objects/parser.h"
#include "quillon/objects/security_handler.h"

namespace quillon::objects {
namespace {

// Algorithm 1. The keys of 256 bits are the same for all objects.
std::string ObjectKey(const ObjectCipher& cipher, CryptMethod method) {
  const std::string& key = cipher.protection->key;
  if (key.empty()) {
    Fail(kErrorPassword, "The attachments of the file are encrypted; they take a password.",
         cipher.number);
  }
  if (method == CryptMethod::kAes256) return key;
  std::string input = key;
  for (const unsigned shift : {0u, 8u, 16u}) {
    input.push_back(static_cast<char>(cipher.number >> shift & 0xFF));
  }
  for (const unsigned shift : {0u, 8u}) {
    input.push_back(static_cast<char>(cipher.generation >> shift & 0xFF));
  }
  if (method == CryptMethod::kAes128) input += "sAlT";
  return DigestOf(Digest::kMd5, input).substr(0, std::min<std::size_t>(key.size() + 5, 16));
}

std::string Encrypted(const ObjectCipher& cipher, CryptMethod method, std::string_view bytes) {
  if (method == CryptMethod::kIdentity) return std::string(bytes);
  const std::string key = ObjectKey(cipher, method);
  if (method == CryptMethod::kRc4) return ApplyRc4(key, bytes);
  const std::size_t padding = kAesBlock - bytes.size() % kAesBlock;
  std::string padded(bytes);
  padded.append(padding, static_cast<char>(padding));
  const std::string iv = RandomBytes(kAesBlock);
  return iv + EncryptAes(key, iv, padded);
}

// Data whose length or padding is wrong are taken as far as they go: producers err there.
std::string Decrypted(const ObjectCipher& cipher, CryptMethod method, std::string_view bytes) {
  if (method == CryptMethod::kIdentity) return std::string(bytes);
  const std::string key = ObjectKey(cipher, method);
  if (method == CryptMethod::kRc4) return ApplyRc4(key, bytes);
  if (bytes.size() < 2 * kAesBlock) return {};
  const std::size_t whole = bytes.size() - bytes.size() % kAesBlock;
  std::string plain =
      DecryptAes(key, bytes.substr(0, kAesBlock), bytes.substr(kAesBlock, whole - kAesBlock));
  const auto padding = static_cast<unsigned char>(plain.back());
  if (padding >= 1 && padding <= kAesBlock) plain.resize(plain.size() - padding);
  return plain;
}

bool EntryIs(Document& doc, std::uint32_t dict, std::string_view key, std::string_view name) {
  const Value value = EntryValue(doc, dict, key);
  return value.tag == ValueTag::kName && NameText(doc, value.payload) == name;
}

// The name that a Crypt filter of the stream asks for; null when it has no such filter.
bool NamedFilter(Document& doc, std::uint32_t dict, std::string* name) {
  Value filter = Dereference(doc, EntryValue(doc, dict, "Filter"));
  Value params = Dereference(doc, EntryValue(doc, dict, "DecodeParms"));
  // It is the first one when there is one.
  const std::uint32_t filters = CellOf(doc, filter, CellKind::kArray);
  if (filters != 0) {
    if (CellAt(doc.cells, filters).size == 0) return false;
    filter = Dereference(doc, ElementsOf(CellAt(doc.cells, filters))[0]);
    const std::uint32_t all = CellOf(doc, params, CellKind::kArray);
    if (all != 0) {
      Cell& cell = CellAt(doc.cells, all);
      params = cell.size == 0 ? kNullValue : Dereference(doc, ElementsOf(cell)[0]);
    }
  }
  if (filter.tag != ValueTag::kName || NameText(doc, filter.payload) != "Crypt") return false;
  const std::uint32_t cell = CellOf(doc, params, CellKind::kDict);
  const Value named = cell == 0 ? kNullValue : Dereference(doc, EntryValue(doc, cell, "Name"));
  *name = named.tag == ValueTag::kName ? std::string(NameText(doc, named.payload)) : "Identity";
  return true;
}

CryptMethod MethodOfStream(Document& doc, const Protection& protection, std::uint32_t dict) {
  if (EntryIs(doc, dict, "Type", "XRef")) return CryptMethod::kIdentity;
  std::string name;
  if (NamedFilter(doc, dict, &name)) {
    const auto filter = protection.filters.find(name);
    return filter == protection.filters.end() ? CryptMethod::kIdentity : filter->second;
  }
  if (!protection.encryptMetadata && EntryIs(doc, dict, "Type", "Metadata")) {
    return CryptMethod::kIdentity;
  }
  return EntryIs(doc, dict, "Type", "EmbeddedFile") ? protection.files : protection.streams;
}

void DecryptCell(Document& doc, const ObjectCipher& cipher, std::uint32_t number) {
  Cell& cell = CellAt(doc.cells, number);
  if (!cell.raw) return;
  const std::string plain =
      Decrypted(cipher, cipher.protection->strings, DecodeStringText({TextOf(cell), cell.size}));
  auto* bytes = AllocateArray<char>(doc.pool, plain.size() + 1);
  std::memcpy(bytes, plain.c_str(), plain.size() + 1);
  cell.raw = false;
  cell.owned = true;
  cell.size = static_cast<std::uint32_t>(plain.size());
  cell.capacity = cell.size + 1;
  cell.data = bytes;
}

void PushParts(Document& doc, std::uint32_t number, std::vector<std::uint32_t>* pending) {
  Cell& cell = CellAt(doc.cells, number);
  const auto push = [pending](const Value& value) {
    if (value.tag == ValueTag::kCell) pending->push_back(value.payload);
  };
  if (cell.kind == CellKind::kStream) pending->push_back(cell.capacity);
  for (std::uint32_t i = 0; cell.kind == CellKind::kArray && i < cell.size; ++i) {
    push(ElementsOf(cell)[i]);
  }
  for (std::uint32_t i = 0; cell.kind == CellKind::kDict && i < cell.size; ++i) {
    const DictEntry& entry = EntriesOf(cell)[i];
    if (!IsPlainEntry(doc, number, entry.key)) push(entry.value);
  }
}

}  // namespace

bool HasCryptFilter(Document& doc, std::uint32_t streamDict) {
  std::string name;
  return NamedFilter(doc, streamDict, &name);
}

void DecryptStrings(Document& doc, std::uint32_t number, const Value& value) {
  const ObjectCipher cipher = CipherFor(doc, number);
  const ObjectSlot* slot = FindSlot(doc.objects, number);
  // Object streams are encrypted as a whole, cross-reference streams not at all.
  if (cipher.protection == nullptr || value.tag != ValueTag::kCell || slot->structure ||
      slot->state != SlotState::kInFile) {
    return;
  }
  std::vector<std::uint32_t> pending{value.payload};
  while (!pending.empty()) {
    const std::uint32_t next = pending.back();
    pending.pop_back();
    if (CellAt(doc.cells, next).kind == CellKind::kString) {
      DecryptCell(doc, cipher, next);
    } else {
      PushParts(doc, next, &pending);
    }
  }
}

ObjectCipher CipherFor(const Document& doc, std::uint32_t number) {
  const ObjectSlot* slot = FindSlot(doc.objects, number);
  if (!doc.protection || slot == nullptr || number == doc.protection->dictNumber) {
    return {nullptr, number, 0};
  }
  return {doc.protection.get(), number, slot->generation};
}

std::string EncryptedString(const ObjectCipher& cipher, std::string_view bytes) {
  return Encrypted(cipher, cipher.protection->strings, bytes);
}

std::string EncryptedData(Document& doc, const ObjectCipher& cipher, std::uint32_t streamDict,
                          std::string_view bytes) {
  return Encrypted(cipher, MethodOfStream(doc, *cipher.protection, streamDict), bytes);
}

std::string DecryptedData(Document& doc, std::uint32_t number, std::uint32_t streamDict,
                          std::string_view bytes) {
  const ObjectCipher cipher = CipherFor(doc, number);
  if (cipher.protection == nullptr) return std::string(bytes);
  return Decrypted(cipher, MethodOfStream(doc, *cipher.protection, streamDict), bytes);
}

bool IsPlainEntry(Document& doc, std::uint32_t dictCell, NameCode key) {
  return NameText(doc, key) == "Contents" &&
         EntryValue(doc, dictCell, "ByteRange").tag != ValueTag::kNull;
}

}  // namespace quillon::objects
