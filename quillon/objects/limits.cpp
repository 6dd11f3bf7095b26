#include "quillon/objects/limits.h"

namespace quillon::objects {
namespace {

constexpr const char* kAdvice = " It may have been made to do harm.";

}  // namespace

void Spend(Document& doc, std::uint64_t bytes) {
  doc.costs.work += bytes;
  const std::uint64_t read = doc.text.size() + doc.costs.kept;
  if (doc.costs.work <= kWorkBesides + kWorkPerByte * read) return;
  Fail(kErrorBadFile,
       std::string("Reading the file takes too long: its parts lie within one another.") + kAdvice);
}

void StartSpendingAnew(Document& doc) { doc.costs.work = doc.costs.decoded = 0; }

void SpendDecoded(Document& doc, std::uint64_t bytes) {
  doc.costs.decoded += bytes;
  if (doc.source.bytes.empty()) return;
  if (doc.costs.decoded <= kDecodedBesides + kDecodedPerByte * doc.text.size()) return;
  Fail(kErrorBadFile,
       std::string("The file's values and appearances decode to more than a file of this size "
                   "should hold.") +
           kAdvice);
}

void CheckKept(Document& doc, std::uint64_t bytes) {
  doc.costs.kept += bytes;
  if (doc.costs.kept <= kKeptBesides + kKeptPerByte * doc.text.size()) return;
  Fail(kErrorBadFile,
       std::string("The file's object streams are too large for a file of this size.") + kAdvice);
}

void CheckCells(const Document& doc) {
  if (doc.source.bytes.empty()) return;
  const std::uint64_t read = doc.text.size() + doc.costs.kept;
  if (doc.cells.used <= kCellsBesides + read / kBytesPerCell) return;
  Fail(kErrorBadFile,
       std::string("The file has more objects than a file of this size should have.") + kAdvice);
}

void CheckNames(const Document& doc) {
  if (doc.furtherNames.size() < kMaxFurtherNames) return;
  Fail(kErrorBadFile, std::string("The file has too many different names.") + kAdvice);
}

void SpendEntries(Document& doc, std::uint64_t count) {
  doc.costs.entries += count;
  if (doc.costs.entries <= kEntriesBesides + doc.text.size() / kBytesPerEntry) return;
  Fail(
      kErrorBadFile,
      std::string("The file's cross-references list more objects than it has room for.") + kAdvice);
}

}  // namespace quillon::objects
