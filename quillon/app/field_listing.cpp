#include "quillon/app/field_listing.h"

#include <unordered_map>
#include <unordered_set>

#include "quillon/app/console.h"
#include "quillon/app/form_keys.h"
#include "quillon/core/operations.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"

namespace quillon::app {
namespace {

using document::EntryOf;
using document::IsKind;

// Real forms nest a handful of levels.
constexpr int kMaxDepth = 64;

struct Listing {
  std::vector<FieldEntry> fields;
  std::unordered_map<std::string, std::size_t> placeOf;  // full name -> place in `fields`
  std::unordered_set<std::uint32_t> visited;             // object numbers
  std::vector<std::string>* warnings;
};

// The elements now: reading a field may change the array that it was found in.
std::vector<ObjectHandle> Elements(ObjectHandle array) {
  std::vector<ObjectHandle> elements;
  if (!IsKind(array, ObjectKind::kArray)) return elements;
  const std::uint32_t length = objects::ArrayLength(array);
  elements.reserve(length);
  for (std::uint32_t i = 0; i < length; ++i) elements.push_back(objects::ArrayGet(array, i));
  return elements;
}

void Warn(const Listing& listing, ObjectHandle object, const std::string& what) {
  listing.warnings->push_back(DescribePlace(what, ObjectNumberOf(object), kNoOffset));
}

FieldNode NodeOf(const Listing& listing, ObjectHandle dict) {
  try {
    return CallForms(&FormsTable::FieldNodeOf, dict);
  } catch (const HostFailure& failure) {
    Warn(listing, dict, "a field cannot be read: " + std::string(failure.what()));
    return nullptr;
  }
}

bool IsWidget(ObjectHandle dict) {
  return document::NameOr(EntryOf(dict, Keys().Subtype), kNoAtom) == Keys().Widget;
}

void CollectWidgets(Listing* listing, ObjectHandle dict, int depth,
                    std::vector<ObjectHandle>* widgets) {
  const std::vector<ObjectHandle> kids = Elements(EntryOf(dict, Keys().Kids));
  if (kids.empty() && IsWidget(dict)) widgets->push_back(dict);
  if (depth >= kMaxDepth) return;
  for (const ObjectHandle kid : kids) {
    if (!IsKind(kid, ObjectKind::kDict)) continue;
    const std::uint32_t number = ObjectNumberOf(kid);
    if (number != 0 && !listing->visited.insert(number).second) continue;
    CollectWidgets(listing, kid, depth + 1, widgets);
  }
}

void AddField(Listing* listing, ObjectHandle dict, FieldNode node, int depth) {
  const char* name = CallForms(&FormsTable::FieldNodeName, node);
  if (name == nullptr) {
    Warn(*listing, dict, "a field has no name");
    return;
  }
  const auto [place, isNew] = listing->placeOf.try_emplace(name, listing->fields.size());
  if (isNew) {
    const auto flags = CallForms(&FormsTable::GetFieldFlags, node, std::uint16_t{1});
    listing->fields.push_back({NameToUtf8(name), node, dict, {}, KindOfField(dict, flags), flags});
  }
  CollectWidgets(listing, dict, depth, &listing->fields[place->second].widgets);
}

void Visit(Listing* listing, ObjectHandle dict, int depth) {
  if (!IsKind(dict, ObjectKind::kDict)) return;
  const std::uint32_t number = ObjectNumberOf(dict);
  if (number != 0 && !listing->visited.insert(number).second) return;
  if (depth >= kMaxDepth) {
    Warn(*listing, dict, "the field tree is nested too deeply");
    return;
  }
  const FieldNode node = NodeOf(*listing, dict);
  const std::vector<ObjectHandle> kids = Elements(objects::DictGet(dict, Keys().Kids));
  // Only when its kids are known can a field tell whether it has parts with names of their own.
  for (const ObjectHandle kid : kids) {
    if (IsKind(kid, ObjectKind::kDict)) NodeOf(*listing, kid);
  }
  if (node != nullptr && CallForms(&FormsTable::FieldNodeIsTerminal, node) != 0) {
    AddField(listing, dict, node, depth);
    return;
  }
  if (node == nullptr && kids.empty()) {
    Warn(*listing, dict,
         number == 0 ? "a field has no object number of its own, and is left out"
                     : "a field has no usable name");
  }
  for (const ObjectHandle kid : kids) Visit(listing, kid, depth + 1);
}

}  // namespace

std::vector<FieldEntry> ListFields(DocHandle doc, std::vector<std::string>* warnings) {
  Listing listing;
  listing.warnings = warnings;
  const ObjectHandle catalog = objects::DocRoot(document::ObjectDocOf(doc));
  const ObjectHandle form = objects::DictGet(catalog, Keys().QuillForm);
  const std::vector<ObjectHandle> fields = Elements(EntryOf(form, Keys().Fields));
  listing.fields.reserve(fields.size());
  Progress progress("reading fields", fields.size());
  for (const ObjectHandle field : fields) {
    Visit(&listing, field, 0);
    progress.Step();
  }
  return std::move(listing.fields);
}

}  // namespace quillon::app
