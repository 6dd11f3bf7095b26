// Documents with widgets, for the tests of what is drawn in them.
#pragma once

#include <string>
#include <vector>

#include "plugin/appearance/text_appearance.h"
#include "tests/plugin/appearance/appearance_host.h"
#include "tests/support/form_pdf.h"

namespace quillform {

struct WidgetHost : AppearanceHost {
  // The first widget of a new document. `entries` are further ones of its dictionary.
  AnnotHandle OpenWidget(const std::string& type, const std::string& entries,
                         const std::string& rect = "[100 700 300 720]",
                         const quillon::test::FormPdfParts& parts = {});
  AnnotHandle OpenFields(const std::vector<std::string>& fields,
                         const quillon::test::FormPdfParts& parts = {});
  AnnotHandle Widget(std::uint32_t index);

  // An object for FormPdfParts::objects.
  static std::string StreamObject(const std::string& entries, const std::string& data);

  // A value for the document opened last.
  ObjectHandle Text(const std::string& bytes);

  // An entry of the widget's dictionary as text.
  static std::string Entry(AnnotHandle annot, Atom key);
};

// What the widget's normal appearance draws; "none" without one.
std::string ContentOf(AnnotHandle annot);

// The code that a piece of the plug-in's code raises.
template <typename Work>
FailureCode CodeOf(Work&& work) {
  return CatchFailure(std::forward<Work>(work));
}

}  // namespace quillform
