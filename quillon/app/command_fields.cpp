#include <algorithm>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "quillon/app/commands.h"
#include "quillon/app/console.h"
#include "quillon/app/field_listing.h"
#include "quillon/app/form_inspection.h"
#include "quillon/app/session.h"

namespace quillon::app {
namespace {

using Json = nlohmann::ordered_json;

Json ValueJson(const FieldValueText& value) {
  if (!value.present) return nullptr;
  if (value.list) return value.texts;
  return value.texts.front();
}

double Points(Fixed value) { return std::round(value * 100.0 / kFixedOne) / 100; }

Json WidgetJson(const WidgetPlace& widget) {
  const FixedRect& rect = widget.rect;
  return {{"page", widget.page == 0 ? Json() : Json(widget.page)},
          {"rect", {Points(rect.left), Points(rect.bottom), Points(rect.right), Points(rect.top)}},
          {"visible", widget.visible}};
}

// The pages that show the field, each once, in the order of its widgets.
std::vector<int> PagesOf(const FieldDetails& details) {
  std::vector<int> pages;
  for (const WidgetPlace& widget : details.widgets) {
    const bool known = std::find(pages.begin(), pages.end(), widget.page) != pages.end();
    if (widget.page != 0 && !known) pages.push_back(widget.page);
  }
  return pages;
}

// docs/fields-json.md tells what each key means.
Json FieldJson(const FieldEntry& entry, const FieldDetails& details) {
  Json options = Json::array();
  for (const FieldOption& option : details.options) {
    options.push_back({{"export", option.exported}, {"display", option.display}});
  }
  Json widgets = Json::array();
  for (const WidgetPlace& widget : details.widgets) widgets.push_back(WidgetJson(widget));
  return {{"name", entry.name},
          {"kind", KindName(entry.kind)},
          {"value", ValueJson(details.value)},
          {"defaultValue", ValueJson(details.defaultValue)},
          {"flags", details.flags},
          {"pages", PagesOf(details)},
          {"widgets", std::move(widgets)},
          {"options", std::move(options)},
          {"states", details.states},
          {"maxLength", details.maxLength == 0 ? Json() : Json(details.maxLength)}};
}

// An element of a list in JSON, written at once: a value for the whole list of a large form would
// take many times its text.
void AppendElement(const Json& element, std::string* list) {
  *list += list->empty() ? "[" : ",";
  *list += "\n  ";
  for (const char character : element.dump(2)) {
    *list += character;
    if (character == '\n') *list += "  ";  // a text's own line ends are written otherwise
  }
}

std::string Quoted(const std::string& text) { return '"' + Printable(text) + '"'; }

std::string ValueLine(const FieldValueText& value) {
  std::string line;
  for (const std::string& text : value.texts) line += (line.empty() ? "" : ", ") + Quoted(text);
  return line;
}

template <typename List, typename ToText>
std::string Joined(const List& list, ToText toText) {
  std::string line;
  for (const auto& element : list) line += (line.empty() ? "" : ", ") + toText(element);
  return line;
}

void AppendLine(const char* label, const std::string& value, std::string* text) {
  if (value.empty()) return;
  char padded[16];
  std::snprintf(padded, sizeof padded, "  %-10s", label);
  text->append(padded).append(value).append("\n");
}

std::string OptionText(const FieldOption& option) {
  if (option.exported == option.display) return Quoted(option.display);
  return Quoted(option.exported) + " (" + Quoted(option.display) + ")";
}

std::string FieldText(const FieldEntry& entry, const FieldDetails& details) {
  const auto same = [](const std::string& text) { return text; };
  const auto number = [](int value) { return std::to_string(value); };
  std::string text = Printable(entry.name) + "\n";
  AppendLine("kind", KindName(entry.kind), &text);
  AppendLine("value", ValueLine(details.value), &text);
  AppendLine("default", ValueLine(details.defaultValue), &text);
  AppendLine("flags", Joined(details.flags, same), &text);
  AppendLine("pages", Joined(PagesOf(details), number), &text);
  AppendLine("options", Joined(details.options, OptionText), &text);
  AppendLine("states", Joined(details.states, Quoted), &text);
  if (details.maxLength != 0)
    AppendLine("length", "up to " + number(int(details.maxLength)), &text);
  return text;
}

// As for every other command, so that all of them see the same tree: a field whose name is a path
// gets its place there. What cannot be loaded is told when its turn comes in the list.
void LoadFields(DocHandle doc) {
  try {
    CallForms(&FormsTable::LoadAllFields, doc);
  } catch (const HostFailure&) {
  }
}

}  // namespace

int RunFields(const FieldsArguments& arguments) {
  const OpenedView opened(arguments.file);
  PermitReading(opened.doc);
  std::vector<std::string> warnings;
  if (CallForms(&FormsTable::DocumentHasForm, opened.doc) == 0) {
    Fail(kErrorOpenDocument, "the document has no form that can be read");
  }
  InspectForm(opened.doc);
  LoadFields(opened.doc);
  const std::vector<FieldEntry> fields = ListFields(opened.doc, &warnings);
  std::string text;
  for (const FieldEntry& entry : fields) {
    const FieldDetails details = ReadFieldDetails(entry);
    if (arguments.json) {
      AppendElement(FieldJson(entry, details), &text);
    } else {
      text += FieldText(entry, details);
    }
  }
  if (arguments.json) text += text.empty() ? "[]\n" : "\n]\n";
  WriteStandardOutput(text);
  // What plug-ins failed in when the document was opened (an appearance, say) leaves the list as it
  // is; `fill` and `render` tell.
  for (std::string& warning : FileWarnings(opened.doc)) warnings.push_back(std::move(warning));
  return FinishWith(arguments.file, warnings);
}

}  // namespace quillon::app
