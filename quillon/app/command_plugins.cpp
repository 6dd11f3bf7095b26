#include <algorithm>

#include "quillon/app/commands.h"
#include "quillon/app/console.h"
#include "quillon/app/session.h"
#include "quillon/core/callbacks.h"
#include "quillon/core/host.h"
#include "quillon/viewer/registered.h"

namespace quillon::app {
namespace {

// One line a kind, the names in the order of registration.
struct KindLine {
  std::string kind;
  std::string names;
};

std::vector<KindLine> LinesOf(const PlugIn& plugIn, const std::vector<Registered>& things) {
  std::vector<KindLine> lines;
  for (const Registered& thing : things) {
    if (thing.extension != plugIn.id) continue;
    const auto line = std::find_if(lines.begin(), lines.end(), [&](const KindLine& candidate) {
      return candidate.kind == thing.kind;
    });
    if (line == lines.end()) {
      lines.push_back({thing.kind, thing.name});
    } else {
      line->names += ", " + thing.name;
    }
  }
  return lines;
}

}  // namespace

int RunPlugins() {
  const std::vector<Registered> things = RegisteredThings();
  std::string text;
  for (const PlugIn& plugIn : PlugIns()) {
    text += Printable(plugIn.extensionName) + (plugIn.initialised ? "" : " (refused to start)");
    text += "\n  file: " + Printable(plugIn.file) + "\n";
    text += "  callbacks: " + std::to_string(LiveCallbackCount(plugIn.id)) + " alive\n";
    for (const KindLine& line : LinesOf(plugIn, things)) {
      text += "  " + line.kind + ": " + Printable(line.names) + "\n";
    }
  }
  WriteStandardOutput(text);
  return FinishWith("", PlugInWarnings());
}

}  // namespace quillon::app
