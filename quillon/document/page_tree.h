// The page tree (ISO 32000-1, 7.7.3): walked from the front, only as far as a page is asked for.
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "sdk/types.h"

namespace quillon::document {

inline constexpr std::uint32_t kNoNode = 0xFFFFFFFF;

// Levels of the tree that are walked; what lies deeper is left out.
inline constexpr std::uint32_t kMaxPageTreeDepth = 256;

struct PageTreeNode {
  ObjectHandle dict;
  ObjectHandle kids;
  std::uint32_t parent;  // place among the nodes, kNoNode for the root
  std::uint32_t nextKid;
  std::uint32_t depth;
};

struct TreePage {
  ObjectHandle dict;
  std::uint32_t parent;  // the node that the page was found under
};

// Pages found so far, in order. A node met a second time is not entered again, so a cycle ends and
// shared nodes do not multiply.
struct PageTree {
  explicit PageTree(ObjectDoc objects) : doc(objects) {}

  ObjectDoc doc;
  bool started = false;
  std::vector<PageTreeNode> nodes;
  std::vector<std::uint32_t> path;            // the open nodes, the innermost last
  std::unordered_set<std::uint32_t> entered;  // object numbers of nodes
  std::vector<TreePage> pages;
  int copies = 0;                                             // pages listed again
  std::unordered_map<std::uint32_t, std::uint32_t> numberOf;  // object number -> first page with it
};

// Walks on until page `number` is known, or the end. O(1) for a page that is known already.
bool ReachPage(PageTree* tree, std::uint32_t number);

// Walks to the end.
std::uint32_t CountPages(PageTree* tree);

// The number of a page dictionary; walks on as far as it takes.
std::optional<std::uint32_t> FindPage(PageTree* tree, ObjectHandle dict);

// An entry of the page, or else of the nearest node above it that has one.
ObjectHandle InheritedEntry(PageTree* tree, std::uint32_t number, Atom key);

}  // namespace quillon::document
