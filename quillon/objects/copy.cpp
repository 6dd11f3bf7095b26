#include "quillon/objects/copy.h"

#include <cstring>
#include <utility>
#include <vector>

#include "quillon/objects/dictionary.h"
#include "quillon/objects/load.h"
#include "quillon/objects/security_handler.h"

namespace quillon::objects {
namespace {

struct Copying {
  Document& from;
  Document& to;
  CopiedNumbers numbers;
  std::vector<std::uint32_t> pending;  // old numbers whose values are still to be copied
};

Value CopyNested(Copying& copying, const Value& value, int depth);

// The new number for an object of the other document, given out before its value is copied so that
// circles close.
Value CopyReference(Copying& copying, const Value& reference) {
  const Value target = Dereference(copying.from, reference);
  if (target == kNullValue) return kNullValue;
  const auto [entry, isNew] = copying.numbers.try_emplace(reference.payload, 0);
  if (isNew) {
    entry->second = AddObject(copying.to, kNullValue);
    copying.pending.push_back(reference.payload);
  }
  if (entry->second == 0) return kNullValue;
  return ReferenceTo(entry->second, 0);
}

void CopyText(Document& from, Document& to, std::uint32_t source, std::uint32_t target) {
  Cell& original = CellAt(from.cells, source);
  Cell& copy = CellAt(to.cells, target);
  if (original.kind == CellKind::kString) {
    const std::string_view bytes = StringBytes(from, source);
    auto* text = AllocateArray<char>(to.pool, bytes.size() + 1);
    std::memcpy(text, bytes.data(), bytes.size() + 1);
    copy.data = text;
    copy.size = static_cast<std::uint32_t>(bytes.size());
    copy.capacity = copy.size + 1;
  } else {
    auto* text = AllocateArray<char>(to.pool, original.size);
    std::memcpy(text, original.data, original.size);
    copy.data = text;
    copy.size = original.size;
    copy.capacity = original.capacity;
  }
  copy.owned = true;
}

NameCode CopyName(Copying& copying, NameCode name) {
  if (name < kFirstFurtherName) return name;
  return NameFromText(copying.to, std::string(NameText(copying.from, name)));
}

void CopyEntries(Copying& copying, std::uint32_t source, std::uint32_t target, int depth) {
  Cell& original = CellAt(copying.from.cells, source);
  Cell& copy = CellAt(copying.to.cells, target);
  copy.data = AllocateArray<DictEntry>(copying.to.pool, original.size);
  copy.capacity = original.size;
  for (std::uint32_t i = 0; i < original.size; ++i) {
    const DictEntry entry = EntriesOf(original)[i];
    const Value value = CopyNested(copying, entry.value, depth + 1);
    EntriesOf(copy)[copy.size++] = {CopyName(copying, entry.key), value};
    if (value.tag == ValueTag::kCell) CellAt(copying.to.cells, value.payload).parent = target;
  }
}

void CopyElements(Copying& copying, std::uint32_t source, std::uint32_t target, int depth) {
  Cell& original = CellAt(copying.from.cells, source);
  Cell& copy = CellAt(copying.to.cells, target);
  copy.data = AllocateArray<Value>(copying.to.pool, original.size);
  copy.capacity = original.size;
  for (std::uint32_t i = 0; i < original.size; ++i) {
    const Value value = CopyNested(copying, ElementsOf(original)[i], depth + 1);
    ElementsOf(copy)[copy.size++] = value;
    if (value.tag == ValueTag::kCell) CellAt(copying.to.cells, value.payload).parent = target;
  }
}

// The copy's data are encrypted as its own document has it, and that may know nothing of the
// filter's name.
void LeaveOutCryptFilter(Copying& copying, std::uint32_t source, std::uint32_t target, int depth) {
  if (&copying.from == &copying.to || !HasCryptFilter(copying.from, source)) return;
  for (const char* name : {"Filter", "DecodeParms"}) {
    const NameCode key = NameFromText(copying.to, name);
    const Value all = Dereference(copying.from, EntryValue(copying.from, source, name));
    RemoveEntry(copying.to, target, key);
    if (CellOf(copying.from, all, CellKind::kArray) == 0) continue;
    const Value rest = CopyNested(copying, all, depth + 1);
    if (CellAt(copying.to.cells, rest.payload).size > 0) {
      RemoveElement(copying.to, rest.payload, 0);
    }
    SetEntry(copying.to, target, key, rest);
  }
}

// The data are copied as they are stored, but for the encryption.
void CopyStream(Copying& copying, std::uint32_t source, std::uint32_t target, int depth) {
  const std::string_view stored = StoredBytes(copying.from, source, 0);
  auto* body = AllocateArray<StreamBody>(copying.to.pool, 1);
  auto* bytes = AllocateArray<char>(copying.to.pool, stored.size());
  if (!stored.empty()) std::memcpy(bytes, stored.data(), stored.size());
  *body = StreamBody{bytes, stored.size(), true, true};
  CellAt(copying.to.cells, target).data = body;
  const Value dict = CellValue(CellAt(copying.from.cells, source).capacity);
  const Value copy = CopyNested(copying, dict, depth + 1);
  LeaveOutCryptFilter(copying, dict.payload, copy.payload, depth);
  CellAt(copying.to.cells, target).capacity = copy.payload;
  CellAt(copying.to.cells, copy.payload).parent = target;
}

Value CopyCell(Copying& copying, std::uint32_t source, int depth) {
  if (depth > kMaxNesting) Fail(kErrorBadObject, "Objects are nested too deep to be copied.");
  const CellKind kind = CellAt(copying.from.cells, source).kind;
  const std::uint32_t target = NewCell(copying.to.cells, kind);
  switch (kind) {
    case CellKind::kDict:
      CopyEntries(copying, source, target, depth);
      break;
    case CellKind::kArray:
      CopyElements(copying, source, target, depth);
      break;
    case CellKind::kStream:
      CopyStream(copying, source, target, depth);
      break;
    default:
      CopyText(copying.from, copying.to, source, target);
      break;
  }
  return CellValue(target);
}

Value CopyNested(Copying& copying, const Value& value, int depth) {
  if (value.tag == ValueTag::kName) return NameOf(CopyName(copying, value.payload));
  if (value.tag == ValueTag::kReference && &copying.from != &copying.to) {
    return CopyReference(copying, value);
  }
  return value.tag == ValueTag::kCell ? CopyCell(copying, value.payload, depth) : value;
}

void BindObject(Document& doc, std::uint32_t number, const Value& value) {
  FindSlot(doc.objects, number)->value = value;
  if (value.tag == ValueTag::kCell) {
    CellAt(doc.cells, value.payload).parent = kIndirectParent | number;
  }
}

void CopyPending(Copying& copying, std::uint32_t top) {
  while (!copying.pending.empty()) {
    const std::uint32_t old = copying.pending.back();
    copying.pending.pop_back();
    if (old == top) continue;
    const Value copy = CopyNested(copying, LoadObject(copying.from, old), 0);
    BindObject(copying.to, copying.numbers.at(old), copy);
  }
}

}  // namespace

Value CopyValue(Document& from, const Value& value, Document& to, std::uint32_t number) {
  Copying copying{from, to, {}, {}};
  const Value copy = CopyNested(copying, value, 0);
  CopyPending(copying, number);
  const auto referred = copying.numbers.find(number);
  if (number != 0 && referred != copying.numbers.end()) {
    BindObject(to, referred->second, copy);
    return ReferenceTo(referred->second, 0);
  }
  const bool isStream =
      copy.tag == ValueTag::kCell && CellAt(to.cells, copy.payload).kind == CellKind::kStream;
  return isStream ? ReferenceTo(AddObject(to, copy), 0) : copy;
}

std::uint32_t CopyAsObject(Document& from, const Value& value, std::uint32_t number, Document& to,
                           CopiedNumbers* numbers) {
  if (number != 0) {
    const auto known = numbers->find(number);
    if (known != numbers->end()) return known->second;
  }
  Copying copying{from, to, std::move(*numbers), {}};
  const std::uint32_t made = AddObject(to, kNullValue);
  if (number != 0) copying.numbers.emplace(number, made);
  BindObject(to, made, CopyNested(copying, value, 0));
  CopyPending(copying, 0);
  *numbers = std::move(copying.numbers);
  return made;
}

}  // namespace quillon::objects
