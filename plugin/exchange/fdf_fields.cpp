#include "plugin/exchange/fdf_fields.h"

#include <string_view>

#include "plugin/appearance/form_parts.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/keys.h"
#include "plugin/resources/error_texts.h"

namespace quillform {

namespace {

ObjectHandle NewText(ObjectDoc doc, std::string_view text) {
  return Objects->NewString(doc, false, text.data(), static_cast<std::uint32_t>(text.size()));
}

ObjectHandle ValueIn(ObjectDoc fdf, ObjectHandle value) {
  switch (Objects->TypeOf(value)) {
    case ObjectKind::kNull:
      return kNullObject;
    case ObjectKind::kString: {
      std::uint32_t length = 0;
      const char* bytes = Objects->StringValue(value, &length);
      return Objects->NewString(fdf, false, bytes, length);
    }
    case ObjectKind::kName:
      return Objects->NewName(fdf, false, Objects->NameValue(value));
    default:
      return Objects->CopyObject(value, fdf);
  }
}

void Append(ObjectHandle array, ObjectHandle element) {
  Objects->ArrayInsert(array, Objects->ArrayLength(array), element);
}

// The text up to the first ".".
std::string_view FirstPart(std::string_view name) { return name.substr(0, name.find('.')); }

bool HasMoreParts(std::string_view name) { return name.find('.') != std::string_view::npos; }

void DropFirstPart(std::string_view* name) { name->remove_prefix(name->find('.') + 1); }

// The entry for a name, with the entries of its parts inside each other. Takes the value over.
ObjectHandle NewEntry(ObjectDoc fdf, std::string_view name, NewObject* value) {
  NewObject outermost(Objects->NewDict(fdf, false, 2));
  ObjectHandle entry = outermost.handle;
  for (; HasMoreParts(name); DropFirstPart(&name)) {
    Objects->DictPut(entry, key::T, NewText(fdf, FirstPart(name)));
    const ObjectHandle kids = PutNewArray(entry, key::Kids, fdf, 1);
    NewObject kid(Objects->NewDict(fdf, false, 2));
    Append(kids, kid.handle);
    entry = kid.Release();
  }
  Objects->DictPut(entry, key::T, NewText(fdf, name));
  if (!IsNull(value->handle)) {
    Objects->DictPut(entry, key::V, value->handle);
    value->Release();
  }
  return outermost.Release();
}

// The array into which the entry of `name` goes, after the one of `previous`. What is left of the
// name is its part from that array on.
ObjectHandle EnterSharedEntries(ObjectHandle fields, std::string_view previous,
                                std::string_view* name) {
  ObjectHandle array = fields;
  while (HasMoreParts(*name) && HasMoreParts(previous) && FirstPart(*name) == FirstPart(previous)) {
    const ObjectHandle last = Objects->ArrayGet(array, Objects->ArrayLength(array) - 1);
    array = Objects->DictGet(last, key::Kids);
    DropFirstPart(name);
    DropFirstPart(&previous);
  }
  return array;
}

}  // namespace

ObjectHandle MakeFieldsArray(ObjectDoc fdf, const std::vector<CollectedField>& fields,
                             bool exportCommand) {
  NewObject array(Objects->NewArray(fdf, false, static_cast<std::uint32_t>(fields.size())));
  std::string_view previous;
  for (const CollectedField& field : fields) {
    const std::string_view whole = field.name;
    if (whole.size() > kMaxNameLength) Raise(ownErrors.exportFailed);
    std::string_view name = whole;
    const ObjectHandle target = EnterSharedEntries(array.handle, previous, &name);
    NewObject value(ValueIn(fdf, ValueToExport(field.node, exportCommand)));
    NewObject entry(NewEntry(fdf, name, &value));
    Append(target, entry.handle);
    entry.Release();
    previous = whole;
  }
  return array.Release();
}

}  // namespace quillform
