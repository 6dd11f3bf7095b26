// Replacing the marked section of an appearance that somebody else drew (ISO 32000-1, 14.6 and
// 12.7.3.3), while the host copies the old content into a new stream.
#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string_view>

#include "plugin/appearance/font_resources.h"
#include "plugin/appearance/form_parts.h"
#include "plugin/appearance/form_stream.h"
#include "plugin/host/owned_files.h"
#include "plugin/model/field_dicts.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

constexpr std::string_view kBegin = "BMC";
constexpr std::string_view kEnd = "EMC";
constexpr std::size_t kTagLength = 2;  // of the shortest tag, a slash and a letter

// What is shorter is damaged or says nothing.
constexpr std::uint32_t kShortestContent = 16;

// The writer's text: what opens the section (its last byte is the white space after the operator),
// and what follows up to the end of the section.
struct MarkedText {
  std::string_view marker;
  std::string_view section;
};

enum class Phase : std::uint8_t {
  kCopying,     // old bytes up to and including the marker
  kSkipping,    // the old section; nothing is produced
  kInserting,   // the new section
  kSeparating,  // a line feed
  kFinishing,   // the rest of the old bytes
  kFailed       // the old content has no complete section
};

struct SectionMerge {
  StreamHandle old;
  MarkedText text;
  Phase phase;
  std::size_t matched;  // bytes of the marker, then of the new section
  std::uint32_t produced;
  std::size_t chunkSize;
  std::size_t chunkAt;
  std::array<char, 4096> chunk;  // decoded bytes of the old stream
};

// ISO 32000-1, table 1.
bool IsWhite(char byte) {
  return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r' || byte == '\f' ||
         byte == '\0';
}

std::optional<MarkedText> SplitMarkedText(std::string_view text) {
  std::size_t end = text.rfind(kEnd);
  while (end != std::string_view::npos && end > 0 && !IsWhite(text[end - 1])) {
    end = text.rfind(kEnd, end - 1);
  }
  if (end == std::string_view::npos || end == 0) return std::nullopt;
  text = text.substr(0, end + kEnd.size());
  for (std::size_t at = text.find(kBegin, kTagLength); at != std::string_view::npos;
       at = text.find(kBegin, at + 1)) {
    const std::size_t after = at + kBegin.size();
    if (IsWhite(text[at - 1]) && after < text.size() && IsWhite(text[after])) {
      return MarkedText{text.substr(0, after + 1), text.substr(after + 1)};
    }
  }
  return std::nullopt;
}

bool ReadOld(SectionMerge& merge, char* byte) {
  if (merge.chunkAt == merge.chunkSize) {
    merge.chunkAt = 0;
    merge.chunkSize = Support->ReadStream(merge.old, merge.chunk.data(),
                                          static_cast<std::uint32_t>(merge.chunk.size()));
    if (merge.chunkSize == 0) return false;
  }
  *byte = merge.chunk[merge.chunkAt++];
  return true;
}

// Any white space stands for any other: programs end the operator's line in different ways.
void MatchMarker(SectionMerge& merge, char byte) {
  const std::string_view marker = merge.text.marker;
  const char expected = marker[merge.matched];
  if (byte == expected || (IsWhite(byte) && IsWhite(expected))) {
    ++merge.matched;
  } else if (merge.matched == 0 || !IsWhite(byte) || !IsWhite(marker[merge.matched - 1])) {
    merge.matched = byte == marker[0] ? 1 : 0;
  }
  if (merge.matched == marker.size()) {
    merge.matched = 0;
    merge.phase = Phase::kSkipping;
  }
}

// The bytes of a literal string whose opening parenthesis has been read.
void SkipString(SectionMerge& merge) {
  char byte;
  for (int depth = 1; depth > 0 && ReadOld(merge, &byte);) {
    if (byte == '\\') {
      ReadOld(merge, &byte);
    } else if (byte == '(') {
      ++depth;
    } else if (byte == ')') {
      --depth;
    }
  }
}

// Passes over the old section and its end operator. False when the content ends before it.
bool SkipSection(SectionMerge& merge) {
  std::size_t matched = 0;
  bool fresh = true;  // white space, or the marker, stands before
  for (char byte; ReadOld(merge, &byte);) {
    if (IsWhite(byte)) {
      if (matched == kEnd.size()) {
        --merge.chunkAt;  // it belongs to what follows
        return true;
      }
      matched = 0;
      fresh = true;
      continue;
    }
    const bool goesOn = (fresh || matched > 0) && matched < kEnd.size() && byte == kEnd[matched];
    matched = goesOn ? matched + 1 : 0;
    fresh = false;
    if (byte == '(') SkipString(merge);
  }
  return matched == kEnd.size();
}

// The next byte of the merged content; false at its end.
bool NextByte(SectionMerge& merge, char* byte) {
  switch (merge.phase) {
    case Phase::kCopying:
      if (!ReadOld(merge, byte)) {
        merge.phase = Phase::kFailed;
        return false;
      }
      MatchMarker(merge, *byte);
      return true;
    case Phase::kSkipping:
      if (!SkipSection(merge)) {
        merge.phase = Phase::kFailed;
        return false;
      }
      merge.phase = Phase::kInserting;
      [[fallthrough]];
    case Phase::kInserting:
      *byte = merge.text.section[merge.matched++];
      if (merge.matched == merge.text.section.size()) {
        merge.phase = IsWhite(*byte) ? Phase::kFinishing : Phase::kSeparating;
      }
      return true;
    case Phase::kSeparating:
      *byte = '\n';
      merge.phase = Phase::kFinishing;
      return true;
    case Phase::kFinishing:
      return ReadOld(merge, byte);
    default:
      return false;
  }
}

