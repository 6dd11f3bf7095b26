#include "tests/breaker/file_edit.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>

namespace quillon::test {
namespace {

std::string Header(int number) { return std::to_string(number) + " 0 obj"; }

}  // namespace

bool Overwrite(std::string& file, std::size_t place, std::size_t length, const std::string& text) {
  if (place == kNowhere) return false;
  std::string filled = text;
  filled.resize(length, ' ');
  file.replace(place, length, filled);
  return true;
}

std::size_t ObjectPlace(const std::string& file, int number) {
  const std::size_t place = file.rfind("\n" + Header(number));
  return place == kNowhere ? kNowhere : place + 1;
}

std::string ObjectText(const std::string& file, int number) {
  const std::size_t place = ObjectPlace(file, number);
  if (place == kNowhere) return {};
  const std::size_t start = place + Header(number).size();
  const std::size_t end = file.find("endobj", start);
  return end == kNowhere ? std::string() : file.substr(start, end - start);
}

int FindObject(const std::string& file, const std::vector<std::string>& words) {
  for (int number = 1; number < UnusedNumber(file); ++number) {
    const std::string text = ObjectText(file, number);
    const bool all = std::all_of(words.begin(), words.end(), [&](const std::string& word) {
      return text.find(word) != kNowhere;
    });
    if (all) return number;
  }
  return 0;
}

std::size_t StartXref(const std::string& file) {
  const std::size_t word = file.rfind("startxref");
  return word == kNowhere ? kNowhere : std::strtoul(file.c_str() + word + 9, nullptr, 10);
}

std::string XrefLine(std::size_t place) {
  char line[24];
  std::snprintf(line, sizeof line, "%010zu 00000 n\r\n", place);
  return line;
}

bool AppendObjects(std::string& file, const std::vector<NewText>& objects) {
  const std::size_t previous = StartXref(file);
  const std::size_t trailer = file.rfind("trailer");
  if (previous == kNowhere || trailer == kNowhere || file.compare(previous, 4, "xref") != 0) {
    return false;
  }
  const std::size_t dict = file.find("<<", trailer);
  const std::string entries = file.substr(dict, file.find("startxref", dict) - dict);
  std::string table = "xref\n";
  for (const NewText& object : objects) {
    table += std::to_string(object.number) + " 1\n" + XrefLine(file.size());
    file += Header(object.number) + "\n" + object.text + "\nendobj\n";
  }
  const std::string start = std::to_string(file.size());
  const std::string back = "/Prev " + std::to_string(previous);
  file += table + "trailer\n" + WithEntry(WithoutEntry(entries, "Prev"), back) + "\nstartxref\n" +
          start + "\n%%EOF\n";
  return true;
}

std::string WithEntry(std::string text, const std::string& entry) {
  return text.insert(text.find("<<") + 2, " " + entry + " ");
}

std::size_t FindKey(const std::string& text, const std::string& key) {
  const std::string name = "/" + key;
  std::size_t place = text.find(name);
  while (place != kNowhere && std::isalnum(static_cast<unsigned char>(text[place + name.size()]))) {
    place = text.find(name, place + 1);
  }
  return place;
}

std::string WithoutEntry(const std::string& text, const std::string& key) {
  const std::size_t start = FindKey(text, key);
  if (start == kNowhere) return text;
  // Past the value: brackets and strings in it belong to it.
  int depth = 0;
  std::size_t end = text.find_first_not_of(" \r\n", start + 1 + key.size());
  for (bool first = true; end < text.size(); ++end, first = false) {
    const char c = text[end];
    if (depth == 0 && !first && (c == '/' || c == '>')) break;
    if (c == '[' || c == '(' || c == '<') ++depth;
    if (c == ']' || c == ')' || c == '>') --depth;
  }
  return text.substr(0, start) + text.substr(end);
}

int ReferenceIn(const std::string& text, const std::string& key) {
  const std::size_t place = FindKey(text, key);
  int number = 0;
  char letter = 0;
  if (place == kNowhere) return 0;
  std::sscanf(text.c_str() + place + 1 + key.size(), " %d 0 %c", &number, &letter);
  return letter == 'R' ? number : 0;
}

int UnusedNumber(const std::string& file) {
  int highest = 1;
  for (std::size_t at = file.find("/Size"); at != kNowhere; at = file.find("/Size", at + 1)) {
    highest = std::max(highest, std::atoi(file.c_str() + at + 5));
  }
  return highest;
}

}  // namespace quillon::test
