// The data of streams: undoing the filters of stored ones, making new ones.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillon/objects/document.h"

namespace quillon::objects {

// All filters undone. `number` is the stream's object number, for errors. Throws HostFailure
// (kErrorBadStream), also for filters that make images (DCTDecode ...).
// *cutOff, which may be null, becomes true when deflated data end too early.
std::string DecodedBytes(Document& doc, std::uint32_t streamCell, std::uint32_t number,
                         bool* cutOff = nullptr);

// The same for what somebody reads: a value, an appearance. Throws also when it is more than
// anybody wrote, and when that happens too often (limits.h).
std::string ReadStream(Document& doc, std::uint32_t streamCell, std::uint32_t number);

// A stream cell with these decoded bytes. `attributes`, a dictionary cell that stands in no
// container, becomes its dictionary: the filters it names are applied, parameters of filters are
// dropped (nothing is written with a predictor), Length is set.
std::uint32_t MakeStreamCell(Document& doc, std::string_view bytes, std::uint32_t attributes);

}  // namespace quillon::objects
