// The fields of a document, each once, in the order of the field tree.
#pragma once

#include <string>
#include <vector>

#include "quillon/app/forms_client.h"

namespace quillon::app {

// One terminal field. Dictionaries and node live as long as the document is open and unchanged.
struct FieldEntry {
  std::string name;  // fully qualified, UTF-8
  FieldNode node;
  ObjectHandle dict;                  // the first dictionary that bears the name
  std::vector<ObjectHandle> widgets;  // in file order; the field's own dictionary when it is one
  FieldKind kind;
  std::uint32_t flags;  // FieldFlag, inherited ones included
};

// Walks Fields and Kids in file order. What cannot be listed (a dictionary without a name, a tree
// that is too deep, an entry that the plug-in refuses) is told in `warnings` and passed over.
std::vector<FieldEntry> ListFields(DocHandle doc, std::vector<std::string>* warnings);

// One option of a choice field; both texts are the same when the file gives only one.
struct FieldOption {
  std::string exported;
  std::string display;
};

// A value as people read it. Not present: the file has none (or Off).
struct FieldValueText {
  bool present = false;
  bool list = false;  // an array in the file, such as several selected options
  std::vector<std::string> texts;
};

// A place where the field is shown.
struct WidgetPlace {
  int page;        // counted from 1, 0 when no page shows it
  FixedRect rect;  // in the page's user space
  bool visible;    // neither hidden nor kept from the screen (ISO 32000-1, 12.5.3)
};

struct FieldDetails {
  FieldValueText value;
  FieldValueText defaultValue;
  std::vector<std::string> flags;  // in words
  std::vector<WidgetPlace> widgets;
  std::vector<FieldOption> options;
  std::vector<std::string> states;  // on-states of check boxes and radio buttons, in file order
  std::uint32_t maxLength = 0;      // 0: no limit
};

FieldValueText ReadFieldValue(FieldNode node, FieldKind kind);
FieldDetails ReadFieldDetails(const FieldEntry& entry);

}  // namespace quillon::app
