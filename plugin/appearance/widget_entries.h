// Changing one entry of a widget, its field or its MK dictionary, with the announcements and the
// bookkeeping that every such change needs.
#pragma once

#include <string>
#include <utility>

#include "plugin/model/field_node.h"

namespace quillform {

// Runs `work`, which changes the annotation, between the two announcements. What it raises is
// announced with its code and raised again.
template <typename Work>
void ChangeAnnot(AnnotHandle annot, Atom key, Work&& work) {
  Document->AnnotWillChange(annot, key);
  const FailureCode code = CatchFailure(std::forward<Work>(work));
  Document->AnnotDidChange(annot, key, code);
  if (code != quillon::kErrorNone) Raise(code);
}

// Puts (or, for the null object, removes) an entry of the node's own dictionary and reads the
// node's own-entry mask anew. A direct value is taken over.
void PutNodeEntry(FieldNode node, Atom key, ObjectHandle value);

// An integer that a field inherits, such as MaxLen; 0 when there is none.
std::int32_t InheritedCount(FieldNode node, Atom key);
// Gives the field that number: nothing is written for a negative one or for the one it inherits
// already; 0 is written only where it hides an ancestor's. Marks the appearance out of date.
void PutInheritedCount(FieldNode node, Atom key, std::int32_t count);

// Entries of the widget's MK dictionary, which is made for the first entry. Each is compared with
// what is there, and the widget is marked for a new appearance when it changed. Empty text, 0 and
// the null object remove the entry.
void PutMKText(AnnotHandle annot, Atom key, const std::string& hostText);
void PutMKInteger(AnnotHandle annot, Atom key, std::int32_t value);
void PutMKObject(AnnotHandle annot, Atom key, ObjectHandle value);
// Without comparison.
void PutMKEntry(AnnotHandle annot, Atom key, ObjectHandle value);

// The document of a widget, in both layers.
ObjectDoc ObjectDocOfAnnot(AnnotHandle annot);
DocHandle DocOfAnnot(AnnotHandle annot);

// Text between the document's encoding and the host's. Both forms of a text string are read.
std::string HostTextOf(const std::string& documentText);
std::string DocumentTextOf(const std::string& hostText);

}  // namespace quillform
