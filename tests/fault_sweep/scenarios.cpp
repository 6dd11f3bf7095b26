#include "tests/fault_sweep/scenarios.h"

#include <cstring>
#include <sstream>
#include <utility>

#include "plugin/frame/plugin_main.h"
#include "quillon/core/guard.h"
#include "quillon/core/host.h"
#include "quillon/core/operations.h"
#include "quillon/core/tables.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/open_document.h"
#include "quillon/document/operations.h"
#include "quillon/document/page_edit.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/viewer/draw_page.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "sdk/forms_table.h"
#include "sdk/link_table.h"
#include "tests/support/form_pdf.h"

namespace quillon::test {
namespace {

using quillform::FieldNode;
using quillform::FormsTable;

const FormsTable& Forms() {
  const Atom name = core::AtomFromName(quillform::kFormsTableName);
  auto* table = static_cast<FormsTable*>(core::GetTable(name, quillform::kFormsVersion));
  if (table == nullptr) Fail(kErrorNotOffered, "the plug-in offers no forms");
  return *table;
}

std::string FormOfAllKinds(const std::string& text) {
  const std::string states = "/AP << /N << /Yes 9 0 R /Off 9 0 R >> >> /AS /Off ";
  const auto radio = [](const char* on, const char* rect) {
    return std::string("/Subtype /Widget /Parent 13 0 R /MK << /CA (l) /BC [0] >> /AS /Off ") +
           "/AP << /N << /" + on + " 9 0 R /Off 9 0 R >> >> /Rect " + rect;
  };
  return FormPdf({
      WidgetField("Tx", "text", "/V (" + text + ")"),
      WidgetField("Tx", "lines", "/Ff 4096 /V (one)", "[100 600 300 660]"),
      WidgetField("Btn", "box", states + "/MK << /CA (4) /BC [1 0 0] >>", "[100 560 120 580]"),
      "/FT /Btn /Ff 49152 /T (radio) /Kids [17 0 R 18 0 R]",
      WidgetField("Btn", "button", "/Ff 65536 /MK << /CA (Push) >>", "[100 500 200 520]"),
      WidgetField("Ch", "combo", "/Ff 131072 /Opt [(red) (green)]", "[100 470 200 490]"),
      WidgetField("Ch", "list", "/Opt [[(r) (red)] [(g) (green)]]", "[100 420 200 460]"),
      radio("Yes", "[100 530 120 550]"),
      radio("No", "[130 530 150 550]"),
  });
}

constexpr const char* kValuesAsFdf =
    "%FDF-1.2\n1 0 obj\n<< /FDF << /Fields [<< /T (box) /V /Yes >> << /T (combo) /V (green) >>\n"
    "<< /T (lines) /V (of\\rtwo) >> << /T (text) /V (imported) >>] >> >>\nendobj\n"
    "trailer\n<< /Root 1 0 R >>\n%%EOF\n";

void SetValue(FormWorld& world, const char* name, const char* value, bool isName = false) {
  const ObjectDoc objects = document::ObjectDocOf(world.doc);
  Forms().LoadAllFields(world.doc);
  const FieldNode node = Forms().FindFieldByName(world.doc, name);
  if (node == nullptr) Fail(kErrorGeneral, std::string("no field ") + name);
  const auto length = static_cast<std::uint32_t>(std::strlen(value));
  ObjectHandle made = isName ? objects::NewName(objects, 0, core::AtomFromName(value))
                             : objects::NewString(objects, 0, value, length);
  try {
    Forms().SetFieldValue(node, made);
  } catch (...) {
    objects::Destroy(made);
    throw;
  }
  objects::Destroy(made);
}

void Save(FormWorld& world) {
  PrepareSave(world.view);
  world.saved = DocumentToBytes(world.doc);
  ResumeAfterSave(world.view);
}

void Export(FormWorld& world) {
  const ObjectDoc fdf = Forms().CreateFDFFromForm(world.doc, kNullObject, 1, 0, 1, 1, "data.fdf");
  objects::CloseDocument(fdf);
}

std::string FormThatIsSubmitted() {
  const auto button = [](const char* name, const char* entries) {
    return WidgetField("Btn", name,
                       std::string("/Ff 65536 /A << /S /SubmitForm /F << /FS /URL /F (send) >> ") +
                           entries + ">>");
  };
  return FormPdf({button("fdf", ""), button("pairs", "/Flags 4"),
                  WidgetField("Tx", "text", "/V (a b)"), WidgetField("Btn", "box", "/V /Yes")});
}

// Presses the button of that number.
void Submit(FormWorld& world, std::uint32_t number) {
  const ObjectDoc objects = document::ObjectDocOf(viewer::DocOf(world.webView));
  const ObjectHandle button = ObjectByNumber(objects, kFirstField + number);
  const ObjectHandle action = document::EntryOf(button, core::AtomFromName("A"));
  viewer::PerformAction(document::ActionFromObject(action), world.webView);
}

void Reopen(FormWorld& world) {
  const DocView view = std::exchange(world.view, nullptr);
  viewer::CloseView(view);
  world.doc = nullptr;
  world.view = OpenViewOfDocument(OpenDocumentBytes(FormOfAllKinds("old")));
  world.doc = viewer::DocOf(world.view);
}

std::string ValueText(ObjectHandle value) {
  const ObjectKind kind = objects::TypeOf(value);
  if (kind == ObjectKind::kName)
    return std::string("/") + core::NameFromAtom(objects::NameValue(value));
  if (kind != ObjectKind::kString) return "-";
  std::uint32_t length = 0;
  const char* bytes = objects::StringValue(value, &length);
  return {bytes, length};
}

Boolean AddToSnapshot(FieldNode node, void* data) {
  (*static_cast<Snapshot*>(data))[Forms().FieldNodeName(node)] =
      ValueText(Forms().GetFieldValue(node));
  return 1;
}

// Brackets of a content stream: q and Q, BMC or BDC and EMC, BT and ET.
bool Balanced(const std::string& content) {
  std::map<std::string, int> count;
  std::istringstream words(content);
  for (std::string word; words >> word;) ++count[word];
  return count["q"] == count["Q"] && count["BMC"] + count["BDC"] == count["EMC"] &&
         count["BT"] == count["ET"];
}

ObjectHandle EntryNamed(ObjectHandle dict, const char* key) {
  return document::EntryOf(dict, core::AtomFromName(key));
}

struct State {
  const char* name;
  ObjectHandle stream;
};

// One widget: the state shown, and the normal appearances; one without states has no name.
struct Look {
  std::string shown;
  std::vector<State> states;
};

std::vector<Look> LooksOnFirstPage(DocHandle doc) {
  std::vector<Look> looks;
  const PageHandle page = document::AcquirePage(doc, 0);
  for (std::uint32_t i = 0; i < document::AnnotCount(page); ++i) {
    const ObjectHandle annot = document::AnnotDict(document::AnnotAt(page, i));
    const ObjectHandle normal = EntryNamed(EntryNamed(annot, "AP"), "N");
    Look look{ValueText(EntryNamed(annot, "AS")), {{"", normal}}};
    for (const char* name : {"Yes", "No", "Off"}) {
      if (objects::TypeOf(normal) != ObjectKind::kDict) break;
      look.states.push_back({name, EntryNamed(normal, name)});
    }
    looks.push_back(std::move(look));
  }
  document::ReleasePage(page);
  return looks;
}

void AddLooks(DocHandle doc, Snapshot* snapshot) {
  int number = 0;
  for (const Look& look : LooksOnFirstPage(doc)) {
    std::string text = look.shown;
    for (const State& state : look.states) {
      const bool drawn = objects::TypeOf(state.stream) == ObjectKind::kStream;
      if (drawn && *state.name != '\0') text += std::string(" ") + state.name;
    }
    (*snapshot)["(look " + std::to_string(number++) + ")"] = text;
  }
}

std::string AppearanceFault(DocHandle doc) {
  for (const Look& look : LooksOnFirstPage(doc)) {
    for (const auto& [name, stream] : look.states) {
      if (objects::TypeOf(stream) != ObjectKind::kStream) continue;
      if (Balanced(DecodedStream(stream))) continue;
      return "object " + std::to_string(ObjectNumberOf(stream)) + " is a half-built appearance";
    }
  }
  return "";
}

}  // namespace

const std::vector<Scenario>& Scenarios() {
  static const std::vector<Scenario> scenarios = {
      {"start", Moment::kStart, nullptr},
      {"close and open", Moment::kForm, Reopen},
      {"list", Moment::kForm, [](FormWorld& world) { TakeSnapshot(world.doc); }},
      {"draw", Moment::kForm, [](FormWorld& world) { DrawPageAnnots(world.view, 0); }},
      {"fill text", Moment::kForm, [](FormWorld& world) { SetValue(world, "text", "new"); }},
      {"fill lines", Moment::kForm, [](FormWorld& world) { SetValue(world, "lines", "a\rb\rc"); }},
      {"fill box", Moment::kForm, [](FormWorld& world) { SetValue(world, "box", "Yes", true); }},
      {"fill radio", Moment::kForm,
       [](FormWorld& world) { SetValue(world, "radio", "Yes", true); }},
      {"fill combo", Moment::kForm, [](FormWorld& world) { SetValue(world, "combo", "green"); }},
      {"fill list", Moment::kForm, [](FormWorld& world) { SetValue(world, "list", "g"); }},
      {"export", Moment::kForm, Export},
      {"import", Moment::kForm, [](FormWorld& world) { Forms().ImportFDF(world.doc, world.fdf); }},
      {"reset", Moment::kForm,
       [](FormWorld& world) { Forms().ResetFields(world.doc, kNullObject, 1); }},
      {"insert pages", Moment::kForm,
       [](FormWorld& world) { InsertPages(world.doc, 0, world.otherDoc, 0, 0); }},
      {"save", Moment::kForm, Save},
      {"submit as FDF", Moment::kWebForm, [](FormWorld& world) { Submit(world, 0); }},
      {"submit as pairs", Moment::kWebForm, [](FormWorld& world) { Submit(world, 1); }},
      {"end", Moment::kEnd, nullptr},
  };
  return scenarios;
}

void StartPlugIn() {
  // Forms are submitted only where there is a link plug-in; no answer here leads to another form.
  static LinkTable link = {.slotCount = 3,
                           .OpenURL = [](DocView, const char*, std::uint32_t) -> FailureCode {
                             return kErrorNotOffered;
                           },
                           .Watch = nullptr,
                           .SetTimeLimit = nullptr};
  OfferProvider(
      core::AtomFromName(kLinkTableName),
      [](TableServer, std::uint32_t, void*) { return reinterpret_cast<TableHandle>(&link); },
      nullptr);
  AttachPlugIn(&PlugInMain, nullptr);
  InitialisePlugIns();
}

void OpenWorld(FormWorld& world, Moment moment) {
  world.view = OpenViewOfDocument(OpenDocumentBytes(FormOfAllKinds("old")));
  world.doc = viewer::DocOf(world.view);
  world.otherDoc = OpenDocumentBytes(FormOfAllKinds("other"));
  OpenOptions options;
  options.header = "%FDF-";
  world.fdf = OpenPdfBytes(kValuesAsFdf, options, nullptr);
  if (moment == Moment::kWebForm) {
    world.webView = world.web.Open("http://host/form.pdf", FormThatIsSubmitted());
  }
}

void CloseWorld(FormWorld& world) {
  if (world.fdf != nullptr) ClosePdf(world.fdf);
  if (world.otherDoc != nullptr) CloseDocument(world.otherDoc);
  if (world.webView != nullptr) viewer::CloseView(world.webView);
  if (world.view != nullptr) viewer::CloseView(world.view);
  world.view = nullptr;
}

Snapshot TakeSnapshot(DocHandle doc) {
  Snapshot snapshot;
  CallGuarded([&] {
    Forms().LoadAllFields(doc);
    Forms().ForEachFieldNode(doc, 1, 1, AddToSnapshot, &snapshot);
  });
  AddLooks(doc, &snapshot);
  snapshot["(pages)"] = std::to_string(document::PageCount(doc));
  return snapshot;
}

std::string FaultOf(FormWorld& world) {
  if (world.doc == nullptr) return "";
  std::string fault = AppearanceFault(world.doc);
  if (!fault.empty()) return fault;
  PrepareSave(world.view);
  const std::string bytes = DocumentToBytes(world.doc);
  ResumeAfterSave(world.view);
  const Snapshot here = TakeSnapshot(world.doc);
  const DocView view = OpenViewOfDocument(OpenDocumentBytes(bytes));
  Snapshot again = TakeSnapshot(viewer::DocOf(view));
  viewer::CloseView(view);
  for (const auto& [name, value] : here) {
    if (again.contains(name) && again[name] == value) continue;
    return name + " is saved as " + again[name] + ", not " + value;
  }
  return again.size() == here.size() ? "" : "what was saved has more fields";
}

}  // namespace quillon::test
