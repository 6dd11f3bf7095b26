#include "plugin/exchange/path_text.h"

#include "plugin/host/owned_files.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

// `put` fills a buffer and answers the whole length.
template <typename Put>
std::string WholeText(Put&& put) {
  char none = '\0';
  std::string text(put(&none, 1) + 1, '\0');
  put(text.data(), static_cast<std::uint32_t>(text.size()));
  text.pop_back();
  return text;
}

std::string BytesOf(ObjectHandle text) {
  if (!IsKind(text, ObjectKind::kString)) return {};
  std::uint32_t length = 0;
  const char* bytes = Objects->StringValue(text, &length);
  return std::string(bytes, length);
}

}  // namespace

std::string TextOfPath(PathHandle path) {
  return WholeText(
      [path](char* buffer, std::uint32_t size) { return Support->PathText(path, buffer, size); });
}

std::string RelativeTextOfPath(PathHandle path, PathHandle base) {
  return WholeText([path, base](char* buffer, std::uint32_t size) {
    return Support->PathRelativeText(path, base, buffer, size);
  });
}

PathHandle AcquireDocumentPath(DocHandle doc) {
  const FileHandle file = Document->FileOf(doc);
  return file == nullptr ? nullptr : Support->FilePath(file);
}

std::string DocumentPathText(DocHandle doc) {
  const OwnedPath path(AcquireDocumentPath(doc));
  return path != nullptr ? TextOfPath(path.get()) : std::string();
}

std::string TextOfFileSpec(ObjectHandle spec) {
  if (!IsKind(spec, ObjectKind::kDict)) return BytesOf(spec);
  const std::string text = BytesOf(Objects->DictGet(spec, key::FileSpec));
  return text.empty() ? BytesOf(Objects->DictGet(spec, key::DOS)) : text;
}

}  // namespace quillform
