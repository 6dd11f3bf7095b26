#include "plugin/exchange/url_encoding.h"

#include <cstring>
#include <optional>
#include <string_view>

#include "plugin/exchange/field_collection.h"
#include "plugin/model/field_tree.h"

namespace quillform {

namespace {

constexpr std::uint32_t kPieceSize = 1024;
constexpr std::uint32_t kLongestEscape = 6;  // a line end

// What was escaped and not written yet. A piece is written while one more escape still fits.
struct EscapedPiece {
  StreamHandle stream;
  std::uint32_t count;
  char bytes[kPieceSize + kLongestEscape];
};

void WritePiece(EscapedPiece* piece) {
  if (Support->WriteStream(piece->stream, piece->bytes, piece->count) != piece->count) {
    Raise(quillon::kErrorWriteFile);
  }
  piece->count = 0;
}

void Append(EscapedPiece* piece, std::string_view bytes) {
  std::memcpy(piece->bytes + piece->count, bytes.data(), bytes.size());
  piece->count += static_cast<std::uint32_t>(bytes.size());
  if (piece->count - 1 + kLongestEscape > kPieceSize) WritePiece(piece);
}

// Not isalnum: the escape must not depend on the language of the user interface.
bool StandsForItself(char byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
         (byte >= '0' && byte <= '9');
}

void AppendHex(EscapedPiece* piece, char byte) {
  constexpr const char* kDigits = "0123456789abcdef";
  const auto value = static_cast<unsigned char>(byte);
  const char escape[] = {'%', kDigits[value >> 4], kDigits[value & 0xF]};
  Append(piece, {escape, sizeof escape});
}

void Escape(EscapedPiece* piece, std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char byte = text[i];
    if (StandsForItself(byte)) {
      Append(piece, {&byte, 1});
    } else if (byte == ' ') {
      Append(piece, "+");
    } else if (byte == '\r' || byte == '\n') {
      if (byte == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
      Append(piece, "%0d%0a");
    } else {
      AppendHex(piece, byte);
    }
  }
}

// None for a value that cannot be told in a pair. The bytes are the value's.
std::optional<std::string_view> TextOfValue(ObjectHandle value) {
  switch (Objects->TypeOf(value)) {
    case ObjectKind::kNull:
      return "";
    case ObjectKind::kName:
      return Core->NameFromAtom(Objects->NameValue(value));
    case ObjectKind::kString: {
      std::uint32_t length = 0;
      const char* bytes = Objects->StringValue(value, &length);
      return std::string_view(bytes, length);
    }
    default:
      return std::nullopt;
  }
}

}  // namespace

void WritePair(PairOutput* output, const char* name, ObjectHandle value) {
  const std::optional<std::string_view> text = TextOfValue(value);
  if (!text) return;
  EscapedPiece piece{output->stream, 0, {}};
  if (output->holdsData) Append(&piece, "&");
  output->holdsData = true;
  Escape(&piece, name);
  Append(&piece, "=");
  Escape(&piece, *text);
  if (piece.count > 0) WritePiece(&piece);
}

void WriteURLEncoded(DocHandle doc, ObjectHandle list, bool inclusion, bool includeEmpty,
                     StreamHandle stream) {
  LoadAllFields(doc);
  PairOutput output{stream, false};
  FieldCollection collection;
  collection.includeEmpty = includeEmpty;
  collection.pairs = &output;
  SelectFields(doc, list, inclusion, &collection);
}

}  // namespace quillform
