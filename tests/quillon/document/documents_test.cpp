#include <gtest/gtest.h>

#include "quillon/core/operations.h"
#include "quillon/document/open_document.h"
#include "quillon/document/operations.h"
#include "quillon/document/permissions.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"
#include "tests/support/pdf_builder.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

std::string SmallPdf(const std::string& trailer = "") {
  test::PdfBuilder pdf;
  pdf.Add("<< /Pages 2 0 R >>");
  pdf.Add("<< /Kids [3 0 R] >>");
  pdf.Add("<< /Type /Page >>");
  return pdf.Finish(1, trailer);
}

struct DocumentsTest : testing::Test {
  ObjectHandle Page(DocHandle doc) { return ObjectByNumber(document::ObjectDocOf(doc), 3); }

  test::TestHost host;
};

TEST_F(DocumentsTest, TheModifiedFlagFollowsChangesAndCanBeForgotten) {
  const DocHandle doc = test::OpenTestDocument(SmallPdf());
  const auto change = [&] {
    objects::DictPut(Page(doc), core::AtomFromName("Kept"),
                     objects::NewBoolean(document::ObjectDocOf(doc), 0, 1));
  };
  EXPECT_EQ(document::GetFlags(doc), 0U);
  change();
  EXPECT_EQ(document::GetFlags(doc), kDocModified);
  document::ClearFlags(doc, kDocModified);
  EXPECT_EQ(document::GetFlags(doc), 0U);
  const DocHandle again = OpenDocumentBytes(DocumentToBytes(doc));
  EXPECT_TRUE(objects::DictKnown(Page(again), core::AtomFromName("Kept")))
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

}  // namespace
}  // namespace quillon
