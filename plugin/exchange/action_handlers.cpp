#include "plugin/exchange/action_handlers.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "plugin/exchange/action_texts.h"
#include "plugin/exchange/fdf_answer.h"
#include "plugin/exchange/form_actions.h"
#include "plugin/exchange/hide_action.h"
#include "plugin/exchange/import_action.h"
#include "plugin/exchange/open_fdf.h"
#include "plugin/exchange/page_actions.h"
#include "plugin/exchange/reset.h"
#include "plugin/exchange/set_state_action.h"
#include "plugin/exchange/submit.h"
#include "plugin/model/keys.h"
#include "plugin/resources/resources.h"

namespace quillform {

ActionDialogs actionDialogs{};

namespace {

using quillon::ActionHandlerRecord;

using ActionProcedure = void (*)(ActionHandle action, DocView view);

constexpr std::size_t kNameSize = 257;

// The host keeps the records' addresses until the process ends.
ActionHandlerRecord submitFormHandler{};
ActionHandlerRecord resetFormHandler{};
ActionHandlerRecord importDataHandler{};
ActionHandlerRecord setStateHandler{};
// Large enough for a host's own record, which may have words that this plug-in knows nothing of.
std::vector<ActionHandlerRecord> hideHandler;

void DoNothing() {}

template <auto Routine>
ActionProcedure MakeActionProcedure() {
  return reinterpret_cast<ActionProcedure>(MakeHostCallback<Routine>());
}

void FillTexts(ActionHandlerRecord* record, const ActionTexts& texts) {
  record->typeDescription = texts.typeDescription;
  record->buttonLabel = texts.buttonLabel;
  record->firstLine = texts.firstLine;
  record->secondLine = texts.secondLine;
}

template <auto Perform, auto Edit>
void FillHandler(ActionHandlerRecord* record, const ActionTexts& texts) {
  record->perform = MakeActionProcedure<Perform>();
  record->edit = MakeActionProcedure<Edit>();
  record->reserved = MakeHostCallback<&DoNothing>();
  FillTexts(record, texts);
}

void Register(Atom type, const ActionHandlerRecord* record, std::uint32_t nameString) {
  char name[kNameSize];
  LoadLocalString(nameString, name, sizeof name);
  Viewer->RegisterActionHandler(Extension, type, record, name);
}

template <auto Perform, auto Edit>
void RegisterHandler(ActionHandlerRecord* record, Atom type, std::uint32_t nameString,
                     const ActionTexts& texts) {
  *record = {};
  record->size = sizeof *record;
  FillHandler<Perform, Edit>(record, texts);
  Register(type, record, nameString);
}

// A record with the host's own words in it, if the host has one.
ActionHandlerRecord* CopyOfHandler(const ActionHandlerRecord* present) {
  const std::uint32_t own = sizeof(ActionHandlerRecord);
  const std::uint32_t size = std::max(own, present != nullptr ? present->size : 0);
  hideHandler.assign((size + own - 1) / own, ActionHandlerRecord{});
  if (present != nullptr) std::memcpy(hideHandler.data(), present, present->size);
  hideHandler.front().size = size;
  return hideHandler.data();
}

void RegisterHide() {
  ActionHandlerRecord* record = CopyOfHandler(Viewer->ActionHandlerOf(key::Hide));
  FillHandler<&PerformHide, &EditHide>(record, MakeHideTexts());
  Register(key::Hide, record, 126);
}

void RegisterSetState() {
  if (Viewer->ActionHandlerOf(key::SetState) != nullptr) return;
  setStateHandler = {};
  setStateHandler.size = sizeof setStateHandler;
  setStateHandler.perform = MakeActionProcedure<&PerformSetState>();
  FillTexts(&setStateHandler, MakeSetStateTexts());
  Register(key::SetState, &setStateHandler, 133);
}

}  // namespace

bool RegisterFormActionHandlers() {
  AddPageActionsItem();
  RegisterHide();
  RegisterSetState();
  return true;
}

bool RegisterDataActionHandlers() {
  if (Link != nullptr) {
    RegisterHandler<&PerformSubmitForm, &EditSubmitForm>(&submitFormHandler, key::SubmitForm, 73,
                                                         MakeSubmitFormTexts());
  }
  RegisterHandler<&PerformResetForm, &EditResetForm>(&resetFormHandler, key::ResetForm, 77,
                                                     MakeResetFormTexts());
  RegisterHandler<&PerformImportData, &EditImportData>(&importDataHandler, key::ImportData, 91,
                                                       MakeImportDataTexts());
  if (Link != nullptr) RegisterFdfDataHandler();
  ReplaceOpenDocument();
  return true;
}

}  // namespace quillform
