#include "tests/plugin/appearance/show_object.h"

#include <map>

namespace quillform {

namespace {

std::string NameText(Atom name) { return std::string("/") + Core->NameFromAtom(name); }

Boolean CollectEntry(ObjectHandle key, ObjectHandle value, void* clientData) {
  auto& entries = *static_cast<std::map<std::string, std::string>*>(clientData);
  entries[NameText(Objects->NameValue(key))] = ShowObject(value);
  return true;
}

std::string ShowDict(ObjectHandle dict) {
  std::map<std::string, std::string> entries;
  Objects->EnumDict(dict, Wrap<&CollectEntry>, &entries);
  entries.erase("/Length");
  std::string text = "<<";
  for (const auto& [key, value] : entries) text += " " + key + " " + value;
  return text + " >>";
}

std::string ShowArray(ObjectHandle array) {
  std::string text;
  for (std::uint32_t i = 0; i < Objects->ArrayLength(array); ++i) {
    text += (i == 0 ? "" : " ") + ShowObject(Objects->ArrayGet(array, i));
  }
  return "[" + text + "]";
}

}  // namespace

std::string ShowObject(ObjectHandle object) {
  char number[32];
  std::uint32_t length = 0;
  switch (Objects->TypeOf(object)) {
    case ObjectKind::kInteger:
      return std::to_string(Objects->IntegerValue(object));
    case ObjectKind::kFixed:
      Support->FixedToText(Objects->FixedValue(object), number, sizeof number, 4);
      return number;
    case ObjectKind::kBoolean:
      return Objects->BooleanValue(object) != 0 ? "true" : "false";
    case ObjectKind::kName:
      return NameText(Objects->NameValue(object));
    case ObjectKind::kString: {
      const char* bytes = Objects->StringValue(object, &length);
      return "(" + std::string(bytes, length) + ")";
    }
    case ObjectKind::kArray:
      return ShowArray(object);
    case ObjectKind::kDict:
      return ShowDict(object);
    case ObjectKind::kStream:
      return ShowDict(Objects->StreamDict(object)) + "stream";
    default:
      return "null";
  }
}

std::string StreamText(ObjectHandle stream) {
  const StreamHandle bytes = Objects->OpenStream(stream, quillon::kStreamDecoded);
  std::string text;
  char chunk[1000];
  while (const std::uint32_t count = Support->ReadStream(bytes, chunk, sizeof chunk)) {
    text.append(chunk, count);
  }
  Support->CloseStream(bytes);
  return text;
}

}  // namespace quillform
