// Files made to hurt end with an error before they take much time or memory.
#include "quillon/objects/filters.h"
#include "tests/quillon/objects/file_text.h"
#include "tests/support/test_host.h"

namespace quillon::test {
namespace {

constexpr const char* kCatalog = "%PDF-1.7\n1 0 obj<</Type/Catalog>>endobj\n";

std::string Repeated(const std::string& text, std::size_t size) {
  std::string all;
  while (all.size() < size) all += text;
  return all;
}

// Numbered objects of one text.
std::string Objects(const std::string& text, int count) {
  std::string all;
  for (int i = 2; i < count; ++i) all += std::to_string(i) + " 0 obj" + text;
  return all;
}

// Opens, touches every object and writes the document; the code of the failure.
FailureCode FailureOf(const std::string& bytes) {
  return RaisedBy([&] {
    const OpenedDocument file(bytes);
    PutText(file.doc, file.Root(), "T", "changed");
    PdfToBytes(file.doc);
    for (std::uint32_t number = 1; number < ObjectCount(file.doc); ++number) file.At(number);
  });
}

TEST(Hostile, TextsThatEachObjectStartsAnewAreNotReadWithoutEnd) {
  const std::string trailer = "trailer<</Root 1 0 R>>";
  for (const char* text : {"(", "<</A (", "<</A <"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(FailureOf(kCatalog + Objects(text, 100000)), kErrorBadFile);
  }
  EXPECT_EQ(FailureOf(kCatalog + Repeated("trailer(", 1 << 20)), kErrorNone);
}

TEST(Hostile, WhatIsNestedTooDeepReadsNull) {
  for (const char* text : {"[", "<</A"}) {
    const OpenedDocument file(std::string(kCatalog) + "2 0 obj" + Repeated(text, 1 << 20) +
                              "\nendobj\ntrailer<</Root 1 0 R>>");
    EXPECT_EQ(objects::TypeOf(file.At(2)), ObjectKind::kNull);
    EXPECT_NE(PdfWarnings(file.doc).back().text.find("nested too deep"), std::string::npos);
  }
}

std::string ObjectStream(int number, const std::string& data, int count, std::size_t first) {
  return std::to_string(number) + " 0 obj<</Type/ObjStm/Filter/FlateDecode/N " +
         std::to_string(count) + "/First " + std::to_string(first) + "/Length " +
         std::to_string(data.size()) + ">>stream\n" + data + "\nendstream endobj\n";
}

TEST(Hostile, ObjectStreamsOfTooMuchAreRefused) {
  const std::string one = objects::EncodeFlate(std::string(std::size_t{40} << 20, ' '));
  std::string bytes = kCatalog;
  for (int i = 10; i < 16; ++i) bytes += ObjectStream(i, one, 1, 10);
  EXPECT_EQ(FailureOf(bytes + "trailer<</Root 1 0 R>>"), kErrorBadFile);
  const std::string larger = objects::EncodeFlate(std::string(std::size_t{120} << 20, ' '));
  const OpenedDocument file(kCatalog + ObjectStream(10, larger, 1, 10) + "trailer<</Root 1 0 R>>");
  EXPECT_FALSE(PdfWarnings(file.doc).empty()) << "a stream beyond the bound was decoded";
}

TEST(Hostile, MembersThatAreTheSameBytesAreNotReadAgainAndAgain) {
  std::string index;
  for (int i = 20; i < 4020; ++i) index += std::to_string(i) + " 0 ";
  const std::string array = "[" + Repeated("()", 200000) + "]";
  EXPECT_EQ(FailureOf(kCatalog +
                      ObjectStream(10, objects::EncodeFlate(index + array), 4000, index.size()) +
                      "trailer<</Root 1 0 R>>"),
            kErrorBadFile);
}

TEST(Hostile, CrossReferencesCannotListMoreThanTheFileHolds) {
  const std::string entries = objects::EncodeFlate(std::string(3 * 4000000, '\1'));
  std::string bytes = kCatalog;
  const std::size_t start = bytes.size();
  bytes += "2 0 obj<</Type/XRef/W[1 1 1]/Size 4000000/Root 1 0 R/Filter/FlateDecode/Length " +
           std::to_string(entries.size()) + ">>stream\n" + entries + "\nendstream endobj\n" +
           "startxref\n" + std::to_string(start) + "\n%%EOF";
  const OpenedDocument file(bytes);
  EXPECT_LT(ObjectCount(file.doc), 10u) << "the objects that are there were not looked for";
  EXPECT_FALSE(PdfWarnings(file.doc).empty());
}

}  // namespace
}  // namespace quillon::test
