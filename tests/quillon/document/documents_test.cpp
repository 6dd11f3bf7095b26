#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "quillon/core/operations.h"
#include "quillon/document/open_document.h"
#include "quillon/document/operations.h"
#include "quillon/document/permissions.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/support/operations.h"
#include "quillon/support/paths.h"
#include "tests/support/pdf_builder.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using test::RaisedBy;

std::string SmallPdf(const std::string& trailer = "") {
  test::PdfBuilder pdf;
  pdf.Add("<< /Pages 2 0 R >>");
  pdf.Add("<< /Kids [3 0 R] >>");
  pdf.Add("<< /Type /Page >>");
  pdf.Add("<< /S /Hide /T (name) >>");
  pdf.Add("<< /Subtype /ResetForm >>");
  pdf.Add("<< /D [3 0 R /Fit] >>");
  pdf.Add("<< /Nothing 1 >>");
  pdf.Add("[3 0 R /Fit]");
  return pdf.Finish(1, trailer);
}

struct DocumentsTest : testing::Test {
  ObjectHandle Object(DocHandle doc, std::uint32_t number) {
    return ObjectByNumber(document::ObjectDocOf(doc), number);
  }

  test::TestHost host;
};

Boolean CloseEverything(DocHandle, void* clientData) {
  ++*static_cast<int*>(clientData);
  for (const DocHandle doc : OpenDocuments()) CloseDocument(doc);
  return 1;
}

TEST_F(DocumentsTest, MayBeClosedWhileTheyAreEnumerated) {
  const DocHandle doc = test::OpenTestDocument(SmallPdf());
  test::OpenTestDocument(SmallPdf());
  int calls = 0;
  document::EnumDocuments(CloseEverything, &calls);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(RaisedBy([&] { document::GetFlags(doc); }), kErrorBadParameter);
}

TEST_F(DocumentsTest, TheModifiedFlagFollowsChangesAndCanBeForgotten) {
  const DocHandle doc = test::OpenTestDocument(SmallPdf());
  const auto change = [&] {
    objects::DictPut(Object(doc, 7), core::AtomFromName("Kept"),
                     objects::NewBoolean(document::ObjectDocOf(doc), 0, 1));
  };
  EXPECT_EQ(document::GetFlags(doc), 0U);
  change();
  EXPECT_EQ(document::GetFlags(doc), kDocModified);
  document::ClearFlags(doc, kDocModified);
  EXPECT_EQ(document::GetFlags(doc), 0U);
  const DocHandle again = OpenDocumentBytes(DocumentToBytes(doc));
  EXPECT_TRUE(objects::DictKnown(Object(again, 7), core::AtomFromName("Kept")))
      << "what was forgotten as a modification is still written";
  change();
  EXPECT_EQ(document::GetFlags(doc), kDocModified);
}

TEST_F(DocumentsTest, FileIdentifiersAreCutToTheBuffer) {
  const DocHandle doc = test::OpenTestDocument(SmallPdf("/ID [<410042> <43>]"));
  char buffer[8] = {};
  EXPECT_EQ(document::GetFileID(doc, 0, buffer, 8), 3U);
  EXPECT_EQ(std::string(buffer, 4), std::string("A\0B\0", 4));
  EXPECT_EQ(document::GetFileID(doc, 0, buffer, 2), 1U);
  EXPECT_EQ(document::GetFileID(doc, 1, buffer, 8), 1U);
  EXPECT_EQ(document::GetFileID(doc, 2, buffer, 8), 0U);
  EXPECT_EQ(document::GetFileID(test::OpenTestDocument(SmallPdf()), 0, buffer, 8), 0U);
}

TEST(Permissions, ComeFromTheBitsOfP) {
  using document::PermissionsFromP;
  EXPECT_EQ(PermissionsFromP(-1, 3), kPermitEdit | kPermitAnnotate | kPermitForms);
  EXPECT_EQ(PermissionsFromP(0x8, 3), kPermitEdit);
  EXPECT_EQ(PermissionsFromP(0x20, 2), kPermitAnnotate | kPermitForms);
  EXPECT_EQ(PermissionsFromP(0x100, 3), kPermitForms);
  EXPECT_EQ(PermissionsFromP(0x100, 2), 0U) << "the bit has no meaning before revision 3";
}

TEST_F(DocumentsTest, ActionsAndDestinationsAreToldApart) {
  const DocHandle doc = test::OpenTestDocument(SmallPdf());
  const auto typeOf = [&](std::uint32_t number) {
    return core::NameFromAtom(
        document::ActionType(document::ActionFromObject(Object(doc, number))));
  };
  EXPECT_STREQ(typeOf(4), "Hide");
  EXPECT_STREQ(typeOf(5), "ResetForm");
  EXPECT_STREQ(typeOf(6), "GoTo");
  EXPECT_STREQ(typeOf(8), "GoTo");
  EXPECT_EQ(document::ActionFromObject(Object(doc, 7)), nullptr);
}

TEST_F(DocumentsTest, FileSpecificationsAreRelativeAndLeadBack) {
  const test::TemporaryFolder folder;
  std::filesystem::create_directories(folder.path / "sub");
  std::ofstream(folder.path / "main.pdf", std::ios::binary) << SmallPdf();
  std::ofstream(folder.path / "sub/data.fdf", std::ios::binary) << "%FDF-1.2";
  const DocHandle doc = OpenDocumentFile(folder.File("main.pdf"));
  const PathHandle own = support::FilePath(document::FileOf(doc));
  const PathHandle data = PathOf(folder.File("sub/data.fdf"));
  const FileSpecHandle spec = document::FileSpecFromPath(doc, data, own);
  EXPECT_STREQ(
      objects::StringValue(
          objects::DictGet(document::FileSpecObject(spec), core::AtomFromName("F")), nullptr),
      "sub/data.fdf");
  const PathHandle back = document::FileSpecAcquirePath(spec, own);
  ASSERT_NE(back, nullptr);
  EXPECT_TRUE(std::filesystem::equivalent(PathString(back), PathString(data)));
  std::filesystem::remove(folder.path / "sub/data.fdf");
  EXPECT_EQ(document::FileSpecAcquirePath(spec, own), nullptr) << "it names nothing any more";
  for (const PathHandle path : {own, data, back}) support::ReleasePath(path);
}

}  // namespace
}  // namespace quillon
