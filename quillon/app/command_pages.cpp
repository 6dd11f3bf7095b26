// `quillon pages`: what fields become with the pages is the forms plug-in's business.
#include "quillon/app/commands.h"
#include "quillon/app/console.h"
#include "quillon/app/forms_client.h"
#include "quillon/app/open_save_options.h"
#include "quillon/app/page_range.h"
#include "quillon/app/session.h"
#include "quillon/document/open_document.h"
#include "quillon/document/operations.h"
#include "quillon/document/page_edit.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"

namespace quillon::app {
namespace {

PageRange RangeOf(DocHandle doc, const std::string& text) {
  return ParsePageRange(text, document::PageCount(doc));
}

void CheckEditable(DocHandle doc) {
  if ((document::GetPermissions(doc) & kPermitEdit) != 0) return;
  Fail(kErrorOpenDocument,
       "the document's permissions do not allow changing its pages; its owner's password does");
}

// A failure that concerns the other file names it.
DocHandle OpenOther(const std::string& file) {
  try {
    return OpenDocumentFile(file, OptionsForOpening());
  } catch (const HostFailure& failure) {
    Fail(failure.code, Printable(file) + ": " + Describe(failure));
  }
}

struct OtherDocument {
  explicit OtherDocument(const std::string& file) : doc(OpenOther(file)) {}
  ~OtherDocument() { CloseDocument(doc); }
  OtherDocument(const OtherDocument&) = delete;
  OtherDocument& operator=(const OtherDocument&) = delete;

  DocHandle doc;
};

struct ShownDocument {
  explicit ShownDocument(DocHandle shown) : view(OpenViewOfDocument(shown)) {}
  ~ShownDocument() {
    try {
      viewer::CloseView(view);
    } catch (const HostFailure& failure) {
      PrintWarning("", "closing the new document failed: " + Describe(failure));
    }
  }
  ShownDocument(const ShownDocument&) = delete;
  ShownDocument& operator=(const ShownDocument&) = delete;

  DocView view;
};

int InsertFrom(const PagesArguments& arguments) {
  const OpenedView opened(arguments.file);
  CheckEditable(opened.doc);
  CheckSignatures(opened.doc, {arguments.append, arguments.force}, DocumentChange::kPages);
  const OtherDocument other(arguments.other);
  const PageRange range = RangeOf(other.doc, arguments.range);
  const std::uint32_t pages = document::PageCount(opened.doc);
  const std::uint32_t after = arguments.after.value_or(pages);
  if (after > pages) Fail(kErrorBadParameter, "there is no page " + std::to_string(after));
  InsertPages(opened.doc, static_cast<std::int32_t>(after) - 1, other.doc, range.first, range.last);
  WriteDocument(opened.view, arguments.output, {arguments.append, arguments.force});
  std::vector<std::string> warnings;
  for (const std::string& warning : FileWarnings(other.doc)) {
    warnings.push_back(Printable(arguments.other) + ": " + warning);
  }
  return FinishDocument(arguments.file, opened.doc, warnings);
}

int Delete(const PagesArguments& arguments) {
  const OpenedView opened(arguments.file);
  CheckEditable(opened.doc);
  CheckSignatures(opened.doc, {arguments.append, arguments.force}, DocumentChange::kPages);
  const PageRange range = RangeOf(opened.doc, arguments.range);
  // Only fields that are known are told from the ones that stay.
  CallForms(&FormsTable::LoadAllFields, opened.doc);
  DeletePages(opened.doc, range.first, range.last);
  WriteDocument(opened.view, arguments.output, {arguments.append, arguments.force});
  return FinishDocument(arguments.file, opened.doc);
}

int Extract(const PagesArguments& arguments) {
  const OpenedView opened(arguments.file);
  CheckEditable(opened.doc);
  const PageRange range = RangeOf(opened.doc, arguments.range);
  const DocHandle made = ExtractPages(opened.doc, range.first, range.last);
  const ShownDocument shown(made);
  WriteDocument(shown.view, arguments.output);
  return FinishDocument(arguments.file, opened.doc);
}

}  // namespace

int RunPages(const PagesArguments& arguments) {
  switch (arguments.action) {
    case PagesAction::kInsert:
      return InsertFrom(arguments);
    case PagesAction::kDelete:
      return Delete(arguments);
    default:
      return Extract(arguments);
  }
}

}  // namespace quillon::app
