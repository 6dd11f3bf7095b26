#include "quillon/document/permissions.h"

#include "sdk/document_table.h"

namespace quillon::document {

std::uint32_t PermissionsFromP(std::int32_t p, std::int32_t revision) {
  const auto bits = static_cast<std::uint32_t>(p);
  const bool annotate = (bits & 0x20) != 0;
  const bool fill = annotate || (revision >= 3 && (bits & 0x100) != 0);
  std::uint32_t permissions = 0;
  if ((bits & 0x08) != 0) permissions |= kPermitEdit;
  if (annotate) permissions |= kPermitAnnotate;
  if (fill) permissions |= kPermitForms;
  return permissions;
}

}  // namespace quillon::document
