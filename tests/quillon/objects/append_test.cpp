// Updates behind the bytes that a file already has.
#include "tests/quillon/objects/file_text.h"
#include "tests/support/test_host.h"

namespace quillon::test {
namespace {

constexpr SaveOptions kAppend{true};

std::string Appended(const std::string& bytes, const std::string& text) {
  const OpenedDocument file(bytes);
  PutText(file.doc, file.At(3), "T", text);
  return PdfToBytes(file.doc, kAppend);
}

std::string FileWithStream() {
  FileText file;
  file.Object(1, "<</Type/Catalog/Entry 3 0 R>>");
  file.Object(3, "<</T(old)>>");
  const std::size_t start = file.bytes.size();
  const std::string fields = XrefFields(0, 0, 255) + XrefFields(1, file.offsets[1], 0) +
                             XrefFields(0, 0, 0) + XrefFields(1, file.offsets[3], 0) +
                             XrefFields(1, start, 0);
  file.Stream(4, "/Type/XRef/W[1 2 1]/Size 5/Root 1 0 R/Info 3 0 R", fields);
  file.End(start);
  return file.bytes;
}

TEST(Append, KeepsTheOldBytesAndAddsOnlyWhatChanged) {
  const std::string table = FileWithObject("<</T(old)>>", "/Info 3 0 R");
  const std::string junk = "Received: x\n" + table;
  const std::string noLineEnd = table.substr(0, table.size() - 1);
  for (const std::string& original : {table, junk, noLineEnd, FileWithStream()}) {
    std::string bytes = original;
    std::size_t growth = 0;
    for (int i = 0; i < 4; ++i) {
      const std::string text = "value " + std::to_string(i);
      const std::string appended = Appended(bytes, text);
      ASSERT_EQ(appended.substr(0, bytes.size()), bytes);
      if (i > 1) {
        EXPECT_NEAR(double(appended.size() - bytes.size()), double(growth), 20);
      }
      growth = appended.size() - bytes.size();
      EXPECT_LT(growth, 500u);
      bytes = appended;
      const OpenedDocument again(bytes);
      EXPECT_EQ(Text(Get(again.At(3), "T")), text);
      EXPECT_EQ(ObjectNumberOf(Get(TrailerOf(again.doc), "Info")), 3u);
      EXPECT_TRUE(PdfWarnings(again.doc).empty());
    }
    const bool hadTable = original.find("\nxref\n") != std::string::npos;
    EXPECT_EQ(bytes.find("\nxref\n", original.size()) != std::string::npos, hadTable);
  }
}

TEST(Append, IsRefusedWhereTheCrossReferencesAreOfNoUse) {
  std::string bytes = FileWithObject("<</T(old)>>");
  bytes.replace(bytes.rfind("startxref"), 9, "endhere..");
  EXPECT_EQ(RaisedBy([&] { Appended(bytes, "new"); }), kErrorNotOffered);
}

}  // namespace
}  // namespace quillon::test
