#include "tests/breaker/file_edit.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>

namespace quillon::test {
namespace {

bool IsBlank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

std::string Header(int number) { return std::to_string(number) + " 0 obj"; }

std::size_t StartXref(const std::string& file) {
  const std::size_t word = file.rfind("startxref");
  return word == kNowhere ? kNowhere
                          : static_cast<std::size_t>(std::atoll(file.c_str() + word + 9));
}

// A key that is no beginning of a longer one.
std::size_t FindKey(const std::string& text, const std::string& key) {
  const std::string name = "/" + key;
  std::size_t place = text.find(name);
  while (place != kNowhere && std::isalnum(static_cast<unsigned char>(text[place + name.size()]))) {
    place = text.find(name, place + 1);
  }
  return place;
}

std::string TableLine(std::size_t place) {
  char line[24];
  std::snprintf(line, sizeof line, "%010zu 00000 n\r\n", place);
  return line;
}

}  // namespace

void Overwrite(std::string* file, std::size_t place, std::size_t length, std::string_view text) {
  std::string filled(text.substr(0, length));
  filled.resize(length, ' ');
  file->replace(place, length, filled);
}

std::size_t ObjectPlace(const std::string& file, int number) {
  const std::string header = Header(number);
  std::size_t place = file.rfind(header);
  while (place != kNowhere && place != 0 && !IsBlank(file[place - 1])) {
    place = file.rfind(header, place - 1);
  }
  return place;
}

std::string ObjectText(const std::string& file, int number) {
  const std::size_t place = ObjectPlace(file, number);
  if (place == kNowhere) return {};
  const std::size_t start = place + Header(number).size();
  const std::size_t end = file.find("endobj", start);
  return end == kNowhere ? std::string() : file.substr(start, end - start);
}

int FindObject(const std::string& file, std::initializer_list<std::string_view> words) {
  for (int number = 1; number < UnusedNumber(file); ++number) {
    const std::string text = ObjectText(file, number);
    const bool all = std::all_of(words.begin(), words.end(), [&](std::string_view word) {
      return text.find(word) != kNowhere;
    });
    if (!text.empty() && all) return number;
  }
  return 0;
}

bool AppendObjects(std::string* file, std::initializer_list<NewText> objects) {
  const std::size_t previous = StartXref(*file);
  const std::size_t trailer = file->rfind("trailer");
  if (previous == kNowhere || trailer == kNowhere || file->compare(previous, 4, "xref") != 0) {
    return false;
  }
  const std::size_t dict = file->find("<<", trailer);
  std::string entries = file->substr(dict, file->find("startxref", dict) - dict);
  entries = WithoutEntry(entries, "Prev");
  std::string table = "xref\n";
  for (const NewText& object : objects) {
    table += std::to_string(object.number) + " 1\n" + TableLine(file->size());
    *file += Header(object.number) + "\n" + object.text + "\nendobj\n";
  }
  const std::size_t start = file->size();
  *file += table + "trailer\n" + WithEntry(entries, "/Prev " + std::to_string(previous)) +
           "\nstartxref\n" + std::to_string(start) + "\n%%EOF\n";
  return true;
}

std::string WithEntry(const std::string& text, const std::string& entry) {
  std::string changed = text;
  return changed.insert(changed.find("<<") + 2, " " + entry + " ");
}

std::string WithoutEntry(const std::string& text, const std::string& key) {
  const std::size_t start = FindKey(text, key);
  if (start == kNowhere) return text;
  // Past the value: brackets and strings in it belong to it.
  int depth = 0;
  std::size_t end = start + 1 + key.size();
  bool value = false;
  for (; end < text.size(); ++end) {
    const char c = text[end];
    if (depth == 0 && value && (c == '/' || c == '>')) break;
    if (c == '[' || c == '(' || c == '<') ++depth;
    if (c == ']' || c == ')' || c == '>') --depth;
    value = value || !IsBlank(c);
  }
  return text.substr(0, start) + text.substr(end);
}

int ReferenceIn(const std::string& text, const std::string& key) {
  const std::size_t place = FindKey(text, key);
  if (place == kNowhere) return 0;
  int number = 0;
  int generation = 0;
  char letter = 0;
  const char* value = text.c_str() + place + 1 + key.size();
  const int found = std::sscanf(value, " %d %d %c", &number, &generation, &letter);
  return found == 3 && letter == 'R' ? number : 0;
}

int UnusedNumber(const std::string& file) {
  int highest = 0;
  for (std::size_t at = file.find("/Size"); at != kNowhere; at = file.find("/Size", at + 1)) {
    highest = std::max(highest, std::atoi(file.c_str() + at + 5));
  }
  return highest == 0 ? 1 : highest;
}

}  // namespace quillon::test
