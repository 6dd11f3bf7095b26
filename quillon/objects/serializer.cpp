#include "quillon/objects/serializer.h"

#include <algorithm>

#include "quillon/objects/characters.h"
#include "quillon/objects/dictionary.h"
#include "quillon/objects/form_key.h"
#include "quillon/objects/load.h"
#include "quillon/objects/numbers.h"
#include "quillon/objects/security_handler.h"

namespace quillon::objects {
namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

// Programs may nest deeper than files can; what could not be read back is not written.
struct Writing {
  Document& doc;
  std::string* out;
  int depth;
  ObjectCipher cipher;
};

// A blank where two regular characters would meet, or one would become part of an empty name.
void Separate(std::string* out) {
  if (out->empty()) return;
  if (IsRegular(out->back()) || out->back() == '/') out->push_back(' ');
}

void AppendHexByte(std::string* out, unsigned char byte) {
  out->push_back(kHexDigits[byte >> 4]);
  out->push_back(kHexDigits[byte & 15]);
}

bool IsPrintable(char c) { return c >= ' ' && c <= '~'; }

void AppendLiteral(std::string* out, std::string_view bytes) {
  out->push_back('(');
  for (const char c : bytes) {
    if (c == '(' || c == ')' || c == '\\') {
      out->push_back('\\');
      out->push_back(c);
    } else if (IsPrintable(c)) {
      out->push_back(c);
    } else {
      const unsigned byte = static_cast<unsigned char>(c);
      out->push_back('\\');
      for (const unsigned shift : {6u, 3u, 0u}) {
        out->push_back(static_cast<char>('0' + (byte >> shift & 7)));
      }
    }
  }
  out->push_back(')');
}

void AppendNested(const Writing& to, const Value& value);

void AppendDict(const Writing& to, std::uint32_t number) {
  Cell& dict = CellAt(to.doc.cells, number);
  const bool isCatalog = to.doc.root != 0 && dict.parent == (kIndirectParent | to.doc.root);
  *to.out += "<<";
  for (std::uint32_t i = 0; i < dict.size; ++i) {
    const DictEntry& entry = EntriesOf(dict)[i];
    const NameCode key = isCatalog ? WrittenCatalogKey(to.doc, entry.key) : entry.key;
    AppendName(to.out, NameText(to.doc, key));
    if (to.cipher.protection != nullptr && IsPlainEntry(to.doc, number, entry.key)) {
      AppendNested({to.doc, to.out, to.depth, {nullptr, 0, 0}}, entry.value);
    } else {
      AppendNested(to, entry.value);
    }
  }
  *to.out += ">>";
}

void AppendArray(const Writing& to, std::uint32_t number) {
  Cell& array = CellAt(to.doc.cells, number);
  to.out->push_back('[');
  for (std::uint32_t i = 0; i < array.size; ++i) AppendNested(to, ElementsOf(array)[i]);
  to.out->push_back(']');
}

void AppendStringCell(const Writing& to, std::uint32_t number) {
  const Cell& cell = CellAt(to.doc.cells, number);
  const Protection* protection = to.cipher.protection;
  if (protection != nullptr && protection->strings != CryptMethod::kIdentity) {
    const std::string bytes = EncryptedString(to.cipher, StringBytes(to.doc, number));
    return AppendString(to.out, bytes, true);
  }
  const std::string_view text(TextOf(cell), cell.size);
  if (cell.raw) {
    *to.out += text;
    return;
  }
  const auto unprintable =
      std::count_if(text.begin(), text.end(), [](char c) { return !IsPrintable(c); });
  AppendString(to.out, text, static_cast<std::size_t>(unprintable) * 4 > text.size());
}

void AppendCell(const Writing& to, std::uint32_t number) {
  const Cell& cell = CellAt(to.doc.cells, number);
  if (to.depth > kMaxNesting) Fail(kErrorBadObject, "Objects are nested too deep to be written.");
  const Writing inner{to.doc, to.out, to.depth + 1, to.cipher};
  switch (cell.kind) {
    case CellKind::kString:
      return AppendStringCell(to, number);
    case CellKind::kDict:
      return AppendDict(inner, number);
    case CellKind::kArray:
      return AppendArray(inner, number);
    case CellKind::kStream:
      return AppendDict(inner, cell.capacity);
    case CellKind::kInteger:
    case CellKind::kFixed:
      Separate(to.out);
      to.out->append(TextOf(cell), cell.size);
      return;
    case CellKind::kFree:
      break;
  }
  Fail(kErrorBadObject, "An object that was destroyed stands in another one.");
}

void AppendReference(const Writing& to, const Value& value) {
  Separate(to.out);
  AppendInteger(to.out, value.payload);
  to.out->push_back(' ');
  AppendInteger(to.out, value.generation);
  *to.out += " R";
}

void AppendNested(const Writing& to, const Value& value) {
  switch (value.tag) {
    case ValueTag::kNull:
      Separate(to.out);
      *to.out += "null";
      return;
    case ValueTag::kInteger:
      Separate(to.out);
      return AppendInteger(to.out, static_cast<std::int32_t>(value.payload));
    case ValueTag::kFixed:
      Separate(to.out);
      return AppendFixed(to.out, static_cast<Fixed>(value.payload));
    case ValueTag::kBoolean:
      Separate(to.out);
      *to.out += value.payload != 0 ? "true" : "false";
      return;
    case ValueTag::kName:
      return AppendName(to.out, NameText(to.doc, value.payload));
    case ValueTag::kReference:
      if (value.payload == kLentNumber) return AppendNested(to, LoadObject(to.doc, kLentNumber));
      return AppendReference(to, value);
    case ValueTag::kCell:
      return AppendCell(to, value.payload);
  }
}

void SetLength(Document& doc, std::uint32_t dict, std::size_t length) {
  const auto wanted = static_cast<std::int32_t>(length);
  if (IntegerEntry(doc, dict, "Length", -1) == wanted) return;
  SetEntry(doc, dict, NameFromText(doc, "Length"), IntegerOf(wanted));
}

}  // namespace

