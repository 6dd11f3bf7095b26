// What the program makes of a file, and what an independent checker says of what it wrote.
#pragma once

#include <string>

namespace quillon::test {

enum class Verdict {
  kSound,   // filled, and the checker finds nothing wrong
  kAsGood,  // filled, and the checker finds fault only with stream data, as in the damaged file
  kError,   // refused with a message; nothing written
  kBad,     // anything else: `text` tells
};

struct Outcome {
  Verdict verdict;
  int warnings = 0;
  std::string text;  // of the error, or of what is bad
};

// Lists the fields of the file, then sets one of them and writes the result beside it. The program
// has two minutes for each.
Outcome OutcomeOf(const std::string& file, const std::string& field);

}  // namespace quillon::test
