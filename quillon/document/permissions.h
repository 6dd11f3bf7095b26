// Which operations a document allows.
#pragma once

#include <cstdint>

namespace quillon::document {

// Every bit of the word, for a document that restricts nothing.
inline constexpr std::uint32_t kPermitEverything = 0xFFFFFFFF;

// Document.GetPermissions' word from the P and R of an encryption dictionary (ISO 32000-1, Table
// 22). Bit 4 (0x8) allows changing the contents, bit 6 (0x20) annotating and filling in, bit 9
// (0x100) filling in only; bit 9 has its meaning from revision 3 on.
std::uint32_t PermissionsFromP(std::int32_t p, std::int32_t revision);

}  // namespace quillon::document
