#include "quillon/objects/repair_pages.h"

#include <unordered_set>

#include "quillon/objects/copy.h"
#include "quillon/objects/dictionary.h"
#include "quillon/objects/load.h"
#include "quillon/objects/page_parts.h"
#include "quillon/objects/repair_lists.h"

namespace quillon::objects {
namespace {

// Levels of the tree that are kept; trees in use have five or less.
constexpr std::size_t kMaxDepth = 256;

struct Node {
  std::uint32_t number;
  std::uint32_t dict;
  std::uint32_t kids;
  std::uint32_t next = 0;  // in kids
  std::uint32_t kept = 0;  // of the kids passed: they stand at the front
  std::int32_t pages = 0;  // below the kids passed
};

struct Repair {
  Document& doc;
  std::vector<Node> path;
  std::unordered_set<std::uint32_t> met;  // object numbers
  int copies = 0;
};

void Tell(Document& doc, std::uint32_t number, const std::string& text) {
  Warn(doc, text, number, ObjectOffset(doc, number));
}

void Put(Document& doc, std::uint32_t dict, std::string_view key, const Value& value) {
  SetEntry(doc, dict, NameFromText(doc, key), value);
  MarkCellChanged(doc, dict);
}

void MakeTypeRight(Document& doc, std::uint32_t number, std::uint32_t dict,
                   std::string_view wanted) {
  if (TypeIs(doc, dict, wanted)) return;
  Tell(doc, number, "A part of the page tree had no Type or a wrong one.");
  Put(doc, dict, "Type", NameOf(NameFromText(doc, wanted)));
}

void MakeParentRight(Document& doc, std::uint32_t number, std::uint32_t dict,
                     std::uint32_t parent) {
  const Value value = EntryValue(doc, dict, "Parent");
  if (value.tag == ValueTag::kReference && value.payload == parent) return;
  Tell(doc, number, "A part of the page tree named another parent than its own.");
  Put(doc, dict, "Parent", ReferenceTo(parent, FindSlot(doc.objects, parent)->generation));
}

std::uint32_t KidsOf(Document& doc, std::uint32_t dict) {
  return CellOf(doc, EntryValue(doc, dict, "Kids"), CellKind::kArray);
}

// What cannot be read is no dictionary.
std::uint32_t DictAt(Document& doc, const Value& value) {
  try {
    return CellOf(doc, value, CellKind::kDict);
  } catch (const HostFailure& failure) {
    if (failure.code == kErrorBadFile) throw;
    Warn(doc, failure.what(), failure.objectNumber, failure.offset);
    return 0;
  }
}

void RepairAnnots(Document& doc, std::uint32_t page, std::uint32_t dict) {
  const Value entry = EntryValue(doc, dict, "Annots");
  if (entry == kNullValue) return;
  const std::uint32_t array = CellOf(doc, entry, CellKind::kArray);
  if (array != 0) {
    return RepairList(doc, array, page,
                      {"An entry of a page's annotations was none.",
                       "An annotation was listed twice on its page."});
  }
  Tell(doc, page, "A page's list of annotations was none.");
  RemoveEntry(doc, dict, NameFromText(doc, "Annots"));
  MarkCellChanged(doc, dict);
}

void RepairPage(Document& doc, std::uint32_t number, std::uint32_t dict, std::uint32_t parent) {
  MakeTypeRight(doc, number, dict, "Page");
  MakeParentRight(doc, number, dict, parent);
  RepairAnnots(doc, number, dict);
}

// The same entries in a page of its own. Its annotations stay on the first one.
std::uint32_t CopyPage(Document& doc, std::uint32_t dict) {
  const Value copy = CopyValue(doc, CellValue(dict), doc);
  RemoveEntry(doc, copy.payload, NameFromText(doc, "Annots"));
  return AddObject(doc, copy);
}

void TakeOut(Document& doc, Node& node, const std::string& reason) {
  Tell(doc, node.number, reason);
  ++node.next;
}

// A page is lost with an entry that should have led to one.
void TakeOutNoPage(Document& doc, Node& node, const Value& kid) {
  if (kid.tag != ValueTag::kReference) {
    return TakeOut(doc, node, "An entry of the page tree was no page; it was left out.");
  }
  TakeOut(doc, node,
          "The page tree lists object " + std::to_string(kid.payload) +
              ", which is no page; it was left out.");
}

// The kid at node.next stays, as the object of that number.
void Keep(Document& doc, Node& node, std::uint32_t number) {
  Value* kids = ElementsOf(CellAt(doc.cells, node.kids));
  const Value kid = ReferenceTo(number, FindSlot(doc.objects, number)->generation);
  if (kids[node.next] != kid) MarkCellChanged(doc, node.kids);
  kids[node.kept++] = kid;
  ++node.next;
}

void EnterNode(Repair& repair, std::uint32_t number, std::uint32_t dict, std::uint32_t kids) {
  Node& node = repair.path.back();
  MakeTypeRight(repair.doc, number, dict, "Pages");
  MakeParentRight(repair.doc, number, dict, node.number);
  Keep(repair.doc, node, number);
  repair.path.push_back({number, dict, kids});
}

void PassPage(Repair& repair, std::uint32_t number, std::uint32_t dict) {
  Document& doc = repair.doc;
  Node& node = repair.path.back();
  RepairPage(doc, number, dict, node.number);
  Keep(doc, node, number);
  ++node.pages;
}

void PassPageAgain(Repair& repair, std::uint32_t number, std::uint32_t dict) {
  Document& doc = repair.doc;
  if (repair.copies == kMaxPageCopies) {
    return TakeOut(doc, repair.path.back(), "A page was listed over and over.");
  }
  ++repair.copies;
  Tell(doc, number, "A page was listed twice.");
  const std::uint32_t copy = CopyPage(doc, dict);
  PassPage(repair, copy, LoadObject(doc, copy).payload);
}

// One kid: kept, taken out, or entered.
void PassKid(Repair& repair) {
  Document& doc = repair.doc;
  Node& node = repair.path.back();
  const Value kid = ElementsOf(CellAt(doc.cells, node.kids))[node.next];
  const std::uint32_t dict = DictAt(doc, kid);
  const PagePart part = dict == 0 ? PagePart::kNone : PagePartOf(doc, dict);
  if (part == PagePart::kNone) return TakeOutNoPage(doc, node, kid);
  std::uint32_t number = kid.payload;
  if (kid.tag != ValueTag::kReference) {
    Tell(doc, node.number, "A page had no object number of its own.");
    number = AddObject(doc, kid);
  }
  const bool isNew = repair.met.insert(number).second;
  if (part == PagePart::kPage) {
    isNew ? PassPage(repair, number, dict) : PassPageAgain(repair, number, dict);
  } else if (isNew && repair.path.size() < kMaxDepth) {
    EnterNode(repair, number, dict, KidsOf(doc, dict));
  } else {
    TakeOut(doc, node, "An entry of the page tree led back into it.");
  }
}

void LeaveNode(Repair& repair) {
  Document& doc = repair.doc;
  const Node node = repair.path.back();
  repair.path.pop_back();
  Cell& kids = CellAt(doc.cells, node.kids);
  if (node.kept != kids.size) {
    kids.size = node.kept;
    MarkCellChanged(doc, node.kids);
  }
  if (IntegerEntry(doc, node.dict, "Count", -1) != node.pages) {
    Tell(doc, node.number, "A count of pages was wrong.");
    Put(doc, node.dict, "Count", IntegerOf(node.pages));
  }
  if (!repair.path.empty()) repair.path.back().pages += node.pages;
}

// Walks all of the tree; answers how many pages it has.
std::int32_t RepairTree(Document& doc, std::uint32_t root) {
  Repair repair{doc, {}, {root}};
  const std::uint32_t dict = DictAt(doc, LoadObject(doc, root));
  MakeTypeRight(doc, root, dict, "Pages");
  repair.path.push_back({root, dict, KidsOf(doc, dict)});
  std::int32_t pages = 0;
  while (!repair.path.empty()) {
    const Node& node = repair.path.back();
    pages = node.pages;
    if (node.next < CellAt(doc.cells, node.kids).size) {
      PassKid(repair);
    } else {
      LeaveNode(repair);
    }
  }
  return pages;
}

}  // namespace

void RepairPages(Document& doc) {
  if (!doc.isPdf) return;
  std::uint32_t root = PageTreeRoot(doc);
  if (root == 0) return;
  const bool lists = CellAt(doc.cells, KidsOf(doc, DictAt(doc, LoadObject(doc, root)))).size != 0;
  if (RepairTree(doc, root) != 0 || !lists) return;
  root = MakePageTree(doc, "The page tree led to no page.");
  if (root == 0) {
    Fail(kErrorBadObject, "No page of the document can be read, and writing it would lose them.",
         doc.root, ObjectOffset(doc, doc.root));
  }
  RepairTree(doc, root);
}

}  // namespace quillon::objects
