// Annotation handles and the dictionaries that they wrap.
#pragma once

#include <utility>

#include "quillon/core/failure.h"
#include "quillon/document/operations.h"

namespace quillon::document {

// Annotation flags that only the viewer looks at (ISO 32000-1, Table 165).
inline constexpr std::uint32_t kAnnotNoRotate = 0x10;
inline constexpr std::uint32_t kAnnotNoView = 0x20;

inline ObjectHandle DictOf(AnnotHandle annot) { return {annot.first, annot.second}; }
inline AnnotHandle AnnotOf(ObjectHandle dict) { return {dict.first, dict.second}; }

// Makes a change between AnnotWillChange and AnnotDidChange; a failure is announced and goes on.
template <typename Change>
void ChangeAnnot(AnnotHandle annot, Atom key, Change&& change) {
  AnnotWillChange(annot, key);
  try {
    std::forward<Change>(change)();
  } catch (const HostFailure& failure) {
    AnnotDidChange(annot, key, failure.code);
    throw;
  }
  AnnotDidChange(annot, key, kErrorNone);
}

}  // namespace quillon::document
