// The file system "URL". A file that is read is fetched when it is opened; one that is written is
// sent when it is closed, and the form data that comes back goes to the active view.
#pragma once

#include <memory>
#include <string>

#include "quillon/link/link_host.h"

namespace quillon::link {

// Offers the file system to the host; false when another plug-in has the name already.
bool RegisterUrlFiles();

// A document that was fetched already. While this stands, opening its address reads it again
// without asking the server, and what is relative to it is taken from where it came from.
struct FetchedDocument {
  FetchedDocument(std::string address, std::string cameFrom, std::string bytes);
  ~FetchedDocument();
  FetchedDocument(const FetchedDocument&) = delete;
  FetchedDocument& operator=(const FetchedDocument&) = delete;

  std::string url;
  std::shared_ptr<const std::string> content;
  FetchedDocument* outer;
};

// Forgets where documents came from.
void ForgetFetched();

}  // namespace quillon::link
