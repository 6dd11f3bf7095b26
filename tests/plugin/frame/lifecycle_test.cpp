#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "plugin/frame/initialise.h"
#include "plugin/frame/shared_ui.h"
#include "plugin/host/form_events.h"
#include "plugin/resources/error_texts.h"
#include "quillon/core/guard.h"
#include "quillon/support/memory.h"
#include "tests/plugin/frame/plug_in_life.h"

namespace quillform {
namespace {

using Lines = std::vector<std::string>;

// Lets the allocation of that number (from 1 up) fail while it lives.
struct FailingAllocation {
  explicit FailingAllocation(int number)
      : previous(quillon::SetMemorySource({&Allocate, &std::free})) {
    untilFailure = number;
  }
  ~FailingAllocation() { quillon::SetMemorySource(previous); }
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;

  static void* Allocate(std::size_t size) {
    return --untilFailure == 0 ? nullptr : std::malloc(size);
  }
  static inline int untilFailure = 0;
  quillon::MemorySource previous;
};

std::size_t LiveFonts() {
#if defined(_WIN32)
  return 0;
#else
  return winlet::LiveGdiObjects() + winlet::LiveDeviceContexts();
#endif
}

void Start(PlugInLife& life) {
  ASSERT_TRUE(life.SetUp());
  ASSERT_TRUE(life.ShakeHands());
  CallLog().clear();
}

TEST(PlugInLifecycle, initialisation_registers_in_its_fixed_order) {
  PlugInLife life;
  Start(life);
  ASSERT_TRUE(life.Initialise());
  EXPECT_EQ(FailedInitStep(), nullptr);
  Lines order;
  std::copy_if(CallLog().begin(), CallLog().end(), std::back_inserter(order),
               [](const std::string& line) { return line != "callback"; });
  EXPECT_EQ(order,
            (Lines{"item QuillForm:About",
                   "notification 27",
                   "notification 25",
                   "notification 10",
                   "notification 15",
                   "notification 29",
                   "item QuillForm:Actions",
                   "action Hide Show/Hide Field",
                   "action SetState Set State",
                   "notification 4",
                   "notification 38",
                   "notification 21",
                   "notification 7",
                   "notification 8",
                   "item Quillform:ImportFDF",
                   "item Quillform:ExportFDF",
                   "table Hopline 1",
                   "action ResetForm Reset Form",
                   "action ImportData Import Form Data",
                   "viewer slot 44",
                   "error text 4 Invalid FDF",
                   "error text 4 Error during export of FDF",
                   "error text 4 Error opening URL to submit this form",
                   "error text 4 The required field, \"%s\", was found empty during export."}));
  EXPECT_NE(ownErrors.invalidFdf, ownErrors.requiredFieldEmpty);
  life.Unload();
}

TEST(PlugInLifecycle, dialog_fonts_are_eight_point_plain_and_bold) {
  PlugInLife life;
  Start(life);
  ASSERT_TRUE(life.Initialise());
  ASSERT_NE(sharedUi, nullptr);
  LOGFONTA plain{};
  LOGFONTA bold{};
  ASSERT_NE(GetObjectA(sharedUi->dialogFont, sizeof plain, &plain), 0);
  ASSERT_NE(GetObjectA(sharedUi->dialogFontBold, sizeof bold, &bold), 0);
  const HDC screen = GetDC(nullptr);
  EXPECT_EQ(plain.lfHeight, -MulDiv(8, GetDeviceCaps(screen, LOGPIXELSY), 72));
  ReleaseDC(nullptr, screen);
  EXPECT_STREQ(plain.lfFaceName, "Arial");
  EXPECT_EQ(plain.lfWeight, 0);
  EXPECT_EQ(bold.lfWeight, 700);
  EXPECT_EQ(bold.lfHeight, plain.lfHeight);
  life.Unload();
}

TEST(PlugInLifecycle, unloading_gives_everything_back) {
  const std::size_t fonts = LiveFonts();
  PlugInLife life;
  const std::size_t blocks = quillon::CountMemory().blocks;
  Start(life);
  ASSERT_TRUE(life.Initialise());
  FormEventRegister(kEventKeystroke, nullptr, nullptr, nullptr);
  life.Unload();
  EXPECT_EQ(quillon::CountMemory().blocks, blocks);
  EXPECT_EQ(LiveFonts(), fonts);
  EXPECT_EQ(FormEventRegister(kEventKeystroke, nullptr, nullptr, nullptr), 0u);
}

TEST(PlugInLifecycle, without_memory_for_the_first_records_initialisation_answers_0) {
  // The first allocation reads the settings, the second is the shared record, the third the array
  // of event lists, then come the lists.
  for (int number = 2; number <= 13; ++number) {
    PlugInLife life;
    const std::size_t blocks = quillon::CountMemory().blocks;
    Start(life);
    {
      FailingAllocation failing(number);
      EXPECT_FALSE(life.Initialise()) << number;
    }
    EXPECT_STREQ(FailedInitStep(),
                 number == 2 ? "shared record of the dialogs" : "form event lists");
    EXPECT_EQ(sharedUi == nullptr, number == 2);
    EXPECT_TRUE(CallLog().empty());
    life.Unload();
    EXPECT_EQ(quillon::CountMemory().blocks, blocks) << number;
  }
}

TEST(PlugInLifecycle, a_later_allocation_that_fails_is_raised_and_unloading_cleans_up) {
  const std::size_t fonts = LiveFonts();
  bool done = false;
  int failures = 0;
  for (int number = 14; !done; ++number) {
    ASSERT_LT(number, 1000);
    PlugInLife life;
    const std::size_t blocks = quillon::CountMemory().blocks;
    Start(life);
    try {
      FailingAllocation failing(number);
      done = life.Initialise() && FailingAllocation::untilFailure > 0;
    } catch (const quillon::HostFailure& failure) {
      EXPECT_EQ(failure.code, quillon::kErrorNoMemory);
      ++failures;
    }
    life.Unload();
    EXPECT_EQ(quillon::CountMemory().blocks, blocks) << number;
    EXPECT_EQ(LiveFonts(), fonts) << number;
  }
  EXPECT_GT(failures, 0);
}

}  // namespace
}  // namespace quillform
