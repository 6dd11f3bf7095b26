// What becomes of a server's answer.
#pragma once

#include <string>

#include "quillon/link/http_exchange.h"
#include "quillon/link/link_host.h"

namespace quillon::link {

// Asks the server, telling the watcher (see LinkTable.Watch) before each request. As Exchange
// otherwise.
std::string AskServer(const Request& request, Answer* answer);

void SetWatcher(const LinkWatcher* watcher);

// Tells the watcher how it ended, and answers the code of `problem`.
FailureCode Finish(const char* method, const std::string& url, const std::string& problem);

// Servers that do not know a file's type say application/octet-stream or nothing; then the file's
// first bytes tell.
bool IsDocument(const Answer& answer);
bool IsFormData(const Answer& answer);

// Hands form data to whoever takes it. A sentence when nobody does.
std::string DeliverFormData(const Answer& answer, DocView view);

// "The server's answer is of the type text/html ..." for an answer that nothing here can use.
std::string WrongType(const Answer& answer);

}  // namespace quillon::link
