#include "quillon/objects/pdf_file.h"
#include "quillon/objects/replace_file.h"
#include "quillon/objects/writer.h"

namespace quillon {

void SavePdfFile(ObjectDoc handle, const std::string& file, const SaveOptions& options) {
  objects::Document& doc = objects::DocumentOfHandle(handle);
  objects::FileIds ids;
  const auto write = [&](const objects::TakeBytes& take) {
    objects::Output out{take, {}, 0, options.keepAll};
    ids = options.append ? objects::WriteUpdate(doc, out)
                         : objects::WriteDocument(doc, doc.header, out);
  };
  if (file == doc.file) {
    objects::ReplaceFile(file, write, objects::Flushing::kNow, doc.stamp);
    doc.stamp = objects::StampOf(file);
  } else {
    objects::ReplaceFile(file, write);
  }
  objects::SetFileIds(doc, ids);
  doc.modified = false;
}

}  // namespace quillon
