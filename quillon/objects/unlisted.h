// What a file has, or names, that its cross-references do not list. Sound files have nothing of the
// kind, and are not read through for it.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "quillon/objects/document.h"

namespace quillon::objects {

struct Unlisted {
  std::unordered_map<std::uint32_t, ObjectPlace> objects;  // the last of each number
  std::vector<bool> named;    // by number: what something in the file refers to
  bool streamsNoted = false;  // `named` tells of members of object streams too
};

// For a number that is not in use: enters the object that stands in the file under it all the same,
// with a warning; false when there is none. An object that a later update freed stays free.
bool AdoptObject(Document& doc, std::uint32_t number);

// Does so for all that the file refers to: a file that is written anew has nothing but its objects.
void AdoptNamedObjects(Document& doc);

// A number for a new object: neither in use nor named by anything in the file. A reference to
// nothing reads null, and must not come to mean the new object.
std::uint32_t NewNumber(Document& doc);

}  // namespace quillon::objects
