// The host's notifications: number, when it is sent, and the routine's signature. They are sent to
// the registered routines in the order of registration; what a routine raises is reported and
// dropped, and the others are still called.
#pragma once

#include "types.h"

namespace quillon {

enum Notification : std::uint32_t {
  kNoteDocOpened = 4,           // DocNote: after a document was opened in a view
  kNoteScrolled = 5,            // PageViewNote
  kNotePageChanged = 6,         // PageViewNote
  kNoteViewClosing = 7,         // ViewNote: before a view closes, everything is still there
  kNoteDocClosed = 8,           // ClosedNote: the document is gone, the handle is only an identity
  kNoteViewChanged = 14,        // PageViewNote
  kNotePagesInserted = 0x10,    // PagesInsertedNote
  kNotePagesWillDelete = 0x15,  // PagesNote
  kNotePermissionsChanged = 0x21,  // ClosedNote
  kNoteAnnotWillRemove = 0x25,     // AnnotNote: key and error are not set
  kNoteAnnotWillChange = 0x26,     // AnnotNote: error is not set
  kNoteAnnotAdded = 0x27,          // AnnotNote: key and error are not set
  kNoteAnnotChanged = 0x29,        // AnnotNote
  kNoteDocChanged = 0x38,          // DocChangedNote: see DocChange
};

// Flags of kNoteDocChanged. It is sent before a document's objects are replaced as a whole (a
// reload, a conversion) and before its form stops being live.
enum DocChange : std::uint32_t {
  kDocChangeObjects = 0x04,  // every object handle of the document becomes invalid
};

using DocNote = void (*)(DocView view, FailureCode error, void* clientData);
using ViewNote = void (*)(DocView view, void* clientData);
using ClosedNote = void (*)(DocHandle doc, void* clientData);
using PageViewNote = void (*)(PageView view, std::uint32_t changes, void* clientData);
// `after`: the page (counted from 0) after which they came, -1 for the front.
using PagesInsertedNote = void (*)(DocHandle doc, std::int32_t after, std::uint32_t count,
                                   FailureCode error, void* clientData);
using PagesNote = void (*)(DocHandle doc, std::uint32_t first, std::uint32_t last,
                           void* clientData);
using AnnotNote = void (*)(AnnotHandle annot, std::int32_t page, Atom key, FailureCode error,
                           void* clientData);
using DocChangedNote = void (*)(DocHandle doc, std::uint32_t flags, void* clientData);

}  // namespace quillon
