#include "quillon/objects/repair_lists.h"

#include <unordered_set>
#include <vector>

#include "quillon/objects/form_key.h"
#include "quillon/objects/load.h"

namespace quillon::objects {
namespace {

constexpr ListFaults kFieldFaults = {"An entry of the field tree was no field; it was left out.",
                                     "A field was listed twice; once was left out."};

const char* FaultOf(Document& doc, const Value& entry, const ListFaults& faults,
                    std::unordered_set<std::uint32_t>* met) {
  // An array may hold what was meant to stand in this one.
  if (CellOf(doc, entry, CellKind::kArray) != 0) return nullptr;
  if (CellOf(doc, entry, CellKind::kDict) == 0) return faults.none;
  const bool again = entry.tag == ValueTag::kReference && !met->insert(entry.payload).second;
  return again ? faults.twice : nullptr;
}

struct FieldList {
  std::uint32_t array;
  std::uint32_t holder;  // object number
};

void PushKids(Document& doc, const FieldList& list, std::unordered_set<std::uint32_t>* entered,
              std::vector<FieldList>* pending) {
  Cell& fields = CellAt(doc.cells, list.array);
  for (std::uint32_t i = 0; i < fields.size; ++i) {
    const Value field = ElementsOf(fields)[i];
    const std::uint32_t dict = CellOf(doc, field, CellKind::kDict);
    if (dict == 0) continue;
    const std::uint32_t kids = CellOf(doc, EntryValue(doc, dict, "Kids"), CellKind::kArray);
    const bool indirect = field.tag == ValueTag::kReference;
    if (kids != 0 && entered->insert(kids).second) {
      pending->push_back({kids, indirect ? field.payload : list.holder});
    }
  }
}

}  // namespace

void RepairList(Document& doc, std::uint32_t array, std::uint32_t holder,
                const ListFaults& faults) {
  std::unordered_set<std::uint32_t> met;
  Cell& cell = CellAt(doc.cells, array);
  std::uint32_t kept = 0;
  for (std::uint32_t i = 0; i < cell.size; ++i) {
    const Value entry = ElementsOf(cell)[i];
    if (const char* fault = FaultOf(doc, entry, faults, &met)) {
      Warn(doc, fault, holder, ObjectOffset(doc, holder));
    } else {
      ElementsOf(cell)[kept++] = entry;
    }
  }
  if (kept == cell.size) return;
  cell.size = kept;
  MarkCellChanged(doc, array);
}

void RepairFields(Document& doc) {
  const std::uint32_t catalog = CellOf(doc, EntryValue(doc, doc.trailer, "Root"), CellKind::kDict);
  if (!doc.isPdf || catalog == 0) return;
  const std::uint32_t form = CellOf(doc, EntryValue(doc, catalog, kFormKey), CellKind::kDict);
  if (form == 0) return;
  const std::uint32_t fields = CellOf(doc, EntryValue(doc, form, "Fields"), CellKind::kArray);
  if (fields == 0) return;
  std::unordered_set<std::uint32_t> entered{fields};
  std::vector<FieldList> pending{{fields, doc.root}};
  while (!pending.empty()) {
    const FieldList list = pending.back();
    pending.pop_back();
    RepairList(doc, list.array, list.holder, kFieldFaults);
    PushKids(doc, list, &entered, &pending);
  }
}

}  // namespace quillon::objects
