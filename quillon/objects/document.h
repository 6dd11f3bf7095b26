// A document of objects, and the handles that name its parts.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "quillon/core/failure.h"
#include "quillon/objects/cells.h"
#include "quillon/objects/object_table.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/objects/replace_file.h"
#include "quillon/objects/source.h"

namespace quillon::objects {

// Containers nest in files a dozen levels deep; this bounds what recursion costs in stack.
inline constexpr int kMaxNesting = 256;

// An object stream, decoded. The objects parsed from it point into `bytes`.
struct ObjectStream {
  struct Member {
    std::uint32_t number;
    std::uint32_t start;  // in `bytes`
  };
  std::string bytes;
  std::vector<Member> members;
  bool spoiled = false;  // not written any more: its members become objects of their own
};

// What reading the file has cost so far (limits.h).
struct ReadingCosts {
  std::uint64_t work = 0;     // bytes gone over
  std::uint64_t kept = 0;     // bytes of decoded object streams
  std::uint64_t decoded = 0;  // bytes of other streams
  std::uint64_t entries = 0;  // of cross-references
};

struct Protection;  // security_handler.h
struct Unlisted;    // unlisted.h

struct ObjectPlace {
  std::uint64_t position;  // from the header on
  std::uint16_t generation;
};

struct Document {
  std::uint32_t number = 0;        // in handles, and as ObjectDoc
  bool isPdf = true;               // not FDF
  SourceBytes source;              // the whole file
  std::string file;                // that it was read from, empty for none
  std::optional<FileStamp> stamp;  // of the file when it was read or last written
  std::uint64_t headerAt = 0;
  std::string_view text;  // the file from its header on: what offsets count from
  std::string header;     // the first line

  Pool pool;
  CellTable cells;
  ObjectTable objects;
  std::vector<std::string> furtherNames;  // NameCode - kFirstFurtherName
  std::unordered_map<std::string, NameCode> furtherNameCodes;
  std::unordered_map<std::uint32_t, std::unique_ptr<ObjectStream>> objectStreams;

  std::uint32_t trailer = 0;  // cell of the trailer dictionary; its parent is "object 0"
  std::optional<std::uint64_t> startXref;  // the newest cross-references, from the header on
  std::uint32_t root = 0;                  // object number of the catalog, 0 when it is direct
  bool xrefStream = false;                 // the newest cross-references are a stream
  bool scanned = false;                    // the objects were found by scanning
  std::vector<std::uint64_t> sections;     // of cross-references, where each stands
  std::unique_ptr<Unlisted> unlisted;      // what the file has beyond them, once it is asked for
  std::unordered_map<std::uint32_t, ObjectPlace> older;  // of a scanned file: the versions before
  NameCode formKey = kNoAtom;  // the file's own key of the form dictionary, kNoAtom: QuillForm

  std::string password;                          // given to open it; forgotten once it is open
  std::shared_ptr<const Protection> protection;  // of an encrypted document, once its key is known

  bool changed = false;       // differs from `source`
  bool modified = false;      // differs from what was last saved
  std::uint64_t changes = 0;  // rises with every change
  std::vector<FileWarning> warnings;
  std::unordered_set<std::string> warned;  // so that each thing is told once
  ReadingCosts costs;
  std::optional<std::size_t> lastEndStream;  // where the last "endstream" stands, npos for none

  std::vector<Value> elementStack;  // of the arrays and dictionaries being parsed
  std::vector<DictEntry> entryStack;
};

// The registry. Numbers are given out in turn, so the handles of a closed document stay invalid
// for a long time.
Document& AddDocument();
void RemoveDocument(Document& doc);
Document& DocumentOfHandle(ObjectDoc doc);     // throws kErrorBadParameter
Document* FindDocument(std::uint32_t number);  // null when closed
ObjectDoc HandleOfDocument(const Document& doc);

// What a handle stands for.
struct Target {
  Document* doc;         // null for null and direct numbers, booleans and names
  Value value;           // never a reference
  std::uint32_t number;  // of an indirect object, else 0
};

// Throws kErrorBadObject for a handle of a closed document or a destroyed object.
Target TargetOf(ObjectHandle object);

// The handle for a value held in a container: references are followed; what they name is read.
ObjectHandle HandleOf(Document& doc, const Value& value);
ObjectHandle HandleOfCell(Document& doc, std::uint32_t cell);
ObjectHandle HandleOfObject(Document& doc, std::uint32_t number);  // which must be in use

ObjectKind KindOf(Document* doc, const Value& value);

// Records that a cell or an object was changed.
void MarkCellChanged(Document& doc, std::uint32_t cell);
void MarkObjectChanged(Document& doc, std::uint32_t number);

// A number of its own for a new indirect object. The value's cell gets it as its parent.
std::uint32_t AddObject(Document& doc, const Value& value);

// Each text is told once for an object, and kMaxWarnings in all (limits.h).
void Warn(Document& doc, const std::string& text, std::uint32_t object, std::int64_t offset);
bool WarningsAreFull(const Document& doc);

// The offset in the whole file of a place in doc.text.
std::int64_t FileOffset(const Document& doc, std::uint64_t position);

// Where an indirect object stands in the file; kNoOffset for those that are not in it. An object in
// an object stream stands where its stream does.
std::int64_t ObjectOffset(const Document& doc, std::uint32_t number);

// Whether a header line names a version: "%PDF-1.7", "%FDF-1.2".
bool HasVersion(std::string_view header);

// Names. The text stays valid until the document closes.
NameCode NameFromText(Document& doc, std::string_view text);
std::string_view NameText(const Document& doc, NameCode name);

}  // namespace quillon::objects
