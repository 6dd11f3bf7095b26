// Which fields an export, a submission or a reset is about.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "plugin/exchange/url_encoding.h"
#include "plugin/model/field_node.h"

namespace quillform {

struct CollectedField {
  const char* name;  // the full name, owned by the node
  FieldNode node;
};

enum class CollectionUse { kReset, kExport };

// What is done with the fields that are selected. SelectFields keeps the names of an exclusion list
// in `excluded`; everything else but `fields` is the caller's to set.
struct FieldCollection {
  CollectionUse use = CollectionUse::kExport;
  bool includeEmpty = false;    // fields without a value too
  bool exportCommand = false;   // the user's own export rather than a submission
  bool listMayName = false;     // strings in the list are full names of fields
  PairOutput* pairs = nullptr;  // where name=value pairs go at once; null: fields are collected
  std::vector<CollectedField> fields;  // in the order of the walk
  std::unordered_set<std::string> excluded;
};

// Hands fields to CollectField: with an inclusion list (an array) its elements in their order, what
// stands for no field being passed over; otherwise every field once, those aside that another kind
// of list names.
void SelectFields(DocHandle doc, ObjectHandle list, bool inclusion, FieldCollection* collection);

// A field with fields under it stands for all of them. Exporting, fields marked as not exported are
// left out, passwords but for the export command, and fields without a value (unless they are asked
// for). A required field without one ends a submission: the user is told its name, and
// ownErrors.requiredFieldEmpty is raised. Resetting leaves out none.
void CollectField(FieldNode node, FieldCollection* collection);

// The value as it is exported. A check box or radio button that is off has the name Off for the
// export command, so that an import turns it off again, and no value in a submission.
ObjectHandle ValueToExport(FieldNode node, bool exportCommand);

// Brings the collected fields into ascending order (lstrcmpA); of equal names the one that was
// collected last comes first.
void SortCollectedFields(FieldCollection* collection);

}  // namespace quillform
