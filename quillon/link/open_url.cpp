#include "quillon/link/open_url.h"

#include <optional>
#include <utility>

#include "quillon/link/answers.h"
#include "quillon/link/url_files.h"
#include "quillon/link/url_text.h"

namespace quillon::link {
namespace {

struct OwnedPath {
  ~OwnedPath() {
    if (path == nullptr) return;
    CodeOf([this] {
      host.support->ReleasePath(path);
      return kErrorNone;
    });
  }
  PathHandle path;
};

// Through the table, so that plug-ins that look at files first have their turn.
std::string Show(const std::string& url, Answer answer) {
  const FetchedDocument document(url, answer.url, std::move(answer.body));
  const Atom name = host.core->AtomFromName(kUrlFileSystemName);
  const FileSystemHandle fileSystem = host.support->FileSystemByName(name);
  const OwnedPath path{host.support->NewPath(fileSystem, url.c_str(), nullptr)};
  const DocView view = host.viewer->OpenDocument(path.path, fileSystem, nullptr, 0);
  return view != nullptr ? "" : "The document at this address cannot be opened.";
}

std::string Open(DocView view, const std::string& text) {
  const std::optional<std::string> url = ResolveUrl(text, nullptr);
  if (!url) return "This is no address that begins with http:// or https://.";
  Answer answer;
  std::string problem = AskServer({"GET", *url, {}, {}}, &answer);
  if (!problem.empty()) return problem;
  if (IsDocument(answer)) return Show(*url, std::move(answer));
  if (IsFormData(answer)) return DeliverFormData(answer, view);
  return WrongType(answer);
}

}  // namespace

FailureCode OpenURL(DocView view, const char* url, std::uint32_t /*reserved*/) {
  if (url == nullptr) return kErrorBadParameter;
  return CodeOf([&] { return Finish("GET", url, Open(view, url)); });
}

}  // namespace quillon::link
