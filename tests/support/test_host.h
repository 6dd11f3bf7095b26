// The host inside the test's own process: no mocks, no screen.
#pragma once

#include <string>
#include <utility>

#include "quillon/core/guard.h"
#include "sdk/entry.h"
#include "sdk/types.h"

namespace quillon::test {

struct TestHostParts {
  PlugInMainRoutine plugIn = nullptr;  // attached and initialised when given
};

// The viewer between its start and its end; checks at the end that nothing was left open.
struct RunningViewer {
  RunningViewer();
  ~RunningViewer();
  RunningViewer(const RunningViewer&) = delete;
  RunningViewer& operator=(const RunningViewer&) = delete;
};

// The whole viewer for its own lifetime. At the end it is stopped, and the test fails when a
// guarded block, a page, a stream, a file or an object-layer document (such as an FDF) was left
// open. Views and documents that are still open are closed with the viewer.
struct TestHost {
  explicit TestHost(const TestHostParts& parts = {});
  ~TestHost();
  TestHost(const TestHost&) = delete;
  TestHost& operator=(const TestHost&) = delete;

  RunningViewer running;
};

// Without a view: no notification is sent.
DocHandle OpenTestDocument(std::string pdfBytes);

// The code that `call` raises, or fails with inside the host; 0 when it returns.
template <typename Call>
FailureCode RaisedBy(Call&& call) {
  try {
    CallGuarded([&] { static_cast<void>(std::forward<Call>(call)()); });
    return kErrorNone;
  } catch (const HostFailure& failure) {
    return failure.code;
  }
}

}  // namespace quillon::test
