// What stands in arrays of fields, by name: placing many widgets then need not search the arrays
// for each. Kept for the time of a bulk load, and in step with the changes that the model makes;
// an array that something else made longer or shorter is read again. The model's own.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "plugin/host/host.h"

namespace quillform {

struct FormRecord;

// One array. Elements keep their order, not their positions, while others go or are appended.
struct ArrayNames {
  struct Bearer {
    std::uint32_t order;
    ObjectHandle element;
  };
  using Bearers = std::vector<Bearer>;  // of one name, in order

  struct Place {
    std::uint32_t order;      // of the last occurrence
    std::uint32_t count = 0;  // occurrences
    Bearers* bearers;         // of the element's name; null without a name
  };

  ObjectHandle array = kNullObject;
  bool (*nameOf)(ObjectHandle element, std::string* name) = nullptr;
  std::uint32_t length = 0;
  std::uint32_t nextOrder = 0;
  std::uint32_t nameless = 0;  // elements without a name, and those that are no indirect objects
  std::unordered_map<std::string, Bearers> bearersOf;
  std::unordered_map<std::uint64_t, Place> placeOf;  // by identity; of indirect elements
};

// The full name of an element of Fields; false for one that names no field. A name that breaks the
// rules is none.
bool FullNameOfElement(ObjectHandle element, std::string* name);

// The array by partial names; null outside bulk loads and for arrays too short to be worth it.
ArrayNames* NamesOnLevel(FormRecord& record, ObjectHandle array);

// The form's Fields by full names, in a bulk load.
const ArrayNames& NamesInFields(FormRecord& record, ObjectHandle fields);

// Where an element stands that the array has once; its length when it is not there.
std::uint32_t PositionOf(const ArrayNames& names, const ArrayNames::Place& place,
                         ObjectHandle element);

// Tell what became of an array after the change.
void NoteAppended(FormRecord& record, ObjectHandle array, ObjectHandle element);
void NoteRemoved(FormRecord& record, ObjectHandle array, ObjectHandle element,
                 std::uint32_t count);  // all of the element's occurrences
void NoteReplaced(FormRecord& record, ObjectHandle array, ObjectHandle old,
                  ObjectHandle replacement);
void NoteRenamed(FormRecord& record, ObjectHandle array, ObjectHandle element);

}  // namespace quillform
