#include "quillon/core/host.h"

#include <algorithm>

#include "quillon/core/callbacks.h"
#include "quillon/core/plug_ins.h"
#include "quillon/core/tables.h"

namespace quillon {
namespace {

std::vector<HostStep>& StartSteps() {
  static std::vector<HostStep> steps;
  return steps;
}

std::vector<HostStep>& StopSteps() {
  static std::vector<HostStep> steps;
  return steps;
}

void AddStep(std::vector<HostStep>& steps, HostStep step) {
  if (std::find(steps.begin(), steps.end(), step) == steps.end()) steps.push_back(step);
}

}  // namespace

void AddStartStep(HostStep step) { AddStep(StartSteps(), step); }

void AddStopStep(HostStep step) { AddStep(StopSteps(), step); }

void StartHost() {
  for (const HostStep step : StartSteps()) step();
}

void StopHost() {
  UnloadPlugIns();
  for (auto step = StopSteps().rbegin(); step != StopSteps().rend(); ++step) (*step)();
  ForgetTables();
  ForgetCallbacks();
  ForgetPlugIns();
}

}  // namespace quillon
