#include <filesystem>
#include <fstream>
#include <iterator>

#ifndef _WIN32
#include <unistd.h>
#endif

#include "quillon/objects/replace_file.h"
#include "tests/quillon/objects/file_text.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_host.h"

namespace quillon::test {
namespace {

namespace fs = std::filesystem;

std::ptrdiff_t FileCount(const TemporaryFolder& folder) {
  return std::distance(fs::directory_iterator(folder.path), fs::directory_iterator());
}

std::string ReadFile(const std::string& file) {
  std::ifstream input(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(input), {}};
}

void WriteFile(const std::string& file, const std::string& bytes) {
  std::ofstream(file, std::ios::binary) << bytes;
}

std::vector<std::string> IdsOf(const OpenedDocument& file) {
  const ObjectHandle ids = Get(TrailerOf(file.doc), "ID");
  if (objects::TypeOf(ids) != ObjectKind::kArray) return {};
  return {Text(objects::ArrayGet(ids, 0)), Text(objects::ArrayGet(ids, 1))};
}

TEST(Saving, UntouchedObjectsAreCopiedByteForByte) {
  const std::string odd = "<<  /A  [ 1.000 ]  % a comment\r\n /B (x) >>";
  const OpenedDocument file(FileWithObject(odd, "/Info 2 0 R"));
  EXPECT_EQ(objects::FixedValue(objects::ArrayGet(Get(file.At(3), "A"), 0)), kFixedOne);
  PutText(file.doc, file.At(2), "T", "changed");
  const std::string saved = PdfToBytes(file.doc);
  EXPECT_NE(saved.find("\n3 0 obj\n" + odd + "\nendobj\n"), std::string::npos);
  EXPECT_EQ(saved.rfind("%PDF-1.5\n", 0), 0u);
  const OpenedDocument again(saved);
  EXPECT_EQ(ObjectNumberOf(Get(TrailerOf(again.doc), "Info")), 2u);
}

TEST(Saving, FirstIdentifierStaysAndSecondIsRenewed) {
  const OpenedDocument file(FileWithObject("<<>>", "/ID[<414243><44>]"));
  PutText(file.doc, file.At(3), "T", "x");
  for (const bool append : {false, true}) {
    const OpenedDocument first(PdfToBytes(file.doc, {append}));
    EXPECT_EQ(IdsOf(first)[0], "ABC");
    EXPECT_EQ(IdsOf(first)[1].size(), 16u);
    const OpenedDocument second(PdfToBytes(file.doc, {append}));
    EXPECT_NE(IdsOf(first)[1], IdsOf(second)[1]);
  }
  const OpenedDocument without(FileWithObject("<<>>"));
  PutText(without.doc, without.At(3), "T", "x");
  const OpenedDocument made(PdfToBytes(without.doc));
  EXPECT_EQ(IdsOf(made)[0].size(), 16u);
}

TEST(Saving, DestroyedObjectsBecomeFreeEntries) {
  const OpenedDocument file(FileWithObject("(gone)"));
  objects::Destroy(file.At(3));
  const ObjectHandle added = objects::NewDict(file.doc, 1, 0);
  objects::DictPut(file.Root(), Name("New"), added);
  EXPECT_EQ(ObjectNumberOf(added), 4u);
  EXPECT_NE(PdfToBytes(file.doc).find("0000000003 65535 f\r\n"), std::string::npos)
      << "the list of free ones";
  for (const bool append : {false, true}) {
    const OpenedDocument again(PdfToBytes(file.doc, {append}));
    EXPECT_EQ(objects::TypeOf(Get(again.Root(), "Entry")), ObjectKind::kNull);
    EXPECT_EQ(objects::TypeOf(Get(again.Root(), "New")), ObjectKind::kDict);
  }
}

TEST(Saving, AStreamWhoseDictionaryChangesKeepsItsData) {
  FileText text;
  text.Object(1, "<</Type/Catalog/S 2 0 R>>");
  text.Object(2, "<</Length 3 0 R>>\nstream\r\nendstream is a word\nendstream");
  text.Object(3, "19");
  text.Table("/Size 4/Root 1 0 R");
  const OpenedDocument file(text.bytes);
  PutText(file.doc, file.At(2), "T", "x");
  const OpenedDocument again(PdfToBytes(file.doc));
  EXPECT_EQ(DecodedStream(again.At(2)), "endstream is a word");
  EXPECT_EQ(Text(Get(again.At(2), "T")), "x");
}

TEST(Saving, OverTheOpenFileIsSafeAndCanBeRepeated) {
  const TemporaryFolder folder;
  const std::string path = folder.File("a.pdf");
  WriteFile(path, FileWithObject("<</T(old)/U(untouched)>>"));
  const OpenedDocument file(OpenPdfFile(path, {}, nullptr));
  for (const char* text : {"one", "two"}) {
    PutText(file.doc, file.At(3), "T", text);
    EXPECT_TRUE(PdfModified(file.doc));
    SavePdfFile(file.doc, path);
    EXPECT_FALSE(PdfModified(file.doc));
    const OpenedDocument again(OpenPdfFile(path, {}, nullptr));
    EXPECT_EQ(Text(Get(again.At(3), "T")), text);
    EXPECT_EQ(Text(Get(again.At(3), "U")), "untouched");
    EXPECT_EQ(IdsOf(again), IdsOf(file));
  }
  EXPECT_EQ(FileCount(folder), 1);
  const std::string others = FileWithObject("<</T(another program's)>>");
  WriteFile(path, others);
  PutText(file.doc, file.At(3), "T", "three");
  EXPECT_EQ(RaisedBy([&] { SavePdfFile(file.doc, path); }), kErrorWriteFile);
  EXPECT_EQ(ReadFile(path), others);
  EXPECT_EQ(FileCount(folder), 1);
}

TEST(Saving, AFailureLeavesTheOldFileAndNothingElse) {
  const TemporaryFolder folder;
  const std::string path = folder.File("a.pdf");
  WriteFile(path, "precious");
  EXPECT_THROW(objects::ReplaceFile(path,
                                    [](const objects::TakeBytes& take) {
                                      take("half");
                                      Fail(kErrorBadObject, "in the middle");
                                    }),
               HostFailure);
  EXPECT_EQ(ReadFile(path), "precious");
  EXPECT_EQ(FileCount(folder), 1);
  const OpenedDocument file(NewPdf());
  EXPECT_THROW(SavePdfFile(file.doc, folder.File("missing/a.pdf")), HostFailure);
}

#ifndef _WIN32
TEST(Saving, AFileThatMayNotBeWrittenIsNotReplaced) {
  const TemporaryFolder folder;
  const std::string path = folder.File("a.pdf");
  if (geteuid() == 0) GTEST_SKIP() << "the superuser may write every file";
  WriteFile(path, "precious");
  fs::permissions(path, fs::perms::owner_read);
  const auto write = [](const objects::TakeBytes& take) { take("new"); };
  EXPECT_THROW(objects::ReplaceFile(path, write), HostFailure);
  EXPECT_EQ(ReadFile(path), "precious");
}
#endif

// The key under which the other producer's form stands, and what is shown.
TEST(FormKey, OnlyEntryWithFieldsIsShownAndWrittenBackUnderItsOwnKey) {
  FileText text;
  text.Object(1, "<</Type/Catalog/Pages 2 0 R/TheirForm 3 0 R/Other<</A 1>>>>");
  text.Object(2, "<</Type/Pages/Kids[]/Count 0>>");
  text.Object(3, "<</Fields[]>>");
  text.Table("/Size 4/Root 1 0 R");
  const OpenedDocument file(text.bytes);
  EXPECT_EQ(ObjectNumberOf(Get(file.Root(), "QuillForm")), 3u);
  EXPECT_FALSE(objects::DictKnown(file.Root(), Name("TheirForm")));
  objects::DictPut(file.Root(), Name("More"), objects::NewInteger(file.doc, 0, 1));
  EXPECT_NE(PdfToBytes(file.doc).find("/TheirForm 3 0 R/Other"), std::string::npos);
  const ObjectHandle replaced = objects::NewDict(file.doc, 1, 0);
  objects::DictRemove(file.Root(), Name("QuillForm"));
  objects::DictPut(file.Root(), Name("QuillForm"), replaced);
  EXPECT_NE(PdfToBytes(file.doc).find("/TheirForm 4 0 R>>"), std::string::npos);
}

TEST(FormKey, TwoCandidatesOrAnOwnKeyLeaveTheCatalogAlone) {
  for (const char* entries : {"/A<</Fields[]>>/B<</Fields[]>>", "/QuillForm 5/A<</Fields[]>>"}) {
    FileText text;
    text.Object(1, "<</Type/Catalog" + std::string(entries) + ">>");
    text.Table("/Size 2/Root 1 0 R");
    const OpenedDocument file(text.bytes);
    EXPECT_TRUE(objects::DictKnown(file.Root(), Name("A")));
    EXPECT_NE(objects::TypeOf(Get(file.Root(), "QuillForm")), ObjectKind::kDict);
  }
}

TEST(FormKey, ADirectFormIsShownIndirectAndWrittenOnlyWithAChange) {
  FileText text;
  text.Object(1, "<</Type/Catalog/Pages 2 0 R/F<</Fields[]>>>>");
  text.Object(2, "<</Type/Pages/Kids[]/Count 0>>");
  text.Table("/Size 3/Root 1 0 R");
  const OpenedDocument file(text.bytes);
  const ObjectHandle form = Get(file.Root(), "QuillForm");
  EXPECT_TRUE(objects::IsIndirect(form));
  EXPECT_FALSE(PdfModified(file.doc));
  EXPECT_EQ(PdfToBytes(file.doc), text.bytes);
  PutText(file.doc, file.At(2), "T", "elsewhere");
  EXPECT_NE(PdfToBytes(file.doc).find("/F<</Fields[]>>"), std::string::npos);
  PutText(file.doc, form, "DA", "/Helv 0 Tf");
  const OpenedDocument again(PdfToBytes(file.doc));
  EXPECT_EQ(Text(Get(Get(again.Root(), "QuillForm"), "DA")), "/Helv 0 Tf");
  EXPECT_EQ(ObjectCount(again.doc), 3u) << "it is a part of the catalog again";
  objects::DictPut(file.At(2), Name("Form"), form);
  const OpenedDocument named(PdfToBytes(file.doc));
  EXPECT_EQ(ObjectNumberOf(Get(named.Root(), "QuillForm")), 3u);
  EXPECT_EQ(ObjectNumberOf(Get(named.At(2), "Form")), 3u);
}

}  // namespace
}  // namespace quillon::test
