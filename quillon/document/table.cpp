#include "quillon/document/operations.h"

namespace quillon::document {

void FillTable(DocumentTable* table) {
  table->slotCount = kDocumentTableSlots;
#define QUILLON_DOCUMENT_SLOT(slot, Return, Name, Params) \
  table->Name = SlotOf<&quillon::document::Name>;
  QUILLON_DOCUMENT_TABLE(QUILLON_DOCUMENT_SLOT)
#undef QUILLON_DOCUMENT_SLOT
}

}  // namespace quillon::document
