// The notifications of the viewer, each with its own arguments. sdk/notifications.h tells when they
// are sent; document/notify.h has those of documents, and the registry.
#pragma once

#include "quillon/document/notify.h"

namespace quillon {

inline void SendDocOpened(DocView view, FailureCode error) {
  SendNote<DocNote>(kNoteDocOpened, view, error);
}

inline void SendViewClosing(DocView view) { SendNote<ViewNote>(kNoteViewClosing, view); }

// The handle is only an identity by now.
inline void SendDocClosed(DocHandle doc) { SendNote<ClosedNote>(kNoteDocClosed, doc); }

// `number` is kNoteScrolled, kNotePageChanged or kNoteViewChanged; `changes` are ViewChange bits.
inline void SendPageViewNote(Notification number, PageView view, std::uint32_t changes) {
  SendNote<PageViewNote>(number, view, changes);
}

}  // namespace quillon
