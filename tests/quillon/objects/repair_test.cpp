// What is wrong in a file is put right, told once, and not written again.
#include <algorithm>

#include "tests/quillon/objects/file_text.h"
#include "tests/support/test_host.h"

namespace quillon::test {
namespace {

bool Tells(ObjectDoc doc, const std::string& words, std::uint32_t number) {
  const std::vector<FileWarning>& warnings = PdfWarnings(doc);
  return std::any_of(warnings.begin(), warnings.end(), [&](const FileWarning& warning) {
    return warning.objectNumber == number && warning.text.find(words) != std::string::npos;
  });
}

// Two objects more than the catalog and an empty tree: 3 and 4, whose text is given.
std::string FileWithTwo(const std::string& third, const std::string& fourth) {
  FileText file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R/Entry 3 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[]/Count 0>>");
  file.Object(3, third);
  file.Object(4, fourth);
  file.Table("/Size 5/Root 1 0 R");
  return file.bytes;
}

// What a rewritten file has after something else of it was changed.
std::string SavedAfterChange(ObjectDoc doc) {
  PutText(doc, objects::DocRoot(doc), "Changed", "x");
  return PdfToBytes(doc);
}

TEST(Repair, LastOfTwoEntriesCountsAndIsWrittenAlone) {
  std::string many = "<<";
  for (int i = 0; i < 100; ++i) many += "/K" + std::to_string(i) + " " + std::to_string(i);
  const OpenedDocument file(FileWithTwo("<</A 1/B 2/A 3>>", many + "/K7 700>>"));
  EXPECT_EQ(objects::IntegerValue(Get(file.At(3), "A")), 3);
  EXPECT_EQ(objects::IntegerValue(Get(file.At(4), "K7")), 700);
  EXPECT_TRUE(Tells(file.doc, "entry A twice", 3));
  EXPECT_TRUE(Tells(file.doc, "entry K7 twice", 4));
  const OpenedDocument again(SavedAfterChange(file.doc));
  EXPECT_EQ(objects::IntegerValue(Get(again.At(3), "A")), 3);
  EXPECT_EQ(objects::IntegerValue(Get(again.At(4), "K7")), 700);
  EXPECT_TRUE(PdfWarnings(again.doc).empty());
}

TEST(Repair, WhatFollowsAnObjectAndIsNoneOfItIsNotWritten) {
  const OpenedDocument lone(FileWithTwo("<</Length 3>>\nstream\rabc\nendstream", ""));
  EXPECT_NE(SavedAfterChange(lone.doc).find("stream\nabc\nendstream"), std::string::npos);
  const OpenedDocument file(FileWithTwo("<</Length 3>>\nabc\nendstream", ""));
  EXPECT_EQ(objects::TypeOf(file.At(3)), ObjectKind::kDict);
  EXPECT_EQ(objects::TypeOf(file.At(4)), ObjectKind::kNull);
  const std::string saved = SavedAfterChange(file.doc);
  EXPECT_TRUE(Tells(file.doc, "no end of its own", 3));
  EXPECT_TRUE(Tells(file.doc, "empty", 4));
  EXPECT_NE(saved.find("\n3 0 obj\n<</Length 3>>\nendobj\n"), std::string::npos);
  EXPECT_NE(saved.find("\n4 0 obj\nnull\nendobj\n"), std::string::npos);
}

// What is no PDF is read as best it can be; how it is written again shows how.
TEST(Repair, OneWrongTokenCostsNoMoreThanItself) {
  const std::map<std::string, std::string> texts = {
      {"<</A True/B 1>>", "<</A null/B 1>>"},
      {"<</A -/B 1.5e3/C --2>>", "<</A 0/B 1.5/C -2>>"},
      {"<</Lone/V(x)/B 1>>", "<</V(x)/B 1>>"},
      {"<</A 1 (x)/B 1/C>>", "<</A 1/B 1>>"},
      {"<</A[1 } 2 ) 3 > ]>>", "<</A[1 2 3]>>"},
      {"<</A[1 2/B[3>>", "<</A[1 2/B[3]]>>"},
      {"<</A<</B 1>/C 2>>", "<</A<</B 1>>/C 2>>"},
      {"<</A<41zz42>/B 1>>", "<</A(AB)/B 1>>"},
      {"<</A<4142/B 1>>", "<</A(AB)/B 1>>"},
      {"<</A(b(c)/B 1>>", "<</A(b\\(c)/B 1>>"},
      {"<</A 1/B<</C 2", "<</A 1/B<</C 2>>>>"},
  };
  for (const auto& [wrong, right] : texts) {
    SCOPED_TRACE(wrong);
    const OpenedDocument file(FileWithTwo(wrong, "<</B 1>>"));
    const std::string saved = SavedAfterChange(file.doc);
    EXPECT_NE(saved.find("\n3 0 obj\n" + right + "\nendobj"), std::string::npos) << saved;
    EXPECT_TRUE(Tells(file.doc, "", 3));
    EXPECT_TRUE(PdfWarnings(OpenedDocument(saved).doc).empty());
  }
}

TEST(Repair, AnObjectThatCannotBeReadIsNullAndNotLostInTheOnlyCopy) {
  const OpenedDocument file(FileWithTwo("<</A (never ended>>", "<</Kept 3 0 R>>"));
  EXPECT_EQ(objects::TypeOf(file.At(3)), ObjectKind::kNull);
  EXPECT_TRUE(Tells(file.doc, "is read as null", 3));
  const OpenedDocument again(SavedAfterChange(file.doc));
  EXPECT_TRUE(Tells(file.doc, "it was left out", 3));
  EXPECT_EQ(objects::TypeOf(Get(again.At(4), "Kept")), ObjectKind::kNull);
  EXPECT_TRUE(PdfWarnings(again.doc).empty());
  SaveOptions options;
  options.keepAll = true;
  EXPECT_EQ(RaisedBy([&] { PdfToBytes(file.doc, options); }), kErrorBadObject);
}

TEST(Repair, ListsOfFieldsKeepFieldsOnly) {
  FileText text;
  text.Object(1, "<</Type/Catalog/Pages 2 0 R/QuillForm<</Fields[null 3 0 R 7(x)3 0 R 9 0 R]>>>>");
  text.Object(2, "<</Type/Pages/Kids[]/Count 0>>");
  text.Object(3, "<</T(a)/Kids[4 0 R 4 0 R 3 0 R 8]>>");
  text.Object(4, "<</Parent 3 0 R>>");
  text.Table("/Size 5/Root 1 0 R");
  const OpenedDocument file(text.bytes);
  const std::string saved = SavedAfterChange(file.doc);
  EXPECT_TRUE(Tells(file.doc, "no field", 1));
  EXPECT_TRUE(Tells(file.doc, "listed twice", 3));
  EXPECT_NE(saved.find("/Fields[3 0 R]"), std::string::npos);
  EXPECT_NE(saved.find("/Kids[4 0 R 3 0 R]"), std::string::npos) << "whoever reads it ends circles";
}

TEST(Repair, WarningsAreToldOnceAndNotWithoutEnd) {
  FileText text;
  text.Object(1, "<</Type/Catalog>>");
  std::string many = "[";
  for (int i = 0; i < 3000; ++i)
    many += "<</A 1/A 2/K" + std::to_string(i) + " 1/K" + std::to_string(i) + " 2>>";
  text.Object(2, many + "]");
  text.Table("/Size 3/Root 1 0 R");
  const OpenedDocument file(text.bytes);
  file.At(2);
  EXPECT_LE(PdfWarnings(file.doc).size(), 1001u);
  const auto& all = PdfWarnings(file.doc);
  EXPECT_EQ(std::count_if(all.begin(), all.end(),
                          [](const FileWarning& warning) {
                            return warning.text.find("entry A twice") != std::string::npos;
                          }),
            1);
}

}  // namespace
}  // namespace quillon::test
