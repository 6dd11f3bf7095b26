#include "quillon/document/page_edit.h"

#include <string>
#include <vector>

#include "quillon/core/failure.h"
#include "quillon/document/document_record.h"
#include "quillon/document/names.h"
#include "quillon/document/notify.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/open_document.h"
#include "quillon/document/page_copies.h"
#include "quillon/document/unused_objects.h"
#include "quillon/objects/operations.h"

namespace quillon {
namespace document {
namespace {

// Nodes of the page tree that are made get no more kids than this; nodes that are there take twice
// as many before new pages get a node of their own.
constexpr std::size_t kMostKids = 32;

struct TreePlace {
  std::uint32_t node;   // of PageTree::nodes
  std::uint32_t index;  // in its Kids
};

void CheckRange(DocumentRecord* doc, std::uint32_t first, std::uint32_t last) {
  const std::uint32_t count = CountPages(&doc->pageTree);
  if (first <= last && last < count) return;
  Fail(kErrorBadParameter, "the document has no pages " + std::to_string(first + 1) + " to " +
                               std::to_string(last + 1) + ", it has " + std::to_string(count));
}

std::uint32_t IndexAmong(ObjectHandle kids, ObjectHandle dict) {
  const std::uint32_t length = objects::ArrayLength(kids);
  for (std::uint32_t i = 0; i < length; ++i) {
    if (objects::Equal(objects::ArrayGet(kids, i), dict) != 0) return i;
  }
  Fail(kErrorBadFile, "a page is not where the page tree had it");
}

TreePlace PlaceOfPage(const PageTree& tree, std::uint32_t number) {
  const TreePage& page = tree.pages[number];
  if (page.parent == kNoNode) Fail(kErrorBadFile, "the document has a page, but no page tree");
  return {page.parent, IndexAmong(tree.nodes[page.parent].kids, page.dict)};
}

TreePlace PlaceAfter(const PageTree& tree, std::int32_t after) {
  if (tree.nodes.empty()) Fail(kErrorBadFile, "the document has no page tree");
  if (after < 0) return {0, 0};
  TreePlace place = PlaceOfPage(tree, static_cast<std::uint32_t>(after));
  ++place.index;
  return place;
}

// Counts that are not there, or are no numbers, stay as they are: they are not needed.
void AddToCount(ObjectHandle node, std::int32_t change) {
  const ObjectHandle count = EntryOf(node, Names().Count);
  if (!IsKind(count, ObjectKind::kInteger)) return;
  const ObjectDoc doc = objects::DocumentOf(node);
  objects::DictPut(node, Names().Count,
                   objects::NewInteger(doc, 0, objects::IntegerValue(count) + change));
}

void AddToCounts(const PageTree& tree, std::uint32_t node, std::int32_t change) {
  for (; node != kNoNode; node = tree.nodes[node].parent) AddToCount(tree.nodes[node].dict, change);
}

struct Subtree {
  ObjectHandle dict;
  std::int32_t pages;
};

Subtree MakeNode(ObjectDoc doc, const Subtree* kids, std::size_t count) {
  const ObjectHandle node = objects::NewDict(doc, 1, 4);
  const ObjectHandle array = objects::NewArray(doc, 0, static_cast<std::uint32_t>(count));
  std::int32_t pages = 0;
  for (std::size_t i = 0; i < count; ++i) {
    objects::DictPut(kids[i].dict, Names().Parent, node);
    objects::ArrayInsert(array, static_cast<std::uint32_t>(i), kids[i].dict);
    pages += kids[i].pages;
  }
  objects::DictPut(node, Names().Type, objects::NewName(doc, 0, Names().Pages));
  objects::DictPut(node, Names().Kids, array);
  objects::DictPut(node, Names().Count, objects::NewInteger(doc, 0, pages));
  return {node, pages};
}

// One more level, until few enough remain to stand in one node.
void Gather(ObjectDoc doc, std::size_t most, std::vector<Subtree>* parts) {
  while (parts->size() > most) {
    std::vector<Subtree> gathered;
    for (std::size_t i = 0; i < parts->size(); i += kMostKids) {
      const std::size_t count = std::min(kMostKids, parts->size() - i);
      gathered.push_back(MakeNode(doc, parts->data() + i, count));
    }
    *parts = std::move(gathered);
  }
}

bool NodeGives(const PageTree& tree, std::uint32_t node, Atom key) {
  for (; node != kNoNode; node = tree.nodes[node].parent) {
    if (objects::DictKnown(tree.nodes[node].dict, key) != 0) return true;
  }
  return false;
}

// A page that had neither must not inherit them in its new place.
void KeepFromInheriting(const PageTree& tree, std::uint32_t node, ObjectHandle page) {
  const ObjectDoc doc = objects::DocumentOf(page);
  if (objects::DictKnown(page, Names().Rotate) == 0 && NodeGives(tree, node, Names().Rotate)) {
    objects::DictPut(page, Names().Rotate, objects::NewInteger(doc, 0, 0));
  }
  if (objects::DictKnown(page, Names().CropBox) == 0 && NodeGives(tree, node, Names().CropBox)) {
    const ObjectHandle media = objects::DictGet(page, Names().MediaBox);
    objects::DictPut(page, Names().CropBox, objects::CopyObject(media, doc));
  }
}

void StartAfresh(DocumentRecord* doc) {
  doc->pageTree = PageTree(doc->objects);
  doc->annots = AnnotMap{};
  RenumberPages(doc);
}

void LinkPages(DocumentRecord* doc, std::int32_t after, const std::vector<ObjectHandle>& pages) {
  const PageTree& tree = doc->pageTree;
  const TreePlace place = PlaceAfter(tree, after);
  const PageTreeNode& node = tree.nodes[place.node];
  std::vector<Subtree> parts;
  for (const ObjectHandle page : pages) {
    KeepFromInheriting(tree, place.node, page);
    parts.push_back({page, 1});
  }
  const bool fits = objects::ArrayLength(node.kids) + parts.size() <= 2 * kMostKids;
  Gather(doc->objects, fits ? 2 * kMostKids : 1, &parts);
  std::uint32_t index = place.index;
  for (const Subtree& part : parts) {
    objects::DictPut(part.dict, Names().Parent, node.dict);
    objects::ArrayInsert(node.kids, index++, part.dict);
  }
  AddToCounts(tree, place.node, static_cast<std::int32_t>(pages.size()));
}

// A node that has lost its last kid goes too, but for the root.
void RemoveFromNode(const PageTree& tree, std::uint32_t node, ObjectHandle kid) {
  for (;;) {
    const PageTreeNode& from = tree.nodes[node];
    objects::ArrayRemove(from.kids, IndexAmong(from.kids, kid));
    if (from.parent == kNoNode || objects::ArrayLength(from.kids) != 0) return;
    kid = from.dict;
    node = from.parent;
  }
}

void UnlinkPages(DocumentRecord* doc, std::uint32_t first, std::uint32_t last) {
  const PageTree& tree = doc->pageTree;
  std::vector<ObjectHandle> removed;
  for (std::uint32_t number = first; number <= last; ++number) {
    const TreePlace place = PlaceOfPage(tree, number);
    const ObjectHandle page = tree.pages[number].dict;
    AddToCounts(tree, place.node, -1);
    RemoveFromNode(tree, place.node, page);
    if (objects::IsIndirect(page) != 0) removed.push_back(page);
  }
  StartAfresh(doc);
  // The same page may stand in the tree twice, and stay once.
  std::erase_if(removed,
                [&](ObjectHandle page) { return FindPage(&doc->pageTree, page).has_value(); });
  RemoveWithUnused(doc->objects, removed);
}

}  // namespace
}  // namespace document

void InsertPages(DocHandle doc, std::int32_t after, DocHandle source, std::uint32_t first,
                 std::uint32_t last) {
  using namespace document;
  DocumentRecord& target = RecordOf(doc);
  DocumentRecord& from = RecordOf(source);
  CheckRange(&from, first, last);
  const auto pageCount = static_cast<std::int32_t>(CountPages(&target.pageTree));
  if (after < -1 || after >= pageCount) {
    Fail(kErrorBadParameter, "the document has no page " + std::to_string(after + 1));
  }
  const std::uint32_t count = last - first + 1;
  ObjectHandle fieldResources = kNullObject;
  try {
    const PageCopies copies = CopyPages(&from, first, last, target.objects);
    fieldResources = copies.fieldResources;
    AdoptFormKey(target.objects, from.objects);
    LinkPages(&target, after, copies.pages);
    StartAfresh(&target);
  } catch (const HostFailure& failure) {
    SendNote<PagesInsertedNote>(kNotePagesInserted, doc, after, count, failure.code);
    throw;
  }
  SendNote<PagesInsertedNote>(kNotePagesInserted, doc, after, count, kErrorNone);
  // Now that there is a form, for readers that look for the fonts of fields only there.
  AddFieldResources(target.objects, fieldResources);
}

void DeletePages(DocHandle doc, std::uint32_t first, std::uint32_t last) {
  using namespace document;
  DocumentRecord& record = RecordOf(doc);
  CheckRange(&record, first, last);
  if (last - first + 1 == CountPages(&record.pageTree)) {
    Fail(kErrorBadParameter, "a document cannot be left without pages");
  }
  SendNote<PagesNote>(kNotePagesWillDelete, doc, first, last);
  UnlinkPages(&record, first, last);
}

DocHandle ExtractPages(DocHandle doc, std::uint32_t first, std::uint32_t last) {
  document::CheckRange(&document::RecordOf(doc), first, last);
  const DocHandle made = document::HandleOf(&document::AddDocument(NewPdf()));
  try {
    InsertPages(made, -1, doc, first, last);
  } catch (const HostFailure&) {
    CloseDocument(made);
    throw;
  }
  return made;
}

}  // namespace quillon
