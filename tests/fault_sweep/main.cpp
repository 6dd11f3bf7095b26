// Makes every host call and every allocation of whole operations fail, one at a time, and looks at
// what is left: fault_sweep [--sample N] [--trace] [SCENARIO...]
//
// After each failure nothing may have crashed or leaked, guarded blocks are balanced, every field
// has its old or its new value, no half-built appearance is installed, the document can be saved
// and read back, and the same work succeeds when it is done again.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>

#include "quillon/core/guard.h"
#include "quillon/core/report.h"
#include "quillon/document/open_document.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/support/files.h"
#include "quillon/support/stream.h"
#include "quillon/viewer/start.h"
#include "tests/fault_sweep/fault_points.h"
#include "tests/fault_sweep/scenarios.h"

namespace quillon::test {
namespace {

struct Sweep {
  std::uint64_t most = 0;  // points of one scenario and kind that are tried; 0: all
  bool trace = false;
  std::set<std::string> only;
  std::uint64_t tried = 0;
  std::uint64_t faults = 0;
};

struct Outcome {
  FaultCount count{};
  std::string raised;  // what reached the caller
  Snapshot snapshot;
  std::string fault;
};

std::string LeftOpen() {
  if (OpenFrameCount() != 0) return "a guarded block was left open";
  if (AcquiredPageCount() != 0) return "a page was not released";
  if (OpenPdfCount() != 0) return "a document was left open";
  if (LiveStreamCount() != 0) return "a stream was left open";
  if (LiveFileCount() != 0) return "a file was left open";
  return "";
}

void DoWork(const Scenario& scenario, FormWorld& world) {
  if (scenario.moment == Moment::kStart) return StartPlugIn();
  if (scenario.moment == Moment::kEnd) return StopViewer();
  CallGuarded([&] { scenario.work(world); });
}

std::string FaultAfter(FormWorld& world, Outcome* outcome) {
  if (OpenFrameCount() != 0) return "a guarded block was left open";
  if (world.view == nullptr) return "";
  // A save puts right what a failure in the one before may have left asleep.
  std::string fault = FaultOf(world);
  outcome->snapshot = TakeSnapshot(world.doc);
  return fault;
}

// One start of the viewer with the fault of that number in the scenario's work.
Outcome RunWith(const Scenario& scenario, FaultKind kind, std::uint64_t number) {
  Outcome outcome;
  StartViewer();
  {
    FormWorld world;
    if (scenario.moment != Moment::kStart) {
      StartPlugIn();
      OpenWorld(world, scenario.moment);
    }
    if (scenario.moment == Moment::kEnd) CloseWorld(world);
    WatchTables();
    ArmFault(kind, number);
    FailureCode code = kErrorNone;
    try {
      DoWork(scenario, world);
    } catch (const HostFailure& failure) {
      code = failure.code;
    } catch (const std::bad_alloc&) {
      code = kErrorNoMemory;
    }
    outcome.count = DisarmFault();
    if (code != kErrorNone) outcome.raised = "raises " + std::to_string(code);
    try {
      outcome.fault = FaultAfter(world, &outcome);
    } catch (const HostFailure& failure) {
      outcome.fault = std::string("afterwards: ") + failure.what();
    }
    if (world.view != nullptr) CloseWorld(world);
  }
  // An end that failed is one that can be made up for.
  if (scenario.moment != Moment::kEnd || !outcome.raised.empty()) StopViewer();
  if (outcome.fault.empty()) outcome.fault = LeftOpen();
  return outcome;
}

std::string Mixed(const Snapshot& before, const Snapshot& after, const Snapshot& now) {
  const auto has = [](const Snapshot& snapshot, const auto& entry) {
    return std::find(snapshot.begin(), snapshot.end(), entry) != snapshot.end();
  };
  for (const auto& entry : now) {
    if (has(before, entry) || has(after, entry)) continue;
    return entry.first + " is neither as before nor as after: " + entry.second;
  }
  for (const auto& [name, value] : before) {
    if (!now.contains(name)) return name + " is gone";
  }
  return "";
}

const char* NameOf(FaultKind kind) {
  return kind == FaultKind::kHostCall ? "calls" : "allocations";
}

void SweepScenario(const Scenario& scenario, FaultKind kind, Sweep* sweep) {
  const Outcome clean = RunWith(scenario, kind, 0);
  Snapshot before;
  if (scenario.moment != Moment::kStart) {
    const Scenario nothing = {"nothing", Moment::kForm, [](FormWorld&) {}};
    before = RunWith(nothing, kind, 0).snapshot;
  }
  std::uint64_t failures = 0;
  std::uint64_t swallowed = 0;
  std::uint64_t tried = 0;
  const std::uint64_t points = clean.count.seen;
  const std::uint64_t step =
      sweep->most == 0 ? 1 : std::max<std::uint64_t>(1, points / sweep->most);
  if (!clean.fault.empty() || !clean.raised.empty()) {
    std::printf("  %s, without a failure: %s%s\n", scenario.name, clean.raised.c_str(),
                clean.fault.c_str());
    ++failures;
  }
  for (std::uint64_t number = 1; number <= points; number += step) {
    if (sweep->trace) std::fprintf(stderr, "%s, %s, %ju\n", scenario.name, NameOf(kind), number);
    Outcome outcome = RunWith(scenario, kind, number);
    ++tried;
    if (outcome.raised.empty()) ++swallowed;
    if (outcome.fault.empty() && !outcome.snapshot.empty()) {
      outcome.fault = Mixed(before, clean.snapshot, outcome.snapshot);
      if (outcome.fault.empty() && outcome.raised.empty() && outcome.snapshot != clean.snapshot) {
        outcome.fault = "neither told nor done";
      }
    }
    if (outcome.fault.empty()) continue;
    ++failures;
    std::printf("  %s, failure %ju of %s (%s): %s\n", scenario.name, number, NameOf(kind),
                outcome.count.place, outcome.fault.c_str());
  }
  std::printf("%-16s %6ju of %6ju %-12s %5ju not told, %ju faults\n", scenario.name, tried, points,
              NameOf(kind), swallowed, failures);
  std::fflush(stdout);
  sweep->tried += tried;
  sweep->faults += failures;
}

int Run(Sweep sweep) {
  SetReporter([](const std::string&) {});
  for (const Scenario& scenario : Scenarios()) {
    if (!sweep.only.empty() && !sweep.only.contains(scenario.name)) continue;
    SweepScenario(scenario, FaultKind::kHostCall, &sweep);
    SweepScenario(scenario, FaultKind::kAllocation, &sweep);
  }
  std::printf("%ju failure points tried, %ju faults\n", sweep.tried, sweep.faults);
  return sweep.faults == 0 && sweep.tried != 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace
}  // namespace quillon::test

int main(int argc, char** argv) {
  quillon::test::Sweep sweep;
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (word == "--trace") {
      sweep.trace = true;
    } else if (word == "--sample" && i + 1 < argc) {
      sweep.most = std::strtoull(argv[++i], nullptr, 10);
    } else {
      sweep.only.insert(word);
    }
  }
  return quillon::test::Run(sweep);
}
