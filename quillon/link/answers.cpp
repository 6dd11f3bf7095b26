#include "quillon/link/answers.h"

#include <algorithm>
#include <string_view>

#include "quillon/link/url_text.h"

namespace quillon::link {
namespace {

LinkWatcher watcher{};

constexpr std::string_view kFormDataType = "application/vnd.fdf";
constexpr std::string_view kDocumentType = "application/pdf";
constexpr const char* kFormDataHandler = "FDF";

bool TypeIsUnknown(const Answer& answer) {
  return answer.contentType.empty() || answer.contentType == "application/octet-stream";
}

bool BeginsWith(const Answer& answer, std::string_view mark, std::size_t within) {
  return std::string_view(answer.body).substr(0, within + mark.size()).find(mark) !=
         std::string_view::npos;
}

void TellOf(const Request& request) {
  if (watcher.willRequest == nullptr) return;
  watcher.willRequest(watcher.clientData, request.method.c_str(), ShownUrl(request.url).c_str());
}

// The type comes from the server: what is shown of it is short and plain.
std::string PrintableType(const std::string& type) {
  constexpr std::size_t kLongest = 40;
  std::string text = type.substr(0, kLongest);
  std::replace_if(
      text.begin(), text.end(), [](char byte) { return byte <= ' ' || byte >= 0x7F; }, '?');
  return text;
}

}  // namespace

std::string AskServer(const Request& request, Answer* answer) {
  return Exchange(request, &TellOf, answer);
}

void SetWatcher(const LinkWatcher* newWatcher) {
  watcher = newWatcher == nullptr ? LinkWatcher{} : *newWatcher;
}

FailureCode Finish(const char* method, const std::string& url, const std::string& problem) {
  const FailureCode code = CodeOfText(problem);
  if (watcher.finished != nullptr) {
    watcher.finished(watcher.clientData, method, ShownUrl(url).c_str(), code);
  }
  return code;
}

bool IsDocument(const Answer& answer) {
  constexpr std::size_t kJunk = 1024;  // what readers pass over before the header
  return answer.contentType == kDocumentType ||
         (TypeIsUnknown(answer) && BeginsWith(answer, "%PDF-", kJunk));
}

bool IsFormData(const Answer& answer) {
  return answer.contentType == kFormDataType ||
         (TypeIsUnknown(answer) && BeginsWith(answer, "%FDF-", 0));
}

std::string DeliverFormData(const Answer& answer, DocView view) {
  const Atom type = host.core->AtomFromName(kFormDataHandler);
  const auto length = static_cast<std::uint32_t>(answer.body.size());
  const bool taken = host.viewer->DeliverData(type, answer.body.data(), length, view) != 0;
  return taken ? "" : "The server answers with form data, which nothing here takes.";
}

std::string WrongType(const Answer& answer) {
  const std::string type = PrintableType(answer.contentType);
  if (type.empty()) return "The server's answer is of no known type and cannot be used.";
  return "The server's answer is of the type " + type + ", which cannot be used.";
}

}  // namespace quillon::link
