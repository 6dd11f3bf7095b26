// `Core`: names, callbacks, tables and guarded blocks. It comes with the setup record; the other
// tables are asked for through it.
#pragma once

#include "table_macros.h"
#include "types.h"

namespace quillon {

// One open guarded block. The caller provides the memory, which must stay valid and unmoved until
// the block is closed; the host fills it.
struct GuardFrame;
using RestoreRoutine = void (*)(GuardFrame* frame);

struct GuardFrame {
  GuardFrame* outer;       // the next open block outwards, null for the outermost
  RestoreRoutine restore;  // leaves the block after a raise; never returns
  FailureCode code;        // the code that ended the block, 0 while it runs
};

// AtomFromName: the same atom for the same text, a new one for a new text. Raises
//   kErrorTooManyNames when the 65,534 atoms are used up; kErrorBadParameter for null.
// NameFromAtom: the text, owned by the host, valid for the life of the process; null for kNoAtom
//   or an atom never given out. Never raises.
// MakeCallback: a routine that the host (and other plug-ins) may call, made from one of the
//   caller's. It lives until FreeCallback. Null in gives null out.
// FreeCallback: forgets a callback; nobody may call it afterwards.
// GetTable: the table of that name at that version, or null when it is not offered at it. Tables
//   that other plug-ins provide are made by their providers at this call. Asking for a host table
//   at a version up to the offered one gives it.
// PushFrame: opens a guarded block. A later Raise stores its code in the frame and calls the
//   restore routine, which must not return. Never raises.
// PopFrame: closes the innermost block: on the normal path and first thing in the handler.
// ErrorCode: the code of the latest raise. Never raises.
// Raise: unwinds to the innermost open block. Does not return. Without an open block the host
//   reports the code and ends the process.
#define QUILLON_CORE_TABLE(X)                                             \
  X(1, Atom, AtomFromName, (const char* text))                            \
  X(2, const char*, NameFromAtom, (Atom atom))                            \
  X(3, Callback, MakeCallback, (ExtensionId extension, Callback routine)) \
  X(4, void, FreeCallback, (Callback callback))                           \
  X(5, void*, GetTable, (Atom name, std::uint32_t version))               \
  X(6, void, PushFrame, (GuardFrame * frame, RestoreRoutine restore))     \
  X(7, void, PopFrame, ())                                                \
  X(8, FailureCode, ErrorCode, ())                                        \
  X(9, void, Raise, (FailureCode code))

QUILLON_DECLARE_TABLE(CoreTable, QUILLON_CORE_TABLE)

}  // namespace quillon
