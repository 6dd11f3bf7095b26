#include "quillon/document/page_tree.h"

#include "quillon/document/names.h"
#include "quillon/document/object_reading.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"

namespace quillon::document {
namespace {

void AddPage(PageTree* tree, ObjectHandle dict, std::uint32_t parent) {
  const std::uint32_t object = ObjectNumberOf(dict);
  const auto number = static_cast<std::uint32_t>(tree->pages.size());
  if (object != 0 && !tree->numberOf.try_emplace(object, number).second) {
    if (tree->copies == kMaxPageCopies) return WarnOfPdf(dict, "A page is listed over and over.");
    ++tree->copies;
  }
  tree->pages.push_back({dict, parent});
}

void EnterNode(PageTree* tree, ObjectHandle dict, std::uint32_t parent) {
  const std::uint32_t object = ObjectNumberOf(dict);
  if (object != 0 && !tree->entered.insert(object).second) {
    WarnOfPdf(dict, "A part of the page tree leads back into it.");
    return;
  }
  const std::uint32_t depth = parent == kNoNode ? 0 : tree->nodes[parent].depth + 1;
  if (depth >= kMaxPageTreeDepth) return;
  tree->path.push_back(static_cast<std::uint32_t>(tree->nodes.size()));
  tree->nodes.push_back({dict, objects::DictGet(dict, Names().Kids), parent, 0, depth});
}

void Visit(PageTree* tree, ObjectHandle dict, std::uint32_t parent) {
  switch (PagePartOf(dict)) {
    case PagePart::kNode:
      return EnterNode(tree, dict, parent);
    case PagePart::kPage:
      return AddPage(tree, dict, parent);
    case PagePart::kNone:
      if (parent != kNoNode)
        WarnOfPdf(tree->nodes[parent].dict, "An entry of the page tree is no page.");
  }
}

bool TakeStep(PageTree* tree) {
  if (!tree->started) {
    tree->started = true;
    Visit(tree, PageTreeRoot(tree->doc), kNoNode);
    return true;
  }
  if (tree->path.empty()) return false;
  const std::uint32_t place = tree->path.back();
  PageTreeNode& node = tree->nodes[place];
  if (node.nextKid >= objects::ArrayLength(node.kids)) {
    tree->path.pop_back();
    return true;
  }
  Visit(tree, objects::ArrayGet(node.kids, node.nextKid++), place);
  return true;
}

// Takes one step; false at the end of the tree. After a failure the walk begins anew and finds the
// same pages: a step that was half done would lose what lies below it.
bool Step(PageTree* tree) {
  try {
    return TakeStep(tree);
  } catch (...) {
    *tree = PageTree(tree->doc);
    throw;
  }
}

}  // namespace

bool ReachPage(PageTree* tree, std::uint32_t number) {
  while (tree->pages.size() <= number) {
    if (!Step(tree)) return false;
  }
  return true;
}

std::uint32_t CountPages(PageTree* tree) {
  while (Step(tree)) {
  }
  return static_cast<std::uint32_t>(tree->pages.size());
}

std::optional<std::uint32_t> FindPage(PageTree* tree, ObjectHandle dict) {
  const std::uint32_t object = ObjectNumberOf(dict);
  if (object != 0) {
    do {
      const auto place = tree->numberOf.find(object);
      if (place != tree->numberOf.end()) return place->second;
    } while (Step(tree));
    return std::nullopt;
  }
  for (std::uint32_t number = 0; ReachPage(tree, number); ++number) {
    if (objects::Equal(tree->pages[number].dict, dict)) return number;
  }
  return std::nullopt;
}

ObjectHandle InheritedEntry(PageTree* tree, std::uint32_t number, Atom key) {
  if (!ReachPage(tree, number)) return kNullObject;
  const TreePage& page = tree->pages[number];
  ObjectHandle entry = objects::DictGet(page.dict, key);
  for (std::uint32_t node = page.parent; IsNull(entry) && node != kNoNode;
       node = tree->nodes[node].parent) {
    entry = objects::DictGet(tree->nodes[node].dict, key);
  }
  return entry;
}

}  // namespace quillon::document
