#include "quillon/viewer/start.h"

#include "quillon/core/host.h"
#include "quillon/document/notify.h"
#include "quillon/document/open_document.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/support/operations.h"
#include "quillon/viewer/deliveries.h"
#include "quillon/viewer/menus.h"
#include "quillon/viewer/messages.h"
#include "quillon/viewer/modal.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/platform_operations.h"
#include "quillon/viewer/pointer.h"
#include "quillon/viewer/registrations.h"
#include "quillon/viewer/tools.h"

namespace quillon {
namespace {

void ForgetPlugInThings() {
  viewer::TheRegistrations() = viewer::Registrations{};
  RemoveAllSubscribers();
  ResetMenus();
  ResetModalState();
  ResetPointer();
  ResetTools();
  SetMessageRoutine({});
  ForgetDeliveries();
}

}  // namespace

HostTables& OfferedTables() {
  static HostTables tables;
  return tables;
}

void StartViewer() {
  StartHost();
  ForgetPlugInThings();
  HostTables& tables = OfferedTables();
  support::FillTable(&tables.support);
  objects::FillTable(&tables.objects);
  document::FillTable(&tables.document);
  viewer::FillTable(&tables.viewer);
  platform::FillTable(&tables.platform);
  OfferTable({kSupportTableName, kSupportVersion, &tables.support});
  OfferTable({kObjectsTableName, kObjectsVersion, &tables.objects});
  OfferTable({kDocumentTableName, kDocumentVersion, &tables.document});
  OfferTable({kViewerTableName, kViewerVersion, &tables.viewer});
  OfferTable({kPlatformTableName, kPlatformVersion, &tables.platform});
}

void StopViewer() {
  CloseAllViews();
  StopHost();
  for (const DocHandle doc : OpenDocuments()) CloseDocument(doc);
  CloseAllPdfs();
  ForgetPlugInThings();
}

}  // namespace quillon
