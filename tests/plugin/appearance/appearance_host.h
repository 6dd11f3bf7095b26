// What the tests of appearances share: the plug-in in a host, documents with widgets, and hosts
// that fail.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "plugin/appearance/text_appearance.h"
#include "tests/support/form_pdf.h"
#include "tests/support/test_host.h"

namespace quillform {

// Starts with an empty form.
struct AppearanceHost : testing::Test {
  AppearanceHost();

  // A new document whose form has these entries only.
  void OpenForm(const std::string& entries, const std::vector<std::string>& fields = {});
  void OpenFields(const std::vector<std::string>& fields,
                  const quillon::test::FormPdfParts& parts = {});

  // The only widget of a new document. `entries` are further ones of its dictionary.
  AnnotHandle OpenWidget(const std::string& type, const std::string& entries,
                         const std::string& rect = "[100 700 300 720]",
                         const quillon::test::FormPdfParts& parts = {});

  AnnotHandle Widget(std::uint32_t index);
  ObjectHandle Form();

  // A value for the document opened last.
  ObjectHandle Text(const std::string& bytes);

  // An object for FormPdfParts::objects.
  static std::string StreamObject(const std::string& entries, const std::string& data);

  // An entry of the widget's dictionary as text.
  static std::string Entry(AnnotHandle annot, Atom key);

  quillon::test::TestHost host;
  DocHandle doc;  // opened last
  ObjectDoc objects;
};

// What the widget's normal appearance draws; "none" without one.
std::string ContentOf(AnnotHandle annot);

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

}  // namespace quillform
