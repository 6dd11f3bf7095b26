// File specifications (ISO 32000-1, 7.11).
#include <array>

#include "quillon/document/document_record.h"
#include "quillon/document/names.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"
#include "quillon/document/text_encoding.h"
#include "quillon/objects/operations.h"
#include "quillon/support/operations.h"

namespace quillon::document {
namespace {

#if defined(_WIN32)
constexpr bool kDriveLetters = true;
#else
constexpr bool kDriveLetters = false;
#endif

const FileSpecRecord& RecordOf(FileSpecHandle spec) {
  if (spec == nullptr) Fail(kErrorBadParameter, "there is no file specification");
  return *reinterpret_cast<const FileSpecRecord*>(spec);
}

// The keys in the order in which this platform prefers them.
std::array<Atom, 5> PathKeys() {
  const DocumentNames& names = Names();
  if (kDriveLetters) return {names.DOS, names.UF, names.F, names.Unix, names.Mac};
  return {names.Unix, names.UF, names.F, names.DOS, names.Mac};
}

bool IsFileSpec(ObjectHandle object) {
  if (IsKind(object, ObjectKind::kString)) return true;
  if (!IsKind(object, ObjectKind::kDict)) return false;
  for (const Atom key : PathKeys()) {
    if (IsKind(objects::DictGet(object, key), ObjectKind::kString)) return true;
  }
  return false;
}

std::string HostTextOf(std::string_view text) {
  std::string host(text.size() + 1, '\0');
  host.resize(PDFToHostText(text.data(), static_cast<std::uint32_t>(text.size()), host.data(),
                            static_cast<std::uint32_t>(host.size())));
  return host;
}

// A file specification's text as host text: only UF is a text string, the others are bytes of the
// platform.
std::string SpecText(ObjectHandle object) {
  if (IsKind(object, ObjectKind::kString)) return BytesOf(object);
  for (const Atom key : PathKeys()) {
    const ObjectHandle text = objects::DictGet(object, key);
    if (!IsKind(text, ObjectKind::kString)) continue;
    return key == Names().UF ? HostTextOf(BytesOf(text)) : BytesOf(text);
  }
  return {};
}

// "/C/dir/file" names a drive in a file specification and nowhere else (7.11.2.2).
std::string SpecToPath(std::string text) {
  if (kDriveLetters && text.size() > 2 && text[0] == '/' && text[2] == '/') {
    text[0] = text[1];
    text[1] = ':';
  }
  return text;
}

std::string PathToSpec(std::string text) {
  if (kDriveLetters && text.size() > 1 && text[1] == ':') {
    text[1] = text[0];
    text[0] = '/';
  }
  return text;
}

std::string RelativeTextOf(PathHandle path, PathHandle relativeTo) {
  const auto put = [&](char* buffer, std::uint32_t size) {
    return relativeTo != nullptr ? support::PathRelativeText(path, relativeTo, buffer, size)
                                 : support::PathText(path, buffer, size);
  };
  char none = '\0';
  std::string text(put(&none, 1) + 1, '\0');
  put(text.data(), static_cast<std::uint32_t>(text.size()));
  text.pop_back();
  return text;
}

bool Exists(PathHandle path) {
  FileHandle file = nullptr;
  if (support::OpenFile(path, kOpenRead, &file) != kErrorNone) return false;
  support::CloseFile(file);
  return true;
}

ObjectHandle NewString(ObjectDoc doc, const std::string& bytes) {
  return objects::NewString(doc, 0, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

bool IsUrlFileSystem(FileSystemHandle fileSystem) {
  return fileSystem != nullptr && fileSystem == support::FileSystemByName(Names().URL);
}

}  // namespace

FileSpecHandle FileSpecFromObject(ObjectHandle object) {
  if (!IsFileSpec(object)) return nullptr;
  return reinterpret_cast<FileSpecHandle>(PooledRecord(&FileSpecPool(object), object));
}

FileSpecHandle FileSpecFromPath(DocHandle doc, PathHandle path, PathHandle relativeTo) {
  if (path == nullptr) Fail(kErrorBadParameter, "a file specification needs a path");
  const ObjectDoc objects = RecordOf(doc).objects;
  const ObjectHandle dict = objects::NewDict(objects, 0, 4);
  objects::DictPut(dict, Names().Type, objects::NewName(objects, 0, Names().Filespec));
  if (IsUrlFileSystem(support::FileSystemOf(path))) {
    objects::DictPut(dict, Names().FS, objects::NewName(objects, 0, Names().URL));
    objects::DictPut(dict, Names().F, NewString(objects, RelativeTextOf(path, nullptr)));
  } else {
    const std::string text = PathToSpec(RelativeTextOf(path, relativeTo));
    std::string pdfText(text.size() + 1, '\0');
    pdfText.resize(HostToPDFText(text.data(), static_cast<std::uint32_t>(text.size()),
                                 pdfText.data(), static_cast<std::uint32_t>(pdfText.size())));
    objects::DictPut(dict, Names().F, NewString(objects, text));
    objects::DictPut(dict, Names().UF, NewString(objects, pdfText));
  }
  return FileSpecFromObject(dict);
}

ObjectHandle FileSpecObject(FileSpecHandle spec) { return RecordOf(spec).object; }

PathHandle FileSpecAcquirePath(FileSpecHandle spec, PathHandle relativeTo) {
  const FileSystemHandle fileSystem = FileSpecFileSystem(spec);
  if (fileSystem == nullptr) return nullptr;
  const std::string text = SpecText(RecordOf(spec).object);
  if (text.empty()) return nullptr;
  const bool local = fileSystem == support::FileSystemOf(nullptr);
  const PathHandle path =
      support::NewPath(fileSystem, local ? SpecToPath(text).c_str() : text.c_str(), relativeTo);
  // Whether a URL leads anywhere only asking for it tells.
  if (path == nullptr || !local || Exists(path)) return path;
  support::ReleasePath(path);
  return nullptr;
}

FileSystemHandle FileSpecFileSystem(FileSpecHandle spec) {
  const ObjectHandle object = RecordOf(spec).object;
  const ObjectHandle name =
      IsKind(object, ObjectKind::kDict) ? objects::DictGet(object, Names().FS) : kNullObject;
  if (!IsKind(name, ObjectKind::kName)) return support::FileSystemOf(nullptr);
  return support::FileSystemByName(objects::NameValue(name));
}

}  // namespace quillon::document
