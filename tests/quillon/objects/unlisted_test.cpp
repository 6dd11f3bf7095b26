// Files whose cross-references tell less, or something else, than the file has.
#include <algorithm>

#include "quillon/objects/filters.h"
#include "tests/quillon/objects/file_text.h"

namespace quillon::test {
namespace {

bool Tells(ObjectDoc doc, const std::string& words) {
  const std::vector<FileWarning>& warnings = PdfWarnings(doc);
  return std::any_of(warnings.begin(), warnings.end(), [&](const FileWarning& warning) {
    return warning.text.find(words) != std::string::npos;
  });
}

FileText CatalogAndPages(const std::string& entries) {
  FileText file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R" + entries + ">>");
  file.Object(2, "<</Type/Pages/Kids[]/Count 0>>");
  return file;
}

// Changed and written, anew and as an update: neither may lose what `look` finds.
template <typename Look>
void ExpectInBoth(const std::string& bytes, Look look) {
  for (const bool append : {false, true}) {
    SCOPED_TRACE(append);
    const OpenedDocument file(bytes);
    PutText(file.doc, file.At(2), "T", "changed");
    SaveOptions options;
    options.append = append;
    const OpenedDocument again(PdfToBytes(file.doc, options));
    look(file, again);
    EXPECT_TRUE(PdfWarnings(again.doc).empty());
  }
}

TEST(Unlisted, ObjectsThatAreNamedAreFoundAndListed) {
  FileText file = CatalogAndPages("/Left 3 0 R/Freed 4 0 R");
  file.Object(3, "(left out)");
  file.Object(4, "(free)");
  file.offsets.erase(3);
  file.Table("/Size 5/Root 1 0 R", {0, 4});
  ExpectInBoth(file.bytes, [](const OpenedDocument& read, const OpenedDocument& again) {
    EXPECT_TRUE(Tells(read.doc, "leave it out"));
    EXPECT_TRUE(Tells(read.doc, "list it as free"));
    EXPECT_EQ(Text(Get(again.Root(), "Left")), "left out");
    EXPECT_EQ(Text(Get(again.Root(), "Freed")), "free");
  });
}

TEST(Unlisted, WhatALaterUpdateFreedStaysFree) {
  FileText file = CatalogAndPages("/Freed 3 0 R");
  file.Object(3, "(deleted)");
  const std::size_t first = file.Table("/Size 4/Root 1 0 R");
  file.Table("/Size 4/Root 1 0 R/Prev " + std::to_string(first), {0, 3});
  ExpectInBoth(file.bytes, [](const OpenedDocument& read, const OpenedDocument& again) {
    EXPECT_TRUE(PdfWarnings(read.doc).empty());
    EXPECT_EQ(objects::TypeOf(Get(again.Root(), "Freed")), ObjectKind::kNull);
  });
}

TEST(Unlisted, NewObjectsTakeNoNumberThatAnythingNames) {
  FileText file = CatalogAndPages("/Nothing 3 0 R/Far 5 0 R");
  file.Object(4, "(nobody names me)");
  file.offsets.erase(4);
  file.Table("/Size 3/Root 1 0 R");
  const OpenedDocument opened(file.bytes);
  for (const std::uint32_t number : {6u, 7u}) {
    EXPECT_EQ(ObjectNumberOf(objects::NewDict(opened.doc, 1, 1)), number);
  }
}

TEST(Unlisted, AnUpdateThatIsCutOffGivesWayToWhatIsWhole) {
  FileText file = CatalogAndPages("/Entry 3 0 R/Stream 4 0 R");
  file.Object(3, "<</T(old)>>");
  file.Stream(4, "", "old data");
  file.Table("/Size 5/Root 1 0 R");
  const std::string whole = "3 0 obj\n<</T(new)>>\nendobj\n";
  const std::string cut = "4 0 obj\n<</Length 900>>\nstream\nnew";
  for (const std::string& update : {whole + cut, std::string("3 0 obj\n<</T(new)/U(ne")}) {
    const OpenedDocument opened(file.bytes + update);
    EXPECT_EQ(DecodedStream(opened.At(4)), "old data");
    EXPECT_EQ(Text(Get(opened.At(3), "T")), update == whole + cut ? "new" : "old");
    EXPECT_TRUE(Tells(opened.doc, "cut off"));
    EXPECT_TRUE(Tells(opened.doc, "the version before it was taken") ||
                Tells(opened.doc, "The version before it was taken"));
  }
}

TEST(Unlisted, GenerationsThatDifferMeanWhatReferencesSay) {
  FileText file = CatalogAndPages("/A 3 0 R/B 4 0 R/C 5 0 R");
  file.Object(3, "(a)");
  file.Object(4, "(b)");
  file.Object(5, "(c)");
  file.Table("/Size 6/Root 1 0 R");
  const std::size_t header = file.bytes.find("3 0 obj");
  file.bytes[header + 2] = '7';
  const std::string line = FileText::Line(file.bytes.find("4 0 obj"), 0, 'n');
  const std::size_t place = file.bytes.find(line);
  file.bytes.replace(place, line.size(), FileText::Line(file.bytes.find("4 0 obj"), 9, 'n'));
  const OpenedDocument opened(file.bytes);
  PutText(opened.doc, opened.At(2), "T", "changed");
  const OpenedDocument again(PdfToBytes(opened.doc));
  for (const char* key : {"A", "B", "C"}) {
    EXPECT_EQ(objects::TypeOf(Get(again.Root(), key)), ObjectKind::kString) << key;
  }
  EXPECT_TRUE(Tells(opened.doc, "another generation"));
  EXPECT_TRUE(PdfWarnings(again.doc).empty());
}

// An object stream 4 that says it has `count` objects, at `index` the string of object 3.
std::string FileWithMember(int count, int index, std::size_t stream = 4) {
  FileText file = CatalogAndPages("/Entry 3 0 R");
  const std::string members = "5 0 3 4 (no)(yes)";
  file.Stream(4, "/Type/ObjStm/First 8/N " + std::to_string(count), members);
  const std::size_t start = file.bytes.size();
  const std::string fields = XrefFields(0, 0, 255) + XrefFields(1, file.offsets[1], 0) +
                             XrefFields(1, file.offsets[2], 0) + XrefFields(2, stream, index) +
                             XrefFields(1, file.offsets[4], 0) + XrefFields(2, 4, 0) +
                             XrefFields(1, start, 0);
  file.Stream(6, "/Type/XRef/W[1 2 1]/Size 7/Root 1 0 R", fields);
  file.End(start);
  return file.bytes;
}

TEST(Unlisted, MembersOfObjectStreamsAreFoundByNumber) {
  const auto isRight = [](const OpenedDocument& read, const OpenedDocument& again) {
    EXPECT_FALSE(PdfWarnings(read.doc).empty());
    EXPECT_EQ(Text(Get(again.Root(), "Entry")), "yes");
  };
  for (const auto& [count, index] : std::map<int, int>{{1, 1}, {40, 1}, {2, 0}}) {
    SCOPED_TRACE(count);
    ExpectInBoth(FileWithMember(count, index), isRight);
  }
}

TEST(Unlisted, AMemberOfNoObjectStreamIsLeftOut) {
  const OpenedDocument file(FileWithMember(2, 1, 2));
  PutText(file.doc, file.At(2), "T", "changed");
  const OpenedDocument again(PdfToBytes(file.doc));
  EXPECT_TRUE(Tells(file.doc, "is no stream"));
  EXPECT_EQ(objects::TypeOf(Get(again.Root(), "Entry")), ObjectKind::kNull);
  EXPECT_TRUE(PdfWarnings(again.doc).empty());
}

}  // namespace
}  // namespace quillon::test
