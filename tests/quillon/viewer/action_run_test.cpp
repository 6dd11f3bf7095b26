#include "quillon/viewer/action_run.h"

#include <gtest/gtest.h>

#include "quillon/core/operations.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "tests/support/form_pdf.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

std::string performed;

std::string IdOf(ActionHandle action) {
  const ObjectHandle id = objects::DictGet(document::ActionDict(action), core::AtomFromName("Id"));
  return objects::TypeOf(id) == ObjectKind::kString ? objects::StringValue(id, nullptr) : "?";
}

void Perform(ActionHandle action, DocView) { performed += IdOf(action); }
void PerformAndFail(ActionHandle, DocView) { core::Raise(kErrorBadFile); }
void PerformAndClose(ActionHandle, DocView view) {
  performed += "close ";
  viewer::CloseView(view);
}
void PerformAndUnlink(ActionHandle action, DocView) {
  performed += "unlink ";
  objects::DictRemove(document::ActionDict(action), core::AtomFromName("Next"));
}

struct ActionRunTest : testing::Test {
  ActionRunTest() {
    performed.clear();
    const std::pair<const char*, void (*)(ActionHandle, DocView)> handlers[] = {
        {"Do", Perform},
        {"Fail", PerformAndFail},
        {"Close", PerformAndClose},
        {"Unlink", PerformAndUnlink}};
    std::size_t i = 0;
    for (const auto& [type, perform] : handlers) {
      records[i] = {};
      records[i].size = sizeof records[i];
      records[i].perform = perform;
      viewer::RegisterActionHandler(1, core::AtomFromName(type), &records[i++], type);
    }
  }

  ActionHandle Open(const std::vector<std::string>& actions) {
    const DocHandle doc = test::OpenTestDocument(test::FormPdf({}, {.objects = actions}));
    view = OpenViewOfDocument(doc);
    return document::ActionFromObject(
        ObjectByNumber(document::ObjectDocOf(doc), test::kFirstField));
  }
  // What is performed from object 10 on.
  std::string Performed(const std::vector<std::string>& actions) {
    performed.clear();
    const ActionHandle action = Open(actions);
    RunActions(action, view);
    return performed;
  }

  test::TestHost host;
  ActionHandlerRecord records[4];
  DocView view = nullptr;
};

TEST_F(ActionRunTest, FollowsNextDepthFirstAndReadsItWhenItsTurnComes) {
  EXPECT_EQ(Performed({"<< /S /Do /Id (a) /Next [ << /S /Do /Id (b) /Next << /S /Do /Id (c) >> >>"
                       " (none) << /S /Do /Id (d) >> ] >>"}),
            "abcd");
  EXPECT_EQ(Performed({"<< /S /Unlink /Next << /S /Do /Id (b) >> >>"}), "unlink ");
}

TEST_F(ActionRunTest, CirclesAndEndlessChainsEnd) {
  EXPECT_EQ(Performed({"<< /S /Do /Id (a) /Next [ 11 0 R 10 0 R 11 0 R ] >>",
                       "<< /S /Do /Id (b) /Next 10 0 R >>"}),
            "ab");
  std::vector<std::string> many;
  for (int i = 0; i < 1100; ++i) {
    many.push_back("<< /S /Do /Id (x) /Next " + test::Ref(test::kFirstField + 1 + i) + " >>");
  }
  EXPECT_EQ(Performed(many).size(), kMostActions);
}

TEST_F(ActionRunTest, AFailureEndsTheChainAndReachesTheCaller) {
  const ActionHandle action =
      Open({"<< /S /Do /Id (a) /Next << /S /Fail /Next << /S /Do /Id (b) >> >> >>"});
  EXPECT_EQ(test::RaisedBy([&] { viewer::PerformAction(action, view); }), kErrorBadFile);
  EXPECT_EQ(performed, "a");
}

TEST_F(ActionRunTest, NothingIsPerformedInADocumentThatAnActionClosed) {
  EXPECT_EQ(Performed({"<< /S /Close /Next [ << /S /Do /Id (a) >> << /S /Do /Id (b) >> ] >>"}),
            "close ");
}

}  // namespace
}  // namespace quillon
