// Finding and replacing parts of a PDF file's text without understanding it.
#pragma once

#include <string>
#include <vector>

namespace quillon::test {

inline constexpr std::size_t kNowhere = std::string::npos;

// Replaces so many bytes, so that nothing behind them moves: `text` is cut or filled up with
// blanks. False, and nothing is done, at kNowhere.
bool Overwrite(std::string& file, std::size_t place, std::size_t length, const std::string& text);

// The number of the first plain object whose text has all of the words; 0 for none.
int FindObject(const std::string& file, const std::vector<std::string>& words);

// The text between "N 0 obj" and "endobj"; empty when the object does not stand in plain text.
std::string ObjectText(const std::string& file, int number);
std::size_t ObjectPlace(const std::string& file, int number);

// Writes objects behind the file with a table of cross-references for them, so that everything
// else stays in order. False when the file has no table of its own to add to.
struct NewText {
  int number;
  std::string text;
};
bool AppendObjects(std::string& file, const std::vector<NewText>& objects);

// Of the last section of cross-references: where the file says that it is.
std::size_t StartXref(const std::string& file);

// A table's line for an object that is in use.
std::string XrefLine(std::size_t place);

// `text` with the entry put in front of the others. REQUIRES a dictionary.
std::string WithEntry(std::string text, const std::string& entry);

// `text` without the first entry of that key and its value up to the next key.
std::string WithoutEntry(const std::string& text, const std::string& key);

// Where the key stands that is no beginning of a longer one.
std::size_t FindKey(const std::string& text, const std::string& key);

// The number that "/Key N 0 R" names; 0 for none.
int ReferenceIn(const std::string& text, const std::string& key);

// A number that no object of the file has.
int UnusedNumber(const std::string& file);

}  // namespace quillon::test
