#include "plugin/resources/messages.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "plugin/host/host.h"
#include "plugin/resources/resources.h"
#include "quillon/viewer/messages.h"
#include "quillon/viewer/modal.h"
#include "tests/plugin/frame/plug_in_life.h"
#include "tests/plugin/host/settings_sandbox.h"

namespace quillform {
namespace {

// The plug-in past its setup; the test answers its messages.
struct Messages : testing::Test {
  Messages() {
    ClearSettings();
    EXPECT_TRUE(life.SetUp());
    quillon::SetMessageRoutine([this](const quillon::Message& message) {
      shown = message;
      depth = quillon::ModalDepth();
      return answer;
    });
  }

  PlugInLife life;
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

TEST_F(Messages, give_the_keyboard_back) {
  const HWND window =
      CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
  if (window == nullptr) GTEST_SKIP() << "no desktop to put windows on";
  SetFocus(window);
  ASSERT_EQ(GetFocus(), window);
  quillon::SetMessageRoutine([](const quillon::Message&) -> std::uint32_t {
    SetFocus(nullptr);
    return quillon::kAnswerOk;
  });
  ShowMessage(MB_ICONSTOP, MB_OK, 104);
  EXPECT_EQ(GetFocus(), window);
  DestroyWindow(window);
}

TEST_F(Messages, longer_than_the_formatter_allows_are_cut) {
  ShowMessage(MB_ICONSTOP, MB_OK, 76, std::string(5000, 'x').c_str());
  EXPECT_LE(shown->text.size(), 1024u);
  EXPECT_GE(shown->text.size(), 1023u);
}

TEST_F(Messages, in_a_language_that_the_module_lacks_are_english) {
  StoreSettingText("General", "Language", "DEU");
  EXPECT_EQ(LanguageOffset(), 0u);
  ShowMessage(0, MB_OK, 19);
  EXPECT_EQ(shown->text, "Yes");
}

#if !defined(_WIN32)
TEST_F(Messages, that_the_host_leaves_to_the_plug_in_reach_the_platform) {
  for (const bool known : {true, false}) {
    answer = quillon::kMessageNotAnswered;
    life.viewer.slotCount = known ? quillon::kViewerTableSlots : 59;
    shown.reset();
    testing::internal::CaptureStderr();
    EXPECT_EQ(ShowMessage(MB_ICONSTOP, MB_OK, 104), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Quillon Forms: You must define a name for a field.\n");
    EXPECT_EQ(shown.has_value(), known);
  }
}
#endif

TEST(MessageAnswers, without_a_screen_are_cautious_unless_the_user_agreed) {
  EXPECT_EQ(quillon::CautiousAnswer(MB_YESNO | MB_ICONQUESTION | MB_TASKMODAL), 7u);
  EXPECT_EQ(quillon::AgreeingAnswer(MB_YESNO | MB_ICONQUESTION | MB_TASKMODAL), 6u);
  EXPECT_EQ(quillon::CautiousAnswer(MB_OKCANCEL), 2u);
  EXPECT_EQ(quillon::AgreeingAnswer(MB_RETRYCANCEL), 2u) << "or it would be asked for ever";
  EXPECT_EQ(quillon::CautiousAnswer(MB_OK), 1u);
  PlugInLife life;
  ASSERT_TRUE(life.SetUp());
  EXPECT_EQ(ShowMessage(MB_ICONQUESTION, MB_YESNO, 85, "x"), IDNO) << "nobody listens";
}

}  // namespace
}  // namespace quillform
