#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include "quillon/core/host.h"
#include "quillon/document/open_document.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/support/files.h"
#include "quillon/support/stream.h"
#include "quillon/viewer/start.h"

namespace quillon::test {
RunningViewer::RunningViewer() { StartViewer(); }

RunningViewer::~RunningViewer() {
  StopViewer();
  EXPECT_EQ(OpenPdfCount(), 0U) << "a document survived the viewer";
  EXPECT_EQ(LiveStreamCount(), 0U) << "a stream was not closed";
  EXPECT_EQ(LiveFileCount(), 0U) << "a file was not closed";
}

TestHost::TestHost(const TestHostParts& parts) {
  if (parts.plugIn == nullptr) return;
  AttachPlugIn(parts.plugIn, nullptr);
  InitialisePlugIns();
}

TestHost::~TestHost() {
  EXPECT_EQ(OpenFrameCount(), 0U) << "a guarded block was left open";
  EXPECT_EQ(AcquiredPageCount(), 0U) << "a page was not released";
  EXPECT_EQ(OpenPdfCount(), OpenDocuments().size()) << "an object-layer document was left open";
}

DocHandle OpenTestDocument(std::string pdfBytes) { return OpenDocumentBytes(std::move(pdfBytes)); }

}  // namespace quillon::test
