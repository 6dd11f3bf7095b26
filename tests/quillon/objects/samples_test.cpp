// Forms by other producers, where they are at hand.
#include <cstdlib>
#include <filesystem>

#include "quillon/support/operations.h"
#include "tests/quillon/objects/file_text.h"

namespace quillon::test {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> Samples() {
  const char* named = std::getenv("QUILLFORM_SAMPLES");
  const fs::path folder = named != nullptr ? fs::path(named) : fs::path(QUILLFORM_SAMPLES_DIR);
  std::vector<fs::path> files;
  std::error_code missing;
  for (const auto& entry : fs::directory_iterator(folder, missing)) {
    if (entry.path().extension() == ".pdf") files.push_back(entry.path());
  }
  return files;
}

// Everything that a document says, in a text that does not depend on how it is spelled.
void Describe(ObjectHandle object, int depth, std::string* out) {
  const ObjectKind kind = objects::TypeOf(object);
  *out += static_cast<char>('a' + static_cast<int>(kind));
  if (depth > 0 && objects::IsIndirect(object)) {
    *out += '#';
    *out += std::to_string(ObjectNumberOf(object));
    return;
  }
  if (kind == ObjectKind::kInteger) *out += std::to_string(objects::IntegerValue(object));
  if (kind == ObjectKind::kFixed) *out += std::to_string(objects::FixedValue(object));
  if (kind == ObjectKind::kString) *out += Text(object);
  if (kind == ObjectKind::kName) *out += core::NameFromAtom(objects::NameValue(object));
  if (kind == ObjectKind::kStream) {
    const StreamHandle stream = objects::OpenStream(object, kStreamRaw);
    char buffer[512];
    while (const std::uint32_t count = support::ReadStream(stream, buffer, sizeof buffer)) {
      out->append(buffer, count);
    }
    support::CloseStream(stream);
  }
  if (kind < ObjectKind::kDict) return;
  struct Level {
    int depth;
    std::string* out;
  } level{depth, out};
  objects::EnumDict(
      object,
      [](ObjectHandle key, ObjectHandle value, void* data) -> Boolean {
        const Level& at = *static_cast<Level*>(data);
        Describe(key, at.depth + 1, at.out);
        Describe(value, at.depth + 1, at.out);
        return 1;
      },
      &level);
}

std::map<std::uint32_t, std::string> DescribeAll(ObjectDoc doc) {
  std::map<std::uint32_t, std::string> all;
  for (std::uint32_t number = 1; number < ObjectCount(doc); ++number) {
    const ObjectHandle object = ObjectByNumber(doc, number);
    if (objects::TypeOf(object) == ObjectKind::kNull) continue;
    Describe(object, 0, &all[number]);
  }
  return all;
}

// Cross-reference streams are the file's, not the document's: saving replaces them.
bool IsStructure(ObjectHandle object) {
  if (objects::TypeOf(object) != ObjectKind::kStream) return false;
  const ObjectHandle type = Get(object, "Type");
  return objects::TypeOf(type) == ObjectKind::kName && objects::NameValue(type) == Name("XRef");
}

TEST(Samples, SurviveAChangeAndASaveWhole) {
  const std::vector<fs::path> files = Samples();
  if (files.empty()) GTEST_SKIP() << "no sample files here";
  for (const fs::path& path : files) {
    SCOPED_TRACE(path.filename().string());
    std::vector<FileWarning> warnings;
    const OpenedDocument file(OpenPdfFile(path.string(), {}, &warnings));
    EXPECT_TRUE(warnings.empty());
    const ObjectHandle form = Get(file.Root(), "QuillForm");
    ASSERT_EQ(objects::TypeOf(form), ObjectKind::kDict);
    PutText(file.doc, form, "Marked", "by the test");
    std::map<std::uint32_t, std::string> before = DescribeAll(file.doc);
    for (auto entry = before.begin(); entry != before.end();) {
      const bool gone = IsStructure(file.At(entry->first));
      entry = gone ? before.erase(entry) : std::next(entry);
    }
    const OpenedDocument again(OpenPdfBytes(PdfToBytes(file.doc), {}, &warnings));
    EXPECT_TRUE(warnings.empty());
    std::map<std::uint32_t, std::string> after = DescribeAll(again.doc);
    for (const auto& [number, text] : before) EXPECT_EQ(after[number], text) << number;
  }
}

}  // namespace
}  // namespace quillon::test
