#include "plugin/exchange/field_collection.h"

#include <algorithm>
#include <array>

#include "plugin/host/win32.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"
#include "plugin/resources/error_texts.h"
#include "plugin/resources/messages.h"

namespace quillform {

namespace {

constexpr std::uint32_t kRequiredFieldEmpty = 86;
// Every byte of a name as text of its own, and then some.
constexpr std::uint32_t kHostNameSize = 2 * (kMaxNameLength + 1);

// The fields below the one that was selected, each once: damaged trees lead to one field in many
// ways.
struct Descent {
  std::unordered_set<FieldNode> met;
};

void Collect(FieldNode node, FieldCollection* collection, Descent* descent, std::uint32_t depth);

void CollectKids(FieldNode node, FieldCollection* collection, Descent* descent,
                 std::uint32_t depth) {
  const ObjectHandle kids = Objects->DictGet(node->dict, key::Kids);
  if (!IsKind(kids, ObjectKind::kArray)) return;
  for (std::uint32_t i = 0; i < Objects->ArrayLength(kids); ++i) {
    Collect(FieldNodeOf(Objects->ArrayGet(kids, i)), collection, descent, depth + 1);
  }
}

[[noreturn]] void RefuseEmptyField(const char* name) {
  char text[kHostNameSize];
  Document->PDFToHostText(name, static_cast<std::uint32_t>(std::char_traits<char>::length(name)),
                          text, sizeof text);
  ShowMessage(MB_ICONEXCLAMATION, MB_OK, kRequiredFieldEmpty, text);
  Raise(ownErrors.requiredFieldEmpty);
}

bool MayBeExported(FieldNode node, const FieldCollection& collection) {
  const std::uint32_t flags = GetFieldFlags(node, 1);
  if ((flags & kFieldNoExport) != 0) return false;
  return (flags & kFieldPassword) == 0 || collection.exportCommand;
}

// Whether a field without a value is exported all the same.
bool TakesEmpty(FieldNode node, const FieldCollection& collection) {
  if ((GetFieldFlags(node, 1) & kFieldRequired) == 0) return collection.includeEmpty;
  if (!collection.exportCommand) RefuseEmptyField(FieldNodeName(node));
  return false;
}

void Export(FieldNode node, FieldCollection* collection) {
  if (!MayBeExported(node, *collection)) return;
  const ObjectHandle value = ValueToExport(node, collection->exportCommand);
  if (IsNull(value) && !TakesEmpty(node, *collection)) return;
  const char* name = FieldNodeName(node);
  if (collection->pairs != nullptr) {
    WritePair(collection->pairs, name, value);
  } else {
    collection->fields.push_back({name, node});
  }
}

void Collect(FieldNode node, FieldCollection* collection, Descent* descent, std::uint32_t depth) {
  if (node == nullptr || depth > kMaxFieldDepth || !descent->met.insert(node).second) return;
  if (FieldNodeIsValid(node) && !collection->excluded.empty() &&
      collection->excluded.count(FieldNodeName(node)) != 0) {
    return;
  }
  if (!FieldNodeIsTerminal(node)) {
    CollectKids(node, collection, descent, depth);
  } else if (collection->use == CollectionUse::kReset) {
    ResetFieldValue(node);
  } else {
    Export(node, collection);
  }
}

bool IsFullName(ObjectHandle element, const FieldCollection& collection) {
  return collection.listMayName && IsKind(element, ObjectKind::kString);
}

void CollectListed(DocHandle doc, ObjectHandle list, FieldCollection* collection) {
  for (std::uint32_t i = 0; i < Objects->ArrayLength(list); ++i) {
    const ObjectHandle element = Objects->ArrayGet(list, i);
    CollectField(IsFullName(element, *collection)
                     ? FindFieldByName(doc, NameOfText(element).c_str())
                     : FieldNodeOf(element),
                 collection);
  }
}

// By name: the walk comes to one of a field's widgets, a list names the field.
void ExcludeListed(ObjectHandle list, FieldCollection* collection) {
  if (!IsKind(list, ObjectKind::kArray)) return;
  for (std::uint32_t i = 0; i < Objects->ArrayLength(list); ++i) {
    const ObjectHandle element = Objects->ArrayGet(list, i);
    if (IsFullName(element, *collection)) {
      collection->excluded.insert(NameOfText(element));
    } else if (const FieldNode node = ExistingNodeOf(element); FieldNodeIsValid(node)) {
      collection->excluded.insert(FieldNodeName(node));
    }
  }
}

}  // namespace

void SelectFields(DocHandle doc, ObjectHandle list, bool inclusion, FieldCollection* collection) {
  collection->excluded.clear();
  if (inclusion && IsKind(list, ObjectKind::kArray)) {
    CollectListed(doc, list, collection);
    return;
  }
  ExcludeListed(list, collection);
  ForEachFieldNode(
      doc, true, true,
      [](FieldNode node, void* data) -> Boolean {
        CollectField(node, static_cast<FieldCollection*>(data));
        return 1;
      },
      collection);
}

void CollectField(FieldNode node, FieldCollection* collection) {
  Descent descent;
  Collect(node, collection, &descent, 0);
}

ObjectHandle ValueToExport(FieldNode node, bool exportCommand) {
  const ObjectHandle value = GetFieldValue(node);
  return exportCommand ? value : ValueToStore(node, value);
}

void SortCollectedFields(FieldCollection* collection) {
  std::vector<CollectedField>& fields = collection->fields;
  std::reverse(fields.begin(), fields.end());
  std::stable_sort(fields.begin(), fields.end(),
                   [](const CollectedField& a, const CollectedField& b) {
                     return lstrcmpA(a.name, b.name) < 0;
                   });
}

}  // namespace quillform
