// The web as a file system of the test's own: what is sent to it is kept, and forms can be opened
// from it as in a browser.
#pragma once

#include <string>
#include <vector>

#include "plugin/host/host.h"

namespace quillform {

struct UrlFiles {
  UrlFiles();
  ~UrlFiles();
  UrlFiles(const UrlFiles&) = delete;
  UrlFiles& operator=(const UrlFiles&) = delete;

  // The document as a browser shows it; null when it cannot be opened.
  DocView Open(const std::string& url, const std::string& pdf);

  struct Sent {
    std::string url;
    std::vector<std::string> pieces;  // one a write
    bool closed = false;

    std::string Text() const;
  };
  std::vector<Sent> sent;
  std::string document;         // what reading any address gives
  FailureCode openFailure = 0;  // of addresses that are written to
  FailureCode closeFailure = 0;
  std::size_t room = std::size_t(-1);  // bytes that can be written before the line breaks
  quillon::FileSystemHandle handle = nullptr;
};

}  // namespace quillform
