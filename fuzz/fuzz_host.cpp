#include "fuzz/fuzz_host.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "plugin/frame/plugin_main.h"
#include "quillon/core/host.h"
#include "quillon/core/operations.h"
#include "quillon/core/report.h"
#include "quillon/document/open_document.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/start.h"

namespace quillon::fuzz {
namespace {

struct Filling {
  DocHandle doc;
  const char* value;
};

Boolean FillOne(quillform::FieldNode node, void* data) {
  const auto& filling = *static_cast<const Filling*>(data);
  const ObjectDoc objects = document::ObjectDocOf(filling.doc);
  const auto length = static_cast<std::uint32_t>(std::strlen(filling.value));
  Attempt(
      [&] { Forms().SetFieldValue(node, objects::NewString(objects, 0, filling.value, length)); });
  return 1;
}

}  // namespace

void StartOnce(PlugInMainRoutine further) {
  static const bool started = [further] {
    SetReporter([](const std::string&) {});
    StartViewer();
    if (further != nullptr) AttachPlugIn(further, nullptr);
    AttachPlugIn(&PlugInMain, nullptr);
    InitialisePlugIns();
    // Not stopped: the process ends at once, and what statics hold may be gone by then.
    return true;
  }();
  static_cast<void>(started);
}

const quillform::FormsTable& Forms() {
  static const auto* table = static_cast<const quillform::FormsTable*>(
      core::GetTable(core::AtomFromName(quillform::kFormsTableName), quillform::kFormsVersion));
  Require(table != nullptr, "the plug-in offers no forms");
  return *table;
}

void Require(bool held, const char* what) {
  if (held) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

ShownDocument::ShownDocument(std::string bytes)
    : view(OpenViewOfDocument(OpenDocumentBytes(std::move(bytes)))), doc(viewer::DocOf(view)) {}

ShownDocument::~ShownDocument() { viewer::CloseView(view); }

void FillTextFields(DocHandle doc, const char* value) {
  Filling filling = {doc, value};
  Attempt([&] { Forms().LoadAllFields(doc); });
  Attempt([&] { Forms().ForEachFieldNode(doc, 1, 1, FillOne, &filling); });
}

std::string SavedBytes(DocView view) {
  PrepareSave(view);
  std::string bytes = DocumentToBytes(viewer::DocOf(view));
  ResumeAfterSave(view);
  return bytes;
}

std::uint32_t PagesWhenReopened(std::string bytes) {
  bool opened = false;
  std::uint32_t pages = 0;
  Attempt([&] {
    const ShownDocument again(std::move(bytes));
    pages = document::PageCount(again.doc);
    opened = true;
  });
  Require(opened, "what was saved cannot be opened");
  return pages;
}

}  // namespace quillon::fuzz
