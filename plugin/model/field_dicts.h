// Editing field dictionaries and the arrays that hold them. The model's own.
#pragma once

#include <utility>
#include <vector>

#include "plugin/model/field_node.h"

namespace quillform {

// Kids, or the null object when it is no array. NeedKids makes an empty one.
ObjectHandle KidsOf(ObjectHandle dict);
ObjectHandle NeedKids(ObjectHandle dict);

// Whether there are fields or widgets below a node, met or not. A widget's own Kids are damage.
bool HasKids(FieldNode node);

// The elements from the last to the first, for walks during which the array may change or go.
std::vector<ObjectHandle> ElementsFromEnd(ObjectHandle array);

// These keep what a bulk load knows of the array in step. Nothing happens to what is no array.
// Every occurrence goes.
void RemoveFromArray(ObjectHandle array, ObjectHandle element);
// The element becomes the last, and the only one of its kind.
void MoveToEnd(ObjectHandle array, ObjectHandle element);
// The array must be one, without the element.
void AppendToArray(ObjectHandle array, ObjectHandle element);
// The last occurrence of `old` is replaced; without one, `replacement` is appended.
void ReplaceInArray(ObjectHandle array, ObjectHandle old, ObjectHandle replacement);

// The array that a field dictionary belongs in: its parent's Kids (made when missing), or the
// form's Fields.
ObjectHandle ContainerOf(ObjectHandle dict, ObjectHandle form);

void RemoveEntry(ObjectHandle dict, Atom key);

// Puts a value into a dictionary, of the same document or of another: an indirect object of the
// same document is shared, anything else is copied.
void PutCopy(ObjectHandle dict, Atom key, ObjectHandle value);
// Does nothing when there is no such entry.
void MoveEntry(ObjectHandle from, ObjectHandle to, Atom key);

// Copies each entry that `to` lacks and `wanted` (key) takes.
void CopyMissingEntries(ObjectHandle from, ObjectHandle to, bool (*wanted)(Atom key));

// What places a dictionary in the tree or on a page, rather than describing its field.
bool IsPlaceKey(Atom key);

// Runs `work`, which changes one entry, between the announcements that a widget needs. What it
// raises is announced and raised again.
template <typename Work>
void ChangeEntryOf(ObjectHandle dict, Atom key, Work&& work) {
  if (!DictIsWidget(dict)) {
    std::forward<Work>(work)();
    return;
  }
  const AnnotHandle annot = Document->AnnotFromDict(dict);
  Document->AnnotWillChange(annot, key);
  const FailureCode failure = CatchFailure(std::forward<Work>(work));
  Document->AnnotDidChange(annot, key, failure);
  if (failure != quillon::kErrorNone) Raise(failure);
}

}  // namespace quillform
