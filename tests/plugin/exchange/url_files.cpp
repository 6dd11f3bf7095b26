#include "tests/plugin/exchange/url_files.h"

#include <algorithm>
#include <cstring>

#include "quillon/support/file_systems.h"
#include "quillon/support/operations.h"
#include "quillon/viewer/operations.h"

namespace quillform {

namespace {

using quillon::OpenFileRecord;

std::optional<std::string> Resolve(const std::string& text, const std::string* base) {
  if (text.rfind("http://", 0) == 0) return text;
  if (text.find("://") != std::string::npos) return std::nullopt;
  if (base == nullptr || base->rfind("http://", 0) != 0) return std::nullopt;
  return base->substr(0, base->rfind('/') + 1) + text;
}

OpenFileRecord Reading(const std::string& bytes) {
  const auto place = std::make_shared<std::uint32_t>(0);
  const auto size = static_cast<std::uint32_t>(bytes.size());
  OpenFileRecord file;
  file.read = [bytes, place, size](void* buffer, std::uint32_t wanted) {
    const std::uint32_t count = std::min(wanted, size - *place);
    std::memcpy(buffer, bytes.data() + *place, count);
    *place += count;
    return count;
  };
  file.position = [place] { return *place; };
  file.setPosition = [place](std::uint32_t position) { *place = position; };
  file.size = [size] { return size; };
  file.close = [] { return quillon::kErrorNone; };
  return file;
}

OpenFileRecord Writing(UrlFiles* files, const std::string& url) {
  const std::size_t index = files->sent.size();
  files->sent.push_back({url, {}, false});
  OpenFileRecord file;
  file.write = [files, index](const void* bytes, std::uint32_t size) {
    const std::size_t count = std::min<std::size_t>(size, files->room);
    files->room -= count;
    files->sent[index].pieces.emplace_back(static_cast<const char*>(bytes), count);
    return static_cast<std::uint32_t>(count);
  };
  file.close = [files, index] {
    files->sent[index].closed = true;
    return files->closeFailure;
  };
  return file;
}

}  // namespace

UrlFiles::UrlFiles() {
  quillon::FileSystem made;
  made.name = quillon::kUrlFileSystemName;
  made.resolve = &Resolve;
  made.open = [this](const std::string& url, std::uint16_t mode, OpenFileRecord* file) {
    if (mode == quillon::kOpenRead) {
      *file = Reading(document);
    } else if (openFailure != 0) {
      return openFailure;
    } else {
      *file = Writing(this, url);
    }
    return quillon::kErrorNone;
  };
  handle = quillon::AddFileSystem(std::move(made));
}

UrlFiles::~UrlFiles() { quillon::RemoveFileSystem(handle); }

DocView UrlFiles::Open(const std::string& url, const std::string& pdf) {
  document = pdf;
  const PathHandle path = quillon::support::NewPath(handle, url.c_str(), nullptr);
  const DocView view = quillon::viewer::OpenDocument(path, handle, nullptr, 0);
  quillon::support::ReleasePath(path);
  return view;
}

std::string UrlFiles::Sent::Text() const {
  std::string text;
  for (const std::string& piece : pieces) text += piece;
  return text;
}

}  // namespace quillform