std::uint32_t ProduceMerged(void* buffer, std::uint32_t size, void* clientData) {
  auto& merge = *static_cast<SectionMerge*>(clientData);
  auto* const bytes = static_cast<char*>(buffer);
  std::uint32_t count = 0;
  while (count < size && NextByte(merge, bytes + count)) ++count;
  merge.produced += count;
  return count;
}

struct ProducerCallback {
  ProducerCallback() : routine(MakeHostCallback<&ProduceMerged>()) {}
  ~ProducerCallback() {
    DropFailures([this] { Core->FreeCallback(routine); });
  }
  ProducerCallback(const ProducerCallback&) = delete;
  ProducerCallback& operator=(const ProducerCallback&) = delete;

  Callback routine;
};

// The old stream's own filter, or compression by size when it has none.
ObjectHandle AttributesLike(ObjectHandle oldStream, ObjectDoc doc, std::size_t length) {
  const ObjectHandle filter = Objects->DictGet(oldStream, key::Filter);
  if (IsNull(filter)) return ContentAttributes(doc, length);
  NewObject attributes(Objects->NewDict(doc, false, 1));
  NewObject copy(Objects->CopyObject(filter, doc));
  Objects->DictPut(attributes.handle, key::Filter, copy.handle);
  copy.Release();
  return attributes.Release();
}

// Null when the old content has no section to replace.
ObjectHandle NewMergedStream(ObjectHandle oldStream, ObjectDoc doc, const MarkedText& text,
                             std::size_t length) {
  const OwnedStream old(Objects->OpenStream(oldStream, quillon::kStreamDecoded));
  SectionMerge merge;
  merge.old = old.get();
  merge.text = text;
  merge.phase = Phase::kCopying;
  merge.matched = 0;
  merge.produced = 0;
  merge.chunkSize = 0;
  merge.chunkAt = 0;

  const ProducerCallback producer;
  const OwnedStream source(
      Support->OpenProcStream(reinterpret_cast<quillon::StreamProc>(producer.routine), &merge));
  NewObject attributes(AttributesLike(oldStream, doc, length));
  NewObject stream(Objects->NewStream(doc, source.get(), attributes.handle));
  attributes.Release();
  if (merge.phase != Phase::kFinishing || merge.produced < kShortestContent) return kNullObject;
  return stream.Release();
}

// The look's font, from the form's resources into those that the content is going to use.
void AddLookFont(ObjectHandle resources, ObjectDoc doc, const TextAppearance& look,
                 ObjectHandle formResources) {
  const Atom name = look.fontResource == kNoAtom ? ShortNameOf(look.baseFont) : look.fontResource;
  const ObjectHandle font = EntryOf(EntryOf(formResources, key::Font), name);
  if (!IsNull(EntryOf(EntryOf(resources, key::Font), name)) || IsNull(font)) return;
  PutCopy(EnsureDict(resources, key::Font, doc, 1), name, font);
}

void GiveResources(ObjectHandle oldDict, ObjectHandle dict, ObjectDoc doc,
                   const TextAppearance& look, ObjectHandle formResources) {
  const ObjectHandle resources = Objects->DictGet(oldDict, key::Resources);
  if (IsKind(resources, ObjectKind::kDict)) {
    AddLookFont(resources, doc, look, formResources);
    MoveEntry(oldDict, dict, key::Resources);
  } else if (IsKind(formResources, ObjectKind::kDict)) {
    NewObject copy(Objects->CopyObject(formResources, doc));
    Objects->DictPut(dict, key::Resources, copy.handle);
    copy.Release();
  }
}

}  // namespace

ObjectHandle MergeMarkedContent(ObjectHandle oldStream, ContentWriter& writer,
                                const TextAppearance& look, ObjectHandle formResources) {
  ObjectHandle result = kNullObject;
  DropFailures([&] {
    if (writer.lost) return;
    if (writer.text.empty()) {
      BeginMarkedContent(writer, key::Tx);
      EndMarkedContent(writer);
    }
    const std::optional<MarkedText> text = SplitMarkedText(writer.text);
    if (!text) return;
    const ObjectDoc doc = Objects->DocumentOf(oldStream);
    NewObject stream(NewMergedStream(oldStream, doc, *text, writer.text.size()));
    if (IsNull(stream.handle)) return;
    const ObjectHandle dict = Objects->StreamDict(stream.handle);
    // The text is laid out in the writer's box, which is turned already: with width and height
    // exchanged once more, the new text of a turned widget would fall outside it.
    PutBBox(dict, doc, writer.box);
    PutRotationMatrix(dict, doc, writer.rotation, BoxWidth(writer), BoxHeight(writer));
    GiveResources(Objects->StreamDict(oldStream), dict, doc, look, formResources);
    result = stream.Release();
  });
  return result;
}

}  // namespace quillform
