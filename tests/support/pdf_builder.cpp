#include "tests/support/pdf_builder.h"

#include <cstdio>
#include <utility>

namespace quillon::test {
namespace {

std::string XrefLine(std::size_t offset) {
  char line[32];
  std::snprintf(line, sizeof line, "%010zu 00000 n \n", offset);
  return line;
}

}  // namespace

int PdfBuilder::Add(std::string objectText) {
  objects.push_back(std::move(objectText));
  return static_cast<int>(objects.size());
}

int PdfBuilder::AddStream(const std::string& dictEntries, const std::string& data) {
  return Add("<< " + dictEntries + " /Length " + std::to_string(data.size()) + " >>\nstream\n" +
             data + "\nendstream");
}

int PdfBuilder::Reserve() { return Add("null"); }

void PdfBuilder::Set(int number, std::string objectText) {
  objects.at(static_cast<std::size_t>(number) - 1) = std::move(objectText);
}

std::string PdfBuilder::Finish(int rootNumber, const std::string& trailerEntries) const {
  std::string file = header + "\n%\xE2\xE3\xCF\xD3\n";
  std::string xref = "0000000000 65535 f \n";
  for (std::size_t i = 0; i < objects.size(); ++i) {
    xref += XrefLine(file.size());
    file += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
  }
  const std::string count = std::to_string(objects.size() + 1);
  const std::string start = std::to_string(file.size());
  file += "xref\n0 " + count + "\n" + xref;
  file += "trailer\n<< /Size " + count + " /Root " + Ref(rootNumber) + " " + trailerEntries +
          " >>\nstartxref\n" + start + "\n%%EOF\n";
  return file;
}

std::string Ref(int number) { return std::to_string(number) + " 0 R"; }

}  // namespace quillon::test
