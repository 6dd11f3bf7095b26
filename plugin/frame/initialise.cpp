#include "plugin/frame/initialise.h"

#include "plugin/appearance/font_resources.h"
#include "plugin/appearance/kinds.h"
#include "plugin/appearance/text_appearance.h"
#include "plugin/exchange/action_handlers.h"
#include "plugin/exchange/form_data_commands.h"
#include "plugin/exchange/pending_imports.h"
#include "plugin/frame/about_item.h"
#include "plugin/frame/shared_ui.h"
#include "plugin/host/form_events.h"
#include "plugin/host/log.h"
#include "plugin/model/field_placement.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/form_hooks.h"
#include "plugin/model/keys.h"
#include "plugin/model/page_notifications.h"
#include "plugin/resources/error_texts.h"

namespace quillform {

namespace {

// A step without a routine has its place and nothing to do yet.
struct InitStep {
  const char* name;
  bool (*run)();
  bool fatal;  // without it nothing after it can work
};

// For steps that cannot fail other than by raising.
template <auto Routine>
bool Done() {
  Routine();
  return true;
}

void RequestLinkTable() {
  const Atom name = Core->AtomFromName(quillon::kLinkTableName);
  Link = static_cast<quillon::LinkTable*>(Core->GetTable(name, quillon::kLinkVersion));
}

constexpr InitStep kInitSteps[] = {
    {"key atoms", &Done<&RegisterKeyAtoms>, false},
    {"log", &Done<&OpenLog>, false},
    {"shared record of the dialogs", &CreateSharedUi, true},
    {"form event lists", &CreateFormEventLists, true},
    {"dialog fonts", &Done<&CreateDialogFonts>, true},
    {"About item", &Done<&AddAboutItem>, false},
    {"notifications of pages and annotations", &RegisterPageNotifications, false},
    {"base fonts", &Done<&FillBaseFontTable>, false},
    {"page actions", &RegisterFormActionHandlers, false},
    {"kinds of fields", &Done<&RegisterAppearanceKinds>, false},
    {"form tool and menus", nullptr, true},
    {"widget annotation handler", nullptr, true},
    {"notifications of documents", &RegisterFieldTreeNotifications, true},
    {"import and export items", &Done<&AddFormDataItems>, false},
    {"link plug-in", &Done<&RequestLinkTable>, false},
    {"form action handlers", &RegisterDataActionHandlers, true},
    {"error texts", &Done<&RegisterErrorTexts>, false},
};

const char* failedStep = nullptr;

// Lower rooms call higher ones through records of routines.
void ConnectRooms() {
  appearanceHooks.SetDefaultFormAppearance = &SetDefaultFormAppearance;
  ConnectFieldPlacement();
  ConnectPendingImports();
}

}  // namespace

Boolean PlugInInit() {
  ConnectRooms();
  for (const InitStep& step : kInitSteps) {
    failedStep = step.name;
    if (step.run != nullptr && !step.run() && step.fatal) return 0;
  }
  failedStep = nullptr;
  return 1;
}

const char* FailedInitStep() { return failedStep; }

}  // namespace quillform
