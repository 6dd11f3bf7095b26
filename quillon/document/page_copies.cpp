#include "quillon/document/page_copies.h"

#include <unordered_set>
#include <utility>

#include "quillon/document/names.h"
#include "quillon/document/object_reading.h"
#include "quillon/objects/operations.h"

namespace quillon::document {
namespace {

// Fields nest as deep as their names have parts; what is deeper is a circle.
constexpr int kMaxFieldDepth = 256;

// US Letter, for a page that tells no size.
constexpr FixedRect kDefaultBox = {0, 792 * kFixedOne, 612 * kFixedOne, 0};

// The field dictionaries above the widgets of the pages.
struct FieldsAbove {
  std::unordered_set<std::uint32_t> known;  // object numbers of these and of the widgets
  std::vector<ObjectHandle> fields;
};

bool IsWidget(ObjectHandle annot) {
  return NameOr(EntryOf(annot, Names().Subtype), kNoAtom) == Names().Widget;
}

void AddFieldsAbove(ObjectHandle widget, FieldsAbove* above) {
  above->known.insert(ObjectNumberOf(widget));
  ObjectHandle field = EntryOf(widget, Names().Parent);
  for (int depth = 0; depth < kMaxFieldDepth && IsKind(field, ObjectKind::kDict); ++depth) {
    const std::uint32_t number = ObjectNumberOf(field);
    if (number == 0 || !above->known.insert(number).second) return;
    above->fields.push_back(field);
    field = EntryOf(field, Names().Parent);
  }
}

FieldsAbove FindFieldsAbove(DocumentRecord* source, std::uint32_t first, std::uint32_t last) {
  FieldsAbove above;
  for (std::uint32_t number = first; number <= last; ++number) {
    const PageAnnots& annots = AnnotsOnPage(source, number);
    for (const std::uint32_t entry : annots.entries) {
      const ObjectHandle annot = objects::ArrayGet(annots.array, entry);
      if (IsWidget(annot)) AddFieldsAbove(annot, &above);
    }
  }
  return above;
}

// What would drag the rest of the document along: its page tree, its other pages, and the parts of
// the fields that show on other pages.
std::vector<ObjectHandle> ListLeftOut(const DocumentRecord& source, const FieldsAbove& above,
                                      std::uint32_t first, std::uint32_t last) {
  std::vector<ObjectHandle> leftOut = {objects::DocRoot(source.objects)};
  for (const PageTreeNode& node : source.pageTree.nodes) leftOut.push_back(node.dict);
  for (std::uint32_t number = 0; number < source.pageTree.pages.size(); ++number) {
    if (number < first || number > last) leftOut.push_back(source.pageTree.pages[number].dict);
  }
  for (const ObjectHandle field : above.fields) {
    const ObjectHandle kids = EntryOf(field, Names().Kids);
    if (!IsKind(kids, ObjectKind::kArray)) continue;
    for (std::uint32_t i = 0; i < objects::ArrayLength(kids); ++i) {
      const ObjectHandle kid = objects::ArrayGet(kids, i);
      if (above.known.count(ObjectNumberOf(kid)) == 0) leftOut.push_back(kid);
    }
  }
  std::erase_if(leftOut, [](ObjectHandle object) { return ObjectNumberOf(object) == 0; });
  return leftOut;
}

void RemoveNullKids(ObjectHandle field) {
  const ObjectHandle kids = EntryOf(field, Names().Kids);
  if (!IsKind(kids, ObjectKind::kArray)) return;
  for (std::uint32_t i = objects::ArrayLength(kids); i-- > 0;) {
    if (IsNull(objects::ArrayGet(kids, i))) objects::ArrayRemove(kids, i);
  }
}

// Entries that a page inherits, to be written into its copy.
struct InheritedEntries {
  std::vector<std::pair<std::size_t, Atom>> places;  // which copy, which entry
  std::vector<ObjectHandle> values;
};

InheritedEntries FindInherited(DocumentRecord* source, std::uint32_t first, std::uint32_t last) {
  InheritedEntries inherited;
  const Atom keys[] = {Names().Resources, Names().MediaBox, Names().CropBox, Names().Rotate};
  for (std::uint32_t number = first; number <= last; ++number) {
    for (const Atom key : keys) {
      if (objects::DictKnown(source->pageTree.pages[number].dict, key) != 0) continue;
      const ObjectHandle value = InheritedEntry(&source->pageTree, number, key);
      if (IsNull(value)) continue;
      inherited.places.emplace_back(number - first, key);
      inherited.values.push_back(value);
    }
  }
  return inherited;
}

// Fields have these from their document's form dictionary, which stays behind.
void TakeFormDefaults(DocumentRecord* source, const PageCopies& copies, ObjectDoc target) {
  const ObjectHandle form = EntryOf(objects::DocRoot(source->objects), Names().QuillForm);
  for (const ObjectHandle page : copies.pages) {
    const ObjectHandle annots = AnnotsArray(page);
    const std::uint32_t count = IsNull(annots) ? 0 : objects::ArrayLength(annots);
    for (std::uint32_t i = 0; i < count; ++i) {
      ObjectHandle top = objects::ArrayGet(annots, i);
      if (!IsWidget(top)) continue;
      for (int depth = 0; depth < kMaxFieldDepth; ++depth) {
        const ObjectHandle above = EntryOf(top, Names().Parent);
        if (!IsKind(above, ObjectKind::kDict)) break;
        top = above;
      }
      for (const Atom key : {Names().DA, Names().Q}) {
        const ObjectHandle value = EntryOf(form, key);
        if (IsNull(value) || objects::DictKnown(top, key) != 0) continue;
        objects::DictPut(top, key, objects::CopyObject(value, target));
      }
      // The resources that DA names may be others under the same names where the page goes.
      if (!IsNull(copies.fieldResources) && objects::DictKnown(top, Names().DR) == 0) {
        objects::DictPut(top, Names().DR, copies.fieldResources);
      }
    }
  }
}

ObjectHandle FieldResourcesOf(const DocumentRecord& source, const FieldsAbove& above) {
  if (above.known.empty()) return kNullObject;
  const ObjectHandle form = EntryOf(objects::DocRoot(source.objects), Names().QuillForm);
  const ObjectHandle resources = EntryOf(form, Names().DR);
  return IsKind(resources, ObjectKind::kDict) ? resources : kNullObject;
}

// Indirect objects are shared; what stands in its dictionary directly is copied.
void PutShared(ObjectHandle dict, Atom key, ObjectHandle value) {
  const ObjectDoc doc = objects::DocumentOf(dict);
  objects::DictPut(dict, key,
                   objects::IsIndirect(value) != 0 ? value : objects::CopyObject(value, doc));
}

Boolean AddMissing(ObjectHandle key, ObjectHandle value, void* to) {
  const ObjectHandle known = *static_cast<ObjectHandle*>(to);
  const Atom name = objects::NameValue(key);
  if (objects::DictKnown(known, name) == 0) PutShared(known, name, value);
  return 1;
}

// One kind of resources, such as all fonts.
Boolean AddMissingKind(ObjectHandle key, ObjectHandle value, void* to) {
  const ObjectHandle known = *static_cast<ObjectHandle*>(to);
  const ObjectDoc doc = objects::DocumentOf(known);
  const Atom kind = objects::NameValue(key);
  if (!IsKind(value, ObjectKind::kDict)) return 1;
  if (objects::DictKnown(known, kind) == 0) {
    objects::DictPut(known, kind, objects::NewDict(doc, 0, 5));
  }
  ObjectHandle there = EntryOf(known, kind);
  if (IsKind(there, ObjectKind::kDict)) objects::EnumDict(value, &AddMissing, &there);
  return 1;
}

// What tied the page to its document, and what every page has.
void CompletePage(ObjectHandle page, ObjectDoc doc) {
  for (const Atom key : {Names().Parent, Names().StructParents, Names().B}) {
    objects::DictRemove(page, key);
  }
  if (objects::DictKnown(page, Names().MediaBox) == 0) {
    objects::DictPut(page, Names().MediaBox, NewRect(doc, kDefaultBox));
  }
  if (objects::DictKnown(page, Names().Resources) == 0) {
    objects::DictPut(page, Names().Resources, objects::NewDict(doc, 0, 0));
  }
  const ObjectHandle annots = AnnotsArray(page);
  const std::uint32_t count = IsNull(annots) ? 0 : objects::ArrayLength(annots);
  for (std::uint32_t i = 0; i < count; ++i) {
    const ObjectHandle annot = objects::ArrayGet(annots, i);
    if (IsKind(annot, ObjectKind::kDict)) objects::DictRemove(annot, Names().StructParent);
  }
}

}  // namespace

PageCopies CopyPages(DocumentRecord* source, std::uint32_t first, std::uint32_t last,
                     ObjectDoc target) {
  CountPages(&source->pageTree);
  const FieldsAbove above = FindFieldsAbove(source, first, last);
  const InheritedEntries inherited = FindInherited(source, first, last);
  std::vector<ObjectHandle> copied;
  for (std::uint32_t number = first; number <= last; ++number) {
    copied.push_back(source->pageTree.pages[number].dict);
  }
  const std::size_t pageCount = copied.size();
  copied.insert(copied.end(), above.fields.begin(), above.fields.end());
  copied.insert(copied.end(), inherited.values.begin(), inherited.values.end());
  const ObjectHandle resources = FieldResourcesOf(*source, above);
  if (!IsNull(resources)) copied.push_back(resources);

  std::vector<ObjectHandle> copies =
      CopyPdfObjects(source->objects, copied, ListLeftOut(*source, above, first, last), target);
  const std::size_t firstValue = pageCount + above.fields.size();
  for (std::size_t i = pageCount; i < firstValue; ++i) RemoveNullKids(copies[i]);
  for (std::size_t i = 0; i < inherited.places.size(); ++i) {
    const auto& [page, key] = inherited.places[i];
    objects::DictPut(copies[page], key, copies[firstValue + i]);
  }
  PageCopies made{{}, IsNull(resources) ? kNullObject : copies.back()};
  copies.resize(pageCount);
  made.pages = std::move(copies);
  for (const ObjectHandle page : made.pages) CompletePage(page, target);
  TakeFormDefaults(source, made, target);
  return made;
}

void AddFieldResources(ObjectDoc doc, ObjectHandle resources) {
  const ObjectHandle form = EntryOf(objects::DocRoot(doc), Names().QuillForm);
  if (!IsKind(form, ObjectKind::kDict) || !IsKind(resources, ObjectKind::kDict)) return;
  if (!IsKind(EntryOf(form, Names().DR), ObjectKind::kDict)) {
    objects::DictPut(form, Names().DR, objects::NewDict(doc, 0, 2));
  }
  ObjectHandle known = EntryOf(form, Names().DR);
  objects::EnumDict(resources, &AddMissingKind, &known);
}

}  // namespace quillon::document