void AppendName(std::string* out, std::string_view name) {
  out->push_back('/');
  for (const char c : name) {
    if (IsRegular(c) && c > ' ' && c <= '~' && c != '#') {
      out->push_back(c);
    } else {
      out->push_back('#');
      AppendHexByte(out, static_cast<unsigned char>(c));
    }
  }
}

void AppendString(std::string* out, std::string_view bytes, bool asHex) {
  if (!asHex) return AppendLiteral(out, bytes);
  out->push_back('<');
  for (const char c : bytes) AppendHexByte(out, static_cast<unsigned char>(c));
  out->push_back('>');
}

void AppendValue(Document& doc, std::string* out, const Value& value) {
  AppendNested({doc, out, 0, {nullptr, 0, 0}}, value);
}

void AppendObject(Document& doc, std::string* out, std::uint32_t number) {
  const Value value = LoadObject(doc, number);
  AppendInteger(out, number);
  out->push_back(' ');
  AppendInteger(out, FindSlot(doc.objects, number)->generation);
  *out += " obj\n";
  const ObjectCipher cipher = CipherFor(doc, number);
  const Writing to{doc, out, 0, cipher};
  const std::uint32_t stream = CellOf(doc, value, CellKind::kStream);
  if (stream == 0) {
    AppendNested(to, value);
  } else {
    std::string_view data = StoredBytes(doc, stream, number);
    const std::uint32_t dict = CellAt(doc.cells, stream).capacity;
    std::string encrypted;
    if (cipher.protection != nullptr) {
      encrypted = EncryptedData(doc, cipher, dict, data);
      data = encrypted;
    }
    SetLength(doc, dict, data.size());
    AppendNested(to, value);
    *out += "\nstream\n";
    *out += data;
    *out += "\nendstream";
  }
  *out += "\nendobj\n";
}

}  // namespace quillon::objects
