// `quillon submit`: fetches a form, fills it in, presses a button that sends it, and writes the
// form as the server's answer leaves it. The plug-ins do the work; this is the browser around them.
#include <utility>

#include "quillon/app/commands.h"
#include "quillon/app/console.h"
#include "quillon/app/field_listing.h"
#include "quillon/app/fill_plan.h"
#include "quillon/app/open_save_options.h"
#include "quillon/app/session.h"
#include "quillon/app/signatures.h"
#include "quillon/app/widget_action.h"
#include "quillon/core/operations.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"
#include "quillon/support/operations.h"
#include "quillon/viewer/action_run.h"
#include "quillon/viewer/deliveries.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "sdk/link_table.h"

namespace quillon::app {
namespace {

constexpr const char* kNothingSent = "nothing was sent, and nothing was written";

// A chain that is longer goes in a circle.
constexpr int kMostActionsLookedAt = 64;

// What the link plug-in tells of its requests.
struct Traffic {
  bool verbose;
  int sent = 0;    // forms that a server took
  int failed = 0;  // requests that came to nothing
};

void WillRequest(void* data, const char* method, const char* url) {
  const auto& traffic = *static_cast<const Traffic*>(data);
  if (traffic.verbose) PrintError("", std::string(method) + " " + Printable(url));
}

void Finished(void* data, const char* method, const char*, FailureCode error) {
  auto& traffic = *static_cast<Traffic*>(data);
  if (error != kErrorNone) {
    ++traffic.failed;
  } else if (std::string(method) == "POST") {
    ++traffic.sent;
  }
}

// The link plug-in, watched for the record's lifetime.
struct WatchedLink {
  WatchedLink(Traffic* traffic, std::uint32_t timeLimit)
      : watcher{sizeof(LinkWatcher), traffic, &WillRequest, &Finished} {
    const Atom name = core::AtomFromName(kLinkTableName);
    table = static_cast<const LinkTable*>(core::GetTable(name, kLinkVersion));
    if (table == nullptr) {
      Fail(kErrorNotOffered, "no plug-in that is loaded reaches the web (the table \"Hopline\")");
    }
    CallGuarded([&] {
      table->Watch(&watcher);
      table->SetTimeLimit(timeLimit);
    });
  }
  ~WatchedLink() {
    CallGuarded([this] { table->Watch(nullptr); });
  }
  WatchedLink(const WatchedLink&) = delete;
  WatchedLink& operator=(const WatchedLink&) = delete;

  const LinkTable* table = nullptr;
  LinkWatcher watcher;
};

[[noreturn]] void FailWithCode(FailureCode code) {
  char text[256];
  support::ErrorText(code, text, sizeof text);
  Fail(code, text);
}

DocView OpenForm(const WatchedLink& link, const std::string& url) {
  const FailureCode code =
      CallGuarded([&] { return link.table->OpenURL(nullptr, url.c_str(), 0); });
  if (code != kErrorNone) FailWithCode(code);
  DeliverWaitingData();
  const DocView view = viewer::ActiveDocView();
  if (view == nullptr) Fail(kErrorOpenDocument, "this address leads to no document");
  return view;
}

// Whether a chain of actions (ISO 32000-1, 12.6.2) sends a form, as far as its first branches go.
bool SendsForm(ActionHandle first) {
  if (first == nullptr) return false;
  const Atom submitForm = core::AtomFromName("SubmitForm"), next = core::AtomFromName("Next");
  ObjectHandle object = document::ActionDict(first);
  for (int i = 0; i < kMostActionsLookedAt && document::IsKind(object, ObjectKind::kDict); ++i) {
    const ActionHandle action = document::ActionFromObject(object);
    if (action != nullptr && document::ActionType(action) == submitForm) return true;
    object = objects::DictGet(object, next);
    if (document::IsKind(object, ObjectKind::kArray)) object = objects::ArrayGet(object, 0);
  }
  return false;
}

ActionHandle SendingAction(const FieldEntry& field) {
  for (const ObjectHandle widget : field.widgets) {
    const ActionHandle action = ActionOfWidget(widget, "U");
    if (SendsForm(action)) return action;
  }
  return nullptr;
}

ActionHandle FindSubmitAction(DocHandle doc, const std::string& name) {
  std::vector<std::string> ignored, buttons;
  for (const FieldEntry& field : ListFields(doc, &ignored)) {
    const ActionHandle action = SendingAction(field);
    if (field.name == name) {
      if (action != nullptr) return action;
      Fail(kErrorBadParameter, Printable(name) + ": a click on this field sends nothing");
    }
    if (action != nullptr) buttons.push_back(Printable(field.name));
  }
  std::string text = Printable(name) + ": there is no field of this name";
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    text += (i == 0 ? "; buttons that send the form: " : ", ") + buttons[i];
  }
  Fail(kErrorBadParameter, text);
}

// Sends the form; its answer has been taken in afterwards. What is wrong, empty for nothing.
std::string PressButton(ActionHandle action, DocView view, Traffic* traffic,
                        std::vector<std::string>* warnings) {
  traffic->sent = 0;
  RunActions(action, view);
  // Why it was not sent, the plug-in has told.
  if (traffic->sent == 0) return "the form was not submitted";
  traffic->failed = 0;
  const DeliveryCount count = DeliverWaitingData();
  if (count.refused > 0) return "the server's answer could not be used";
  if (traffic->failed > 0) return "the form that the server's answer belongs to cannot be opened";
  if (count.used == 0) warnings->emplace_back("the server took the form and answered nothing");
  return {};
}

}  // namespace

int RunSubmit(const SubmitArguments& arguments) {
  ValueInput input;
  AddAssignments(arguments.assignments, &input);
  Traffic traffic{arguments.verbose};
  const WatchedLink link(&traffic, arguments.timeLimit);
  const DocView view = OpenForm(link, arguments.url);
  const DocHandle doc = viewer::DocOf(view);
  CheckFillable(doc);
  CheckSignatures(doc, {arguments.append, arguments.force});
  CallForms(&FormsTable::LoadAllFields, doc);
  const ActionHandle action = FindSubmitAction(doc, arguments.button);
  const FillPlan plan = PlanFills(doc, input, false);
  if (!plan.problems.empty()) return FailDocument(arguments.url, doc, plan.problems, kNothingSent);
  std::vector<std::string> warnings;
  const std::vector<std::string> refused = SetValues(doc, plan.fills, &warnings);
  if (!refused.empty()) return FailDocument(arguments.url, doc, refused, kNothingSent);

  const std::string problem = PressButton(action, view, &traffic, &warnings);
  if (!problem.empty()) {
    PrintError(arguments.url, problem + "; nothing was written");
    return kExitError;
  }
  // The answer may have led to another form.
  const DocView result = viewer::ActiveDocView();
  const bool asked = arguments.append || arguments.force;
  if (result != view && !asked && RulesOfSignatures(viewer::DocOf(result)).isSigned) {
    warnings.emplace_back(
        "the form that the server's answer led to was signed; it was written anew, which makes its "
        "signatures invalid (--append would not)");
  }
  WriteDocument(result, arguments.output, {arguments.append, arguments.force});
  if (result == view) WarnOfPasswords(plan.fills, &warnings);
  return FinishDocument(arguments.url, viewer::DocOf(result), warnings);
}

}  // namespace quillon::app
