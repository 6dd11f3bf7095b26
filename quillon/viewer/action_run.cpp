#include "quillon/viewer/action_run.h"

#include <algorithm>
#include <unordered_set>

#include "quillon/core/guard.h"
#include "quillon/core/operations.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/open_document.h"
#include "quillon/document/operations.h"
#include "quillon/document/text_encoding.h"
#include "quillon/objects/operations.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/view_record.h"

namespace quillon {
namespace {

struct Runner {
  DocHandle doc;
  DocView view;
  const std::function<void(ActionHandle)>& before;
  std::unordered_set<ActionHandle> met;
  ActionRun run;
};

bool IsStillOpen(const Runner& runner) {
  if (runner.view != nullptr && !viewer::IsOpen(runner.view)) return false;
  const std::vector<DocHandle> open = OpenDocuments();
  return std::find(open.begin(), open.end(), runner.doc) != open.end();
}

void PerformOne(Runner* runner, ActionHandle action) {
  const Atom type = document::ActionType(action);
  const ActionHandlerRecord* handler = viewer::ActionHandlerOf(type);
  if (handler == nullptr || handler->perform == nullptr) {
    runner->run.passedOver.push_back(type);
    return;
  }
  if (runner->before) runner->before(action);
  CallGuarded([&] { handler->perform(action, runner->view); });
  ++runner->run.performed;
}

void RunFrom(Runner* runner, ActionHandle action);

// What comes next is read when its turn has come: performing an action may change it.
void RunNext(Runner* runner, ObjectHandle next) {
  if (!document::IsKind(next, ObjectKind::kArray)) {
    return RunFrom(runner, document::ActionFromObject(next));
  }
  for (std::uint32_t i = 0; IsStillOpen(*runner) && i < objects::ArrayLength(next); ++i) {
    RunFrom(runner, document::ActionFromObject(objects::ArrayGet(next, i)));
  }
}

void RunFrom(Runner* runner, ActionHandle action) {
  if (action == nullptr || runner->met.size() >= kMostActions) return;
  if (!runner->met.insert(action).second) return;
  PerformOne(runner, action);
  if (!IsStillOpen(*runner)) return;
  RunNext(runner, document::EntryOf(document::ActionDict(action), core::AtomFromName("Next")));
}

}  // namespace

ActionRun RunActions(ActionHandle action, DocView view,
                     const std::function<void(ActionHandle action)>& before) {
  const ObjectDoc objects = objects::DocumentOf(document::ActionDict(action));
  Runner runner{document::DocOfObjectDoc(objects), view, before, {}, {0, {}}};
  RunFrom(&runner, action);
  return runner.run;
}

std::string DescribeAction(ActionHandle action) {
  const ActionHandlerRecord* handler = viewer::ActionHandlerOf(document::ActionType(action));
  if (handler == nullptr || handler->firstLine == nullptr) return {};
  char line[257] = "";
  CallGuarded([&] { handler->firstLine(action, line, sizeof line); });
  return HostTextToUtf8(line);
}

namespace viewer {

void PerformAction(ActionHandle action, DocView view) {
  const ActionRun run = RunActions(action, view);
  if (run.performed == 0) Fail(kErrorNotOffered, "nothing performs actions of this type");
}

}  // namespace viewer
}  // namespace quillon
