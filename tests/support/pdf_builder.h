// PDF files from object texts, with the cross-reference offsets right.
#pragma once

#include <string>
#include <vector>

namespace quillon::test {

struct PdfBuilder {
  std::string header = "%PDF-1.4";
  std::vector<std::string> objects;  // the texts of objects 1, 2, ...

  // Each answers the number of the object that it makes.
  int Add(std::string objectText);
  // `dictEntries` without brackets and without Length.
  int AddStream(const std::string& dictEntries, const std::string& data);
  // An object whose text is set later; null until then.
  int Reserve();
  void Set(int number, std::string objectText);

  // The whole file. `trailerEntries` stand beside Size and Root.
  std::string Finish(int rootNumber, const std::string& trailerEntries = "") const;
};

// "12 0 R".
std::string Ref(int number);

}  // namespace quillon::test
