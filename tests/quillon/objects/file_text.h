// Files written out by hand, with the offsets kept for the cross-references, and short spellings
// for looking at what was read from them.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "quillon/core/operations.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"

namespace quillon::test {

struct FileText {
  std::string bytes = "%PDF-1.5\n%\xE2\xE3\xCF\xD3\n";
  std::map<int, std::size_t> offsets;  // of the objects since the last cross-references

  void Object(int number, const std::string& text) {
    offsets[number] = bytes.size();
    bytes += std::to_string(number) + " 0 obj\n" + text + "\nendobj\n";
  }
  void Stream(int number, const std::string& entries, const std::string& data) {
    Object(number, "<<" + entries + "/Length " + std::to_string(data.size()) + ">>\nstream\n" +
                       data + "\nendstream");
  }
  // A table of the objects since the last one; answers its offset. `freed` are listed as free.
  std::size_t Table(const std::string& trailer, const std::vector<int>& freed = {0}) {
    const std::size_t start = bytes.size();
    std::map<int, std::string> lines;
    for (const auto& [number, offset] : offsets) lines[number] = Line(offset, 0, 'n');
    for (const int number : freed) lines[number] = Line(0, number == 0 ? 65535 : 1, 'f');
    bytes += "xref\n";
    for (const auto& [number, line] : lines) bytes += std::to_string(number) + " 1\n" + line;
    bytes += "trailer\n<<" + trailer + ">>\n";
    End(start);
    return start;
  }
  void End(std::size_t start) {
    bytes += "startxref\n" + std::to_string(start) + "\n%%EOF\n";
    offsets.clear();
  }

  static std::string Line(std::size_t place, int generation, char kind) {
    std::string offset = std::to_string(place);
    std::string counted = std::to_string(generation);
    return std::string(10 - offset.size(), '0') + offset + " " +
           std::string(5 - counted.size(), '0') + counted + " " + kind + "\r\n";
  }
};

// One entry of a cross-reference stream with /W[1 2 1].
inline std::string XrefFields(int type, std::size_t second, int third) {
  return {static_cast<char>(type), static_cast<char>(second >> 8), static_cast<char>(second & 0xFF),
          static_cast<char>(third)};
}

// A document that is closed with its scope.
struct OpenedDocument {
  ObjectDoc doc;
  explicit OpenedDocument(ObjectDoc opened) : doc(opened) {}
  explicit OpenedDocument(const std::string& bytes) : doc(OpenPdfBytes(bytes, {}, nullptr)) {}
  ~OpenedDocument() { ClosePdf(doc); }
  OpenedDocument(const OpenedDocument&) = delete;
  OpenedDocument& operator=(const OpenedDocument&) = delete;

  ObjectHandle Root() const { return objects::DocRoot(doc); }
  ObjectHandle At(std::uint32_t number) const { return ObjectByNumber(doc, number); }
};

inline Atom Name(const char* text) { return core::AtomFromName(text); }
inline ObjectHandle Get(ObjectHandle dict, const char* key) {
  return objects::DictGet(dict, Name(key));
}
inline std::string Text(ObjectHandle string) {
  std::uint32_t length = 0;
  const char* bytes = objects::StringValue(string, &length);
  return {bytes, length};
}
inline ObjectHandle NewText(ObjectDoc doc, const std::string& text) {
  return objects::NewString(doc, 0, text.data(), static_cast<std::uint32_t>(text.size()));
}
inline void PutText(ObjectDoc doc, ObjectHandle dict, const char* key, const std::string& text) {
  objects::DictPut(dict, Name(key), NewText(doc, text));
}

// A small document: a catalog with Entry = object 3, which is `text`.
inline std::string FileWithObject(const std::string& text, const std::string& trailer = "") {
  FileText file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R/Entry 3 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[]/Count 0>>");
  file.Object(3, text);
  file.Table("/Size 4/Root 1 0 R" + trailer);
  return file.bytes;
}

}  // namespace quillon::test
