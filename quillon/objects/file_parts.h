// What a file has, found by reading it from end to end, whatever its cross-references say.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "quillon/objects/document.h"

namespace quillon::objects {

struct FoundObject {
  std::uint32_t number;
  std::uint16_t generation;
  std::uint64_t position;  // from the header on
  bool hasStream = false;
  bool cutOff = false;  // its stream has no end
};

// All in the order of the file. Data of streams are passed over.
struct FileParts {
  std::vector<FoundObject> objects;
  std::vector<FoundObject> objectStreams;
  std::vector<FoundObject> xrefStreams;
  std::vector<std::uint64_t> trailers;  // after the keyword
  std::vector<bool> named;              // by number: what is referred to
};

FileParts ReadThrough(Document& doc);

// Adds what a text that is no file's, an object stream's, refers to.
void NoteReferences(std::string_view text, std::vector<bool>* named);

// Whether an object starts between a place and the end of the file.
bool ObjectStartsAfter(const Document& doc, std::uint64_t position);

}  // namespace quillon::objects
