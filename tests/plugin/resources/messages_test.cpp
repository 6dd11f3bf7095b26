#include "plugin/resources/messages.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "plugin/frame/plugin_main.h"
#include "plugin/host/host.h"
#include "plugin/resources/resources.h"
#include "quillon/viewer/messages.h"
#include "quillon/viewer/modal.h"
#include "tests/plugin/host/settings_sandbox.h"
#include "tests/support/test_host.h"

namespace quillform {
namespace {

// The test answers the plug-in's messages.
struct Messages : testing::Test {
  Messages() : host({&PlugInMain}) {
    ClearSettings();
    quillon::SetMessageRoutine([this](const quillon::Message& message) {
      shown = message;
      depth = quillon::ModalDepth();
      return answer;
    });
  }

  quillon::test::TestHost host;
  std::optional<quillon::Message> shown;
  std::uint32_t depth = 0;
  std::uint32_t answer = quillon::kAnswerOk;
};

TEST_F(Messages, bear_the_formatted_string_and_the_plug_ins_name) {
  answer = quillon::kAnswerYes;
  EXPECT_EQ(ShowMessage(MB_ICONEXCLAMATION, MB_YESNO, 85, "caf\xe9.fdf"), IDYES);
  ASSERT_TRUE(shown);
  EXPECT_EQ(shown->text, "FDF \"caf\u00e9.fdf\" was not found. Would you like to browse for it?");
  EXPECT_EQ(shown->caption, "Quillon Forms");
  EXPECT_EQ(shown->flags, 0x2034u);
  ShowMessage(MB_ICONSTOP, MB_OK, 22, std::int32_t{3}, std::int32_t{-4});
  EXPECT_EQ(shown->text, "3 out of -4");
}

TEST_F(Messages, are_modal_and_leave_nothing_modal) {
  EXPECT_EQ(ShowMessage(MB_ICONSTOP, MB_OK, 104), IDOK);
  EXPECT_EQ(depth, 1u);
  EXPECT_EQ(quillon::ModalDepth(), 0u);

  quillon::SetMessageRoutine([](const quillon::Message&) -> std::uint32_t {
    quillon::Fail(quillon::kErrorGeneral, "no answer");
  });
  EXPECT_EQ(CatchFailure([] { ShowMessage(MB_ICONSTOP, MB_OK, 104); }), quillon::kErrorGeneral);
  EXPECT_EQ(quillon::ModalDepth(), 0u);
}

TEST_F(Messages, longer_than_the_formatter_allows_are_cut) {
  ShowMessage(MB_ICONSTOP, MB_OK, 76, std::string(5000, 'x').c_str());
  EXPECT_LE(shown->text.size(), 1024u);
  EXPECT_GE(shown->text.size(), 1023u);
}

#if !defined(_WIN32)
TEST_F(Messages, that_the_host_leaves_to_the_plug_in_reach_the_platform) {
  for (const bool known : {true, false}) {
    answer = quillon::kMessageNotAnswered;
    Viewer->slotCount = known ? quillon::kViewerTableSlots : 59;
    shown.reset();
    testing::internal::CaptureStderr();
    EXPECT_EQ(ShowMessage(MB_ICONSTOP, MB_OK, 104), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Quillon Forms: You must define a name for a field.\n");
    EXPECT_EQ(shown.has_value(), known);
  }
}
#endif

}  // namespace
}  // namespace quillform
