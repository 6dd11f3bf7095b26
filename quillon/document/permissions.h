// Which operations a document allows.
#pragma once

#include <cstdint>

namespace quillon::document {

// Every bit of the word, for a document that restricts nothing: one that is not encrypted, and one
// that was opened with its owner's password.
inline constexpr std::uint32_t kPermitEverything = 0xFFFFFFFF;

// Document.GetPermissions' word from the P and R of an encryption dictionary (ISO 32000-1, table
// 22):
//
//   P                          word             what it takes
//   bit 4  (0x008)             kPermitEdit      changing the contents, and so filling in, too
//   bit 6  (0x020)             kPermitAnnotate  adding annotations; filling in comes with it
//                              kPermitForms
//   bit 9  (0x100), R >= 3     kPermitForms     filling in existing fields, even where bits 4 and
//                                               6 are clear
//
// A form can be filled when the word has kPermitForms or kPermitEdit. Bit 9 has no meaning before
// revision 3. Bits for printing, extracting and assembling restrict nothing that is done here.
std::uint32_t PermissionsFromP(std::int32_t p, std::int32_t revision);

}  // namespace quillon::document
