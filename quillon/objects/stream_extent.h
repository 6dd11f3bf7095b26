// Where the data of a stream in the file end: by its Length when "endstream" follows there, else by
// looking for what can only stand behind the data.
#pragma once

#include <cstddef>

#include "quillon/objects/document.h"

namespace quillon::objects {

struct StreamEnd {
  std::size_t data;  // in doc.text: where the data end
  bool found;        // false: neither "endstream" nor the end of the object stands anywhere
};

// `start` is where the data start, in doc.text. Line ends before "endstream" do not count as data.
StreamEnd SearchStreamEnd(Document& doc, std::size_t start);

// Whether "endstream" stands at a place, white space before it aside.
bool EndStreamFollows(const Document& doc, std::size_t place);

}  // namespace quillon::objects
