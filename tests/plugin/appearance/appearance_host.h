// What the tests of appearances share: the plug-in in a host, documents around one object, and
// hosts that fail.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "plugin/host/host.h"
#include "tests/support/test_host.h"

namespace quillform {

struct TestStream {
  std::string entries;
  std::string data;
};

// Starts with an empty document.
struct AppearanceHost : testing::Test {
  AppearanceHost();

  // The object of that text in a new document, whose objects 1, 2, ... are the streams.
  ObjectHandle Open(const std::string& objectText, const std::vector<TestStream>& streams = {});

  // A new document with a form of these entries; `fields` are the dictionaries in its Fields.
  void OpenForm(const std::string& entries, const std::vector<std::string>& fields = {});
  ObjectHandle Form();
  ObjectHandle Field(std::uint32_t index);

  quillon::test::TestHost host;
  DocHandle doc;  // opened last
  ObjectDoc objects;
};

// While it lives, an operation of the host raises kErrorGeneral.
struct FailingSlot {
  template <typename Return, typename... Args>
  explicit FailingSlot(Return (**slot)(Args...)) {
    auto* const original = *slot;
    restore = [slot, original] { *slot = original; };
    *slot = [](Args...) -> Return {
      Core->Raise(quillon::kErrorGeneral);
      std::abort();
    };
  }
  ~FailingSlot() { restore(); }
  FailingSlot(const FailingSlot&) = delete;
  FailingSlot& operator=(const FailingSlot&) = delete;

  std::function<void()> restore;
};

// While it lives, notes the announcements of changed annotations.
struct ChangeLog {
  ChangeLog();
  ~ChangeLog();
  ChangeLog(const ChangeLog&) = delete;
  ChangeLog& operator=(const ChangeLog&) = delete;

  const std::string& Text() const;
};

}  // namespace quillform
