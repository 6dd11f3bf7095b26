// What is wrong in a file is put right, told once, and not written again.
#include <algorithm>

#include "tests/quillon/objects/file_text.h"

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

TEST(Repair, StreamsEndWhereTheyCanOnlyEnd) {
  struct Case {
    const char* what;
    const char* text;
  };
  const Case cases[] = {
      {"too short", "<</Length 2>>\nstream\nabcdef\nendstream"},
      {"too long", "<</Length 90>>\nstream\nabcdef\nendstream"},
      {"none", "<<>>\nstream\nabcdef\nendstream"},
      {"itself", "<</Length 3 0 R>>\nstream\nabcdef\nendstream"},
      {"no endstream", "<</Length 2>>\nstream\nabcdef"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.what);
    const OpenedDocument file(FileWithTwo(one.text, "<<>>\nstream\nother\nendstream"));
    EXPECT_EQ(DecodedStream(file.At(3)), "abcdef");
    EXPECT_TRUE(Tells(file.doc, "length of the stream", 3));
    const OpenedDocument again(SavedAfterChange(file.doc));
    EXPECT_EQ(DecodedStream(again.At(3)), "abcdef");
    EXPECT_EQ(DecodedStream(again.At(4)), "other");
    EXPECT_TRUE(PdfWarnings(again.doc).empty());
  }
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
  const OpenedDocument file(FileWithTwo("<</Length 3>>\nabc\nendstream", ""));
  EXPECT_EQ(objects::TypeOf(file.At(3)), ObjectKind::kDict);
  EXPECT_EQ(objects::TypeOf(file.At(4)), ObjectKind::kNull);
  const std::string saved = SavedAfterChange(file.doc);
  EXPECT_TRUE(Tells(file.doc, "no end of its own", 3));
  EXPECT_TRUE(Tells(file.doc, "empty", 4));
  EXPECT_NE(saved.find("\n3 0 obj\n<</Length 3>>\nendobj\n"), std::string::npos);
  EXPECT_NE(saved.find("\n4 0 obj\nnull\nendobj\n"), std::string::npos);
}

// Offsets are told of objects in the file; one in an object stream stands where that does.
TEST(Repair, TheCatalogThatWasFoundInAnObjectStreamIsToldAtItsPlace) {
  FileText text;
  text.Stream(2, "/Type/ObjStm/N 1/First 4", "1 0 <</Type/Catalog>>");
  const OpenedDocument file(text.bytes);
  const std::vector<FileWarning>& warnings = PdfWarnings(file.doc);
  const auto told = std::find_if(warnings.begin(), warnings.end(), [](const FileWarning& warning) {
    return warning.objectNumber == 1;
  });
  ASSERT_NE(told, warnings.end());
  EXPECT_EQ(told->offset, static_cast<std::int64_t>(text.offsets.at(2)));
}

TEST(Repair, AnObjectThatCannotBeReadIsLeftOutOfTheWrittenFile) {
  const OpenedDocument file(FileWithTwo("<</A >> @ ]]", "<</Kept 3 0 R>>"));
  const OpenedDocument again(SavedAfterChange(file.doc));
  EXPECT_TRUE(Tells(file.doc, "It was left out", 3));
  EXPECT_EQ(objects::TypeOf(Get(again.At(4), "Kept")), ObjectKind::kNull);
  EXPECT_TRUE(PdfWarnings(again.doc).empty());
}

// A page tree as written, and the kids of its root after a save.
std::vector<std::uint32_t> KidsAfterSave(const std::string& root, const std::string& page,
                                         std::vector<FileWarning>* told) {
  FileText text;
  text.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  text.Object(2, root);
  text.Object(3, page);
  text.Object(4, "<</Type/Annot/Subtype/Text/Rect[0 0 1 1]>>");
  text.Table("/Size 5/Root 1 0 R");
  const OpenedDocument file(text.bytes);
  const OpenedDocument again(SavedAfterChange(file.doc));
  *told = PdfWarnings(file.doc);
  EXPECT_EQ(PdfToBytes(again.doc).find("null"), std::string::npos);
  const ObjectHandle tree = Get(again.Root(), "Pages");
  std::vector<std::uint32_t> numbers;
  for (std::uint32_t i = 0; i < objects::ArrayLength(Get(tree, "Kids")); ++i) {
    const ObjectHandle kid = objects::ArrayGet(Get(tree, "Kids"), i);
    EXPECT_EQ(objects::NameValue(Get(kid, "Type")), Name("Page"));
    EXPECT_TRUE(objects::Equal(Get(kid, "Parent"), tree));
    numbers.push_back(ObjectNumberOf(kid));
  }
  EXPECT_EQ(objects::IntegerValue(Get(tree, "Count")), static_cast<std::int32_t>(numbers.size()));
  return numbers;
}

TEST(Repair, PageTreesAreWrittenInOrder) {
  const std::string page = "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>";
  std::vector<FileWarning> told;
  using Numbers = std::vector<std::uint32_t>;
  EXPECT_EQ(KidsAfterSave("<</Type/Pages/Kids[3 0 R]/Count 1>>", page, &told), Numbers{3});
  EXPECT_TRUE(told.empty()) << "a tree in order was changed: " << told.front().text;
  EXPECT_EQ(
      KidsAfterSave("<</Kids[null 2 0 R 3 0 R 7 99 0 R]/Count 9>>", "<</Parent 3 0 R>>", &told),
      Numbers{3});
  EXPECT_GE(told.size(), 5u);
  EXPECT_EQ(KidsAfterSave("<</Type/Pages/Kids[3 0 R 3 0 R]/Count 2>>", page, &told),
            (Numbers{3, 5}));
  // A direct page gets a number; an annotation listed twice stays once.
  EXPECT_EQ(
      KidsAfterSave("<</Type/Pages/Kids[<</Annots[4 0 R null 4 0 R]>>]/Count 1>>", page, &told),
      Numbers{5});
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
