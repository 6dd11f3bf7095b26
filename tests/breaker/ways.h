// Ways to damage a good file: what transfers, producers and disks do to documents.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quillon::test {

// Damages the bytes of a PDF file; false when the file has nothing that this way needs (an object
// in plain text, say, in a file that deflates them).
using Damage = std::function<bool(std::string& file)>;

struct DamageWay {
  const char* name;
  const char* what;
  Damage damage;
  // The way hits what a page shows: it stays damaged in a written file, which is otherwise sound.
  bool hitsContent = false;
};

const std::vector<DamageWay>& DamageWays();

}  // namespace quillon::test
