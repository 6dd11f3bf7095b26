// What every plug-in begins with: the entry, the host's tables, and blocks that catch what the host
// raises. Copy it, or start from it; it needs nothing but sdk/.
#pragma once

#include <string>
#include <utility>

#include "sdk/document_table.h"
#include "sdk/entry.h"
#include "sdk/errors.h"
#include "sdk/forms_table.h"
#include "sdk/notifications.h"
#include "sdk/objects_table.h"
#include "sdk/support_table.h"
#include "sdk/viewer_table.h"

// Each module has all of this to itself; otherwise the loader could make one of what several
// modules define under one name.
#if !defined(_WIN32)
#pragma GCC visibility push(hidden)
#endif

// A plug-in defines these three.
extern const char* const kExtensionName;  // no two plug-ins share one
bool Start();                             // every table is there; false: the plug-in cannot work
void Stop();                              // also after a Start that failed

namespace host {

inline quillon::ExtensionId Extension = 0;
inline quillon::CoreTable* Core = nullptr;
inline quillon::SupportTable* Support = nullptr;
inline quillon::ObjectsTable* Objects = nullptr;
inline quillon::DocumentTable* Document = nullptr;
inline quillon::ViewerTable* Viewer = nullptr;
inline quillform::FormsTable* Forms = nullptr;

// What the host hands to a plug-in's own block when something goes wrong inside it.
struct Error {
  quillon::FailureCode code;
};

[[noreturn]] inline void Restore(quillon::GuardFrame* frame) { throw Error{frame->code}; }

// A guarded block for its own lifetime.
struct Block {
  Block() : frame{} { Core->PushFrame(&frame, Restore); }
  ~Block() { Core->PopFrame(); }
  Block(const Block&) = delete;
  Block& operator=(const Block&) = delete;

  quillon::GuardFrame frame;
};

// Runs `work` and answers 0, or the code that the host raised in it. Without a block of its own a
// raise passes through the plug-in, to whoever called it.
template <typename Work>
quillon::FailureCode Try(Work&& work) {
  const Block block;
  try {
    std::forward<Work>(work)();
    return quillon::kErrorNone;
  } catch (const Error& error) {
    return error.code;
  }
}

// Every routine that the host is to call becomes a callback first.
template <typename Routine>
quillon::Callback ToCallback(Routine* routine) {
  return Core->MakeCallback(Extension, reinterpret_cast<quillon::Callback>(routine));
}
template <typename Routine>
Routine* ToHost(Routine* routine) {
  return reinterpret_cast<Routine*>(ToCallback(routine));
}

template <typename Table>
bool Obtain(Table** table, const char* name, std::uint32_t version) {
  *table = static_cast<Table*>(Core->GetTable(Core->AtomFromName(name), version));
  return *table != nullptr;
}

// The text of a value: of strings the bytes in the document's encoding, of names (such as the state
// of a check box) their text. Empty for everything else.
inline std::string TextOf(quillon::ObjectHandle value) {
  switch (Objects->TypeOf(value)) {
    case quillon::ObjectKind::kString: {
      std::uint32_t length = 0;
      const char* bytes = Objects->StringValue(value, &length);
      return std::string(bytes, length);
    }
    case quillon::ObjectKind::kName:
      return Core->NameFromAtom(Objects->NameValue(value));
    default:
      return {};
  }
}

// A new text in a document, which must be put into a container or destroyed.
inline quillon::ObjectHandle NewText(quillon::DocHandle doc, const std::string& bytes) {
  return Objects->NewString(Document->ObjectDocOf(doc), 0, bytes.data(),
                            static_cast<std::uint32_t>(bytes.size()));
}

inline std::string NameOf(quillform::FieldNode node) {
  const char* name = Forms->FieldNodeName(node);
  return name != nullptr ? name : "";
}

namespace life {

inline quillon::Boolean ExportTables() { return 1; }

// Every plug-in has offered its tables by now, so this is where to ask for "Forms".
inline quillon::Boolean ImportTables() {
  return Obtain(&Forms, quillform::kFormsTableName, quillform::kFormsVersion) ? 1 : 0;
}

inline quillon::Boolean Initialise() { return Forms != nullptr && Start() ? 1 : 0; }

inline quillon::Boolean Unload() {
  Stop();
  return 1;
}

inline quillon::Boolean Handshake(std::uint32_t version, quillon::HandshakeRecord* record) {
  if (version != quillon::kHandshakeVersion) return 0;
  record->extensionName = Core->AtomFromName(kExtensionName);
  record->exportTables = ToCallback(&ExportTables);
  record->importTables = ToCallback(&ImportTables);
  record->initialise = ToCallback(&Initialise);
  record->unload = ToCallback(&Unload);
  return 1;
}

inline quillon::Boolean Setup(std::uint32_t version, quillon::SetupRecord* record) {
  if (version != quillon::kSetupVersion) return 0;
  Extension = record->extension;
  Core = record->core;
  const bool complete = Obtain(&Support, quillon::kSupportTableName, quillon::kSupportVersion) &&
                        Obtain(&Objects, quillon::kObjectsTableName, quillon::kObjectsVersion) &&
                        Obtain(&Document, quillon::kDocumentTableName, quillon::kDocumentVersion) &&
                        Obtain(&Viewer, quillon::kViewerTableName, quillon::kViewerVersion);
  record->handshake = ToCallback(&Handshake);
  return complete ? 1 : 0;
}

}  // namespace life
}  // namespace host

#if !defined(_WIN32)
#pragma GCC visibility pop
#endif

// The one routine that the module exports.
QUILLON_PLUGIN_EXPORT quillon::Boolean PlugInMain(std::uint32_t, std::uint32_t* chosenVersion,
                                                  quillon::SetupRoutine* setup,
                                                  const quillon::PlatformData*) {
  *chosenVersion = quillon::kHandshakeVersion;
  *setup = host::life::Setup;
  return 1;
}
