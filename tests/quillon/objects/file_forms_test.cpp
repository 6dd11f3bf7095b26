// Every form of file structure is read, changed, written and read again.
#include "tests/quillon/objects/file_text.h"

namespace quillon::test {
namespace {

constexpr const char* kCatalog = "<</Type/Catalog/Pages 2 0 R/Entry 3 0 R>>";
constexpr const char* kPages = "<</Type/Pages/Kids[]/Count 0>>";

// The document has the text in object 3; after a change and a save it has the new one, and
// everything else still.
void ExpectRoundTrip(const std::string& bytes) {
  std::string saved;
  {
    const OpenedDocument file(bytes);
    EXPECT_EQ(PdfToBytes(file.doc), bytes);
    EXPECT_EQ(Text(Get(file.At(3), "T")), "old");
    EXPECT_EQ(Text(Get(file.At(4), "T")), "kept");
    PutText(file.doc, file.At(3), "T", "new");
    saved = PdfToBytes(file.doc);
  }
  std::vector<FileWarning> warnings;
  const OpenedDocument again(OpenPdfBytes(saved, {}, &warnings));
  EXPECT_TRUE(warnings.empty());
  EXPECT_EQ(Text(Get(again.At(3), "T")), "new");
  EXPECT_EQ(Text(Get(again.At(4), "T")), "kept");
  EXPECT_EQ(objects::TypeOf(again.Root()), ObjectKind::kDict);
}

std::string ObjectStreamData(const std::string& first, const std::string& second, int number) {
  return std::to_string(number) + " 0 " + std::to_string(number + 1) + " " +
         std::to_string(first.size() + 1) + "\n" + first + " " + second;
}

std::size_t FirstOf(const std::string& data) { return data.find('\n') + 1; }

std::string ObjectStreamEntries(const std::string& data) {
  return "/Type/ObjStm/N 2/First " + std::to_string(FirstOf(data));
}

std::string FileWithXrefStream() {
  FileText file;
  file.Object(1, kCatalog);
  const std::string base = ObjectStreamData(kPages, "<</T(old)>>", 2);
  const std::string further = ObjectStreamData("<</T(kept)>>", "<</T(last)>>", 4);
  file.Stream(6, ObjectStreamEntries(base), base);
  file.Stream(7, ObjectStreamEntries(further) + "/Extends 6 0 R", further);
  const std::size_t start = file.bytes.size();
  const std::string fields = XrefFields(0, 0, 255) + XrefFields(1, file.offsets[1], 0) +
                             XrefFields(2, 6, 0) + XrefFields(2, 6, 1) + XrefFields(2, 7, 0) +
                             XrefFields(2, 7, 1) + XrefFields(1, file.offsets[6], 0) +
                             XrefFields(1, file.offsets[7], 0) + XrefFields(1, start, 0);
  file.Stream(8, "/Type/XRef/W[1 2 1]/Size 9/Root 1 0 R", fields);
  file.End(start);
  return file.bytes;
}

TEST(FileForms, XrefStreamAndObjectStreamsAreKept) {
  const std::string bytes = FileWithXrefStream();
  ExpectRoundTrip(bytes);
  const OpenedDocument file(bytes);
  PutText(file.doc, file.At(3), "T", "new");
  const std::string saved = PdfToBytes(file.doc);
  EXPECT_EQ(saved.find("\nxref\n"), std::string::npos);
  // The changed member stands on its own; the stream that it was in is as it was.
  EXPECT_NE(saved.find("\n3 0 obj\n<</T(new)>>"), std::string::npos);
  const std::size_t stream = bytes.find("6 0 obj");
  const std::size_t end = bytes.find("endobj", stream);
  EXPECT_NE(saved.find(bytes.substr(stream, end - stream)), std::string::npos);
  EXPECT_EQ(saved.find("\n4 0 obj"), std::string::npos);
}

TEST(FileForms, HybridFilesHiddenObjectsAreSeenAndBecomeOrdinary) {
  FileText file;
  file.Object(1, kCatalog);
  file.Object(2, kPages);
  const std::string data = ObjectStreamData("<</T(old)>>", "<</T(kept)>>", 3);
  file.Stream(5, ObjectStreamEntries(data), data);
  const std::size_t hidden = file.bytes.size();
  const std::string fields =
      XrefFields(2, 5, 0) + XrefFields(2, 5, 1) + XrefFields(1, file.offsets[5], 0);
  file.Stream(6, "/Type/XRef/W[1 2 1]/Size 7/Index[3 3]", fields);
  file.offsets.erase(5);
  file.offsets.erase(6);
  file.Table("/Size 7/Root 1 0 R/XRefStm " + std::to_string(hidden), {0, 3, 4, 5, 6});
  ExpectRoundTrip(file.bytes);
  const OpenedDocument opened(file.bytes);
  PutText(opened.doc, opened.At(3), "T", "new");
  const std::string saved = PdfToBytes(opened.doc);
  EXPECT_NE(saved.find("\nxref\n"), std::string::npos);
  EXPECT_EQ(saved.find("/ObjStm"), std::string::npos);
}

}  // namespace
}  // namespace quillon::test
