// What the tests of placing widgets share: real placing, and widgets that stand nowhere yet.
#pragma once

#include "plugin/model/field_placement.h"
#include "plugin/model/field_values.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/keys.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {

struct PlacementHost : ModelHost {
  PlacementHost() { ConnectFieldPlacement(); }

  // A widget dictionary with a type and flags, on no page.
  ObjectHandle NewWidget(Atom type, std::uint32_t flags = 0) {
    const ObjectHandle widget = Objects->NewDict(objects, true, 10);
    Objects->DictPut(widget, key::Subtype, Objects->NewName(objects, false, key::Widget));
    Objects->DictPut(widget, key::FT, Objects->NewName(objects, false, type));
    if (flags != 0) {
      Objects->DictPut(widget, key::Ff,
                       Objects->NewInteger(objects, false, static_cast<std::int32_t>(flags)));
    }
    return widget;
  }

  // T of each element of an array, with that of its kids in brackets; "-" for none.
  std::string Outline(ObjectHandle array) {
    std::string text;
    for (std::uint32_t i = 0; i < Objects->ArrayLength(array); ++i) {
      const ObjectHandle element = Objects->ArrayGet(array, i);
      const std::string name = Entry(element, "T");
      if (!text.empty()) text += ' ';
      text += name == "null" ? "-" : name.substr(1, name.size() - 2);
      const ObjectHandle kids = Objects->DictGet(element, key::Kids);
      if (IsKind(kids, ObjectKind::kArray)) text += "[" + Outline(kids) + "]";
    }
    return text;
  }
  std::string Tree() { return Outline(FieldsArray()); }

  // The nodes agree with the dictionaries: what is loaded afresh has the same names.
  void ExpectNodesFit() {
    LoadAllFields(doc);
    ForEachFieldNode(
        doc, false, false,
        [](FieldNode node, void*) -> Boolean {
          EXPECT_EQ(FullName(node->dict), FieldNodeName(node));
          const ObjectHandle parent = Objects->DictGet(node->dict, key::Parent);
          EXPECT_EQ(IsNull(parent), node->parent == nullptr);
          if (node->parent != nullptr) {
            EXPECT_TRUE(Objects->Equal(parent, node->parent->dict));
          }
          return 1;
        },
        nullptr);
  }
};

}  // namespace quillform
