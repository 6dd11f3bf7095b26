#include "quillon/link/url_files.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <utility>

#include "quillon/link/answers.h"
#include "quillon/link/outgoing_form.h"
#include "quillon/link/url_text.h"

namespace quillon::link {
namespace {

struct UrlFile {
  std::string url;
  bool writing;
  std::shared_ptr<const std::string> content;  // of a file that is read
  std::uint32_t position = 0;
  OutgoingForm outgoing;
  std::uint32_t written = 0;
};

FetchedDocument* fetched = nullptr;

// Where documents came from when the server redirected the request for them.
std::map<std::string, std::string>& Origins() {
  static std::map<std::string, std::string> origins;
  return origins;
}

UrlFile& FileOf(void* word) { return *static_cast<UrlFile*>(word); }

std::uint32_t SizeOf(const UrlFile& file) {
  return file.writing ? file.written : static_cast<std::uint32_t>(file.content->size());
}

std::shared_ptr<const std::string> FindFetched(const std::string& url) {
  for (const FetchedDocument* document = fetched; document != nullptr; document = document->outer) {
    if (document->url == url) return document->content;
  }
  return nullptr;
}

std::string Fetch(UrlFile* file) {
  file->content = FindFetched(file->url);
  if (file->content != nullptr) return {};
  Answer answer;
  std::string problem = AskServer({"GET", file->url, {}, {}}, &answer);
  if (answer.url != file->url) Origins()[file->url] = answer.url;
  file->content = std::make_shared<const std::string>(std::move(answer.body));
  return problem;
}

// A server may have nothing to say to a form that it took (RFC 9110, 15.3.5).
bool SaysNothing(const Answer& answer) { return answer.body.empty() || answer.status == 204; }

std::string Send(const UrlFile& file) {
  std::string problem = ProblemOf(file.outgoing);
  if (!problem.empty()) return problem;
  Answer answer;
  problem = AskServer({"POST", file.url, file.outgoing.headers, file.outgoing.body}, &answer);
  if (!problem.empty() || SaysNothing(answer)) return problem;
  if (!IsFormData(answer)) return WrongType(answer);
  return DeliverFormData(answer, host.viewer->ActiveDocView());
}

std::uint32_t PutUrl(const char* text, const char* base, char* buffer, std::uint32_t capacity) {
  std::optional<std::string> from;
  if (base != nullptr) {
    const auto origin = Origins().find(base);
    from = origin == Origins().end() ? base : origin->second;
  }
  const std::optional<std::string> url = ResolveUrl(text, from ? &*from : nullptr);
  if (!url) return 0;
  if (capacity > 0) {
    const std::size_t count = std::min<std::size_t>(url->size(), capacity - 1);
    std::memcpy(buffer, url->data(), count);
    buffer[count] = '\0';
  }
  return static_cast<std::uint32_t>(url->size());
}

std::uint32_t Resolve(const char* text, const char* base, char* buffer, std::uint32_t capacity) {
  std::uint32_t length = 0;
  CodeOf([&] {
    length = PutUrl(text, base, buffer, capacity);
    return kErrorNone;
  });
  return length;
}

FailureCode Open(const char* path, std::uint16_t mode, void** word) {
  return CodeOf([&]() -> FailureCode {
    const std::optional<std::string> url = ResolveUrl(path, nullptr);
    if (!url || (mode != kOpenRead && mode != kOpenWrite)) return kErrorOpenFile;
    auto file = std::make_unique<UrlFile>();
    file->url = *url;
    file->writing = mode == kOpenWrite;
    const FailureCode code = file->writing ? kErrorNone : CodeOfText(Fetch(file.get()));
    if (code == kErrorNone) *word = file.release();
    return code;
  });
}

FailureCode Close(void* word, Boolean abandoned) {
  const std::unique_ptr<UrlFile> file(static_cast<UrlFile*>(word));
  if (!file->writing || abandoned != 0) return kErrorNone;
  return CodeOf([&] { return Finish("POST", file->url, Send(*file)); });
}

std::uint32_t Read(void* word, void* buffer, std::uint32_t size) {
  UrlFile& file = FileOf(word);
  if (file.writing) return 0;
  const std::uint32_t count = std::min(size, SizeOf(file) - file.position);
  std::memcpy(buffer, file.content->data() + file.position, count);
  file.position += count;
  return count;
}

std::uint32_t Write(void* word, const void* bytes, std::uint32_t size) {
  UrlFile& file = FileOf(word);
  if (!file.writing) return 0;
  std::uint32_t taken = 0;
  CodeOf([&] {
    taken = TakeBytes(&file.outgoing, {static_cast<const char*>(bytes), size});
    return kErrorNone;
  });
  file.written += taken;
  return taken;
}

std::uint32_t Position(void* word) {
  const UrlFile& file = FileOf(word);
  return file.writing ? file.written : file.position;
}

// What was written is on its way and cannot be gone back to.
void SetPosition(void* word, std::uint32_t position) {
  UrlFile& file = FileOf(word);
  if (!file.writing) file.position = std::min(position, SizeOf(file));
}

std::uint32_t Size(void* word) { return SizeOf(FileOf(word)); }

constexpr FileSystemRecord kUrlFiles = {sizeof(FileSystemRecord),
                                        &Resolve,
                                        &Open,
                                        &Close,
                                        &Read,
                                        &Write,
                                        &Position,
                                        &SetPosition,
                                        &Size,
                                        nullptr};

}  // namespace

bool RegisterUrlFiles() {
  const Atom name = host.core->AtomFromName(kUrlFileSystemName);
  return host.support->RegisterFileSystem(host.extension, name, &kUrlFiles) != nullptr;
}

FetchedDocument::FetchedDocument(std::string address, std::string cameFrom, std::string bytes)
    : url(std::move(address)),
      content(std::make_shared<const std::string>(std::move(bytes))),
      outer(fetched) {
  if (cameFrom != url) Origins()[url] = std::move(cameFrom);
  fetched = this;
}

FetchedDocument::~FetchedDocument() { fetched = outer; }

void ForgetFetched() { Origins().clear(); }

}  // namespace quillon::link
