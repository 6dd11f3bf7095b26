#include "plugin/appearance/widget_look_options.h"

#include "plugin/appearance/text_field.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

struct Options {
  ObjectHandle array;
  std::uint32_t count;
};

Options OptionsOf(FieldNode node) {
  const ObjectHandle array = GetInherited(node, key::Opt);
  if (!IsKind(array, ObjectKind::kArray)) return {array, 0};
  return {array, Objects->ArrayLength(array)};
}

ObjectHandle OptionAt(FieldNode node, std::int32_t index) {
  const Options options = OptionsOf(node);
  if (index < 0 || static_cast<std::uint32_t>(index) >= options.count) return quillon::kNullObject;
  return Objects->ArrayGet(options.array, static_cast<std::uint32_t>(index));
}

std::string DisplayText(ObjectHandle option) {
  if (!IsKind(option, ObjectKind::kArray)) return ValueText(option);
  const ObjectHandle display = Objects->ArrayGet(option, 1);
  return ValueText(IsNull(display) ? OptionExport(option) : display);
}

ObjectHandle NewText(ObjectDoc doc, const std::string& hostText) {
  const std::string text = DocumentTextOf(hostText);
  return Objects->NewString(doc, false, text.data(), static_cast<std::uint32_t>(text.size()));
}

}  // namespace

OptionList ReadOptions(FieldNode node) {
  OptionList list;
  const Options options = OptionsOf(node);
  for (std::uint32_t i = 0; i < options.count; ++i) {
    const ObjectHandle option = Objects->ArrayGet(options.array, i);
    list.display.push_back(HostTextOf(DisplayText(option)));
    list.exported.push_back(HostTextOf(ValueText(OptionExport(option))));
  }
  return list;
}

bool OptionListsEqual(const OptionList& a, const OptionList& b) {
  return a.display == b.display && a.exported == b.exported;
}

ObjectHandle NewOptionArray(ObjectDoc doc, const OptionList& options) {
  const std::size_t count = options.display.size();
  if (count == 0) return quillon::kNullObject;
  const ObjectHandle array = Objects->NewArray(doc, false, static_cast<std::uint32_t>(count));
  for (std::size_t i = 0; i < count; ++i) {
    const std::string& display = options.display[i];
    const bool plain = i >= options.exported.size() || options.exported[i].empty() ||
                       options.exported[i] == display;
    ObjectHandle option = NewText(doc, display);
    if (!plain) {
      const ObjectHandle pair = Objects->NewArray(doc, false, 2);
      Objects->ArrayPut(pair, 0, NewText(doc, options.exported[i]));
      Objects->ArrayPut(pair, 1, option);
      option = pair;
    }
    Objects->ArrayPut(array, static_cast<std::uint32_t>(i), option);
  }
  return array;
}

std::int32_t OptionOfExport(FieldNode node, ObjectHandle value) {
  const Options options = OptionsOf(node);
  if (IsNull(value)) return -1;
  for (std::uint32_t i = options.count; i-- > 0;) {
    if (ValuesEqual(OptionExport(Objects->ArrayGet(options.array, i)), value)) {
      return static_cast<std::int32_t>(i);
    }
  }
  return -1;
}

std::int32_t OptionOfDisplay(FieldNode node, const std::string& documentText) {
  const Options options = OptionsOf(node);
  for (std::uint32_t i = options.count; i-- > 0;) {
    if (DisplayText(Objects->ArrayGet(options.array, i)) == documentText) {
      return static_cast<std::int32_t>(i);
    }
  }
  return -1;
}

std::int32_t CountOptions(FieldNode node) {
  return static_cast<std::int32_t>(OptionsOf(node).count);
}

std::string DisplayOfOption(FieldNode node, std::int32_t index) {
  const ObjectHandle option = OptionAt(node, index);
  return IsNull(option) ? std::string() : DisplayText(option);
}

ObjectHandle ExportOfOption(FieldNode node, std::int32_t index) {
  return OptionExport(OptionAt(node, index));
}

}  // namespace quillform
