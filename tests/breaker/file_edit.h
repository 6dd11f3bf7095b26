// Finding and replacing parts of a PDF file's text without understanding it.
#pragma once

#include <string>
#include <string_view>

namespace quillon::test {

inline constexpr std::size_t kNowhere = std::string::npos;

// Replaces the text by one of the same length, so that nothing behind it moves: the new text is
// filled up with blanks and must not be longer.
void Overwrite(std::string* file, std::size_t place, std::size_t length, std::string_view text);

// The number of the first plain object whose text has all of the words; 0 for none.
int FindObject(const std::string& file, std::initializer_list<std::string_view> words);

// The text between "N 0 obj" and "endobj"; empty when the object does not stand in plain text.
std::string ObjectText(const std::string& file, int number);
std::size_t ObjectPlace(const std::string& file, int number);

// Writes objects behind the file with a table of cross-references for them, so that everything
// else stays in order. False when the file has no table of its own to add to.
struct NewText {
  int number;
  std::string text;
};
bool AppendObjects(std::string* file, std::initializer_list<NewText> objects);

// `text` with the entry put in front of the others. REQUIRES a dictionary.
std::string WithEntry(const std::string& text, const std::string& entry);

// `text` without the first entry of that key and its value up to the next key.
std::string WithoutEntry(const std::string& text, const std::string& key);

// The number that "/Key N 0 R" names; 0 for none.
int ReferenceIn(const std::string& text, const std::string& key);

// A number that no object of the file has.
int UnusedNumber(const std::string& file);

}  // namespace quillon::test
