// The host's error codes. Codes of an operation's family share their upper half: 0x2002 the object
// layer, 0x4003 documents, 0x400a files, 0x4000 general. Codes that plug-ins register at run time
// (Support.RegisterErrorString) start at kErrorFirstRegistered.
#pragma once

#include "types.h"

namespace quillon {

inline constexpr FailureCode kErrorNone = 0;
inline constexpr FailureCode kErrorNoMemory = 2;
inline constexpr FailureCode kErrorGeneral = 0x40000002;       // the operation could not be done
inline constexpr FailureCode kErrorBadParameter = 0x40000003;  // an argument does not fit
inline constexpr FailureCode kErrorNotOffered = 0x40000004;    // this host does not offer that yet
inline constexpr FailureCode kErrorTooManyNames = 0x40000005;  // more distinct names than atoms
inline constexpr FailureCode kErrorBadHeader = 0x20020001;     // not the kind of file expected
inline constexpr FailureCode kErrorBadObject = 0x20020003;     // an object is not what it must be
inline constexpr FailureCode kErrorBadFile = 0x20020004;       // a file's structure cannot be read
inline constexpr FailureCode kErrorFieldExists = 0x20020012;   // a field of that name is in the way
inline constexpr FailureCode kErrorBadStructure = 0x20020017;  // an entry that must be there is not
inline constexpr FailureCode kErrorBadStream = 0x20020018;     // a stream cannot be decoded
inline constexpr FailureCode kErrorOpenDocument = 0x4003000c;  // a document cannot be opened
inline constexpr FailureCode kErrorPassword = 0x4003000d;      // a password is needed or is wrong
inline constexpr FailureCode kErrorEncoding = 0x4003000e;  // a text cannot be held by the encoding
inline constexpr FailureCode kErrorOpenFile = 0x400a0012;  // a file cannot be opened
inline constexpr FailureCode kErrorReadFile = 0x400a0013;
inline constexpr FailureCode kErrorWriteFile = 0x400a0014;
inline constexpr FailureCode kErrorFirstRegistered = 0x50000000;

}  // namespace quillon
