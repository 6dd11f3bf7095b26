#include <gtest/gtest.h>

#include "plugin/frame/plugin_main.h"
#include "plugin/host/form_events.h"
#include "plugin/host/win32.h"
#include "quillon/support/memory.h"
#include "tests/support/test_host.h"

namespace quillform {
namespace {

std::size_t LiveFonts() {
#if defined(_WIN32)
  return 0;
#else
  return winlet::LiveGdiObjects() + winlet::LiveDeviceContexts();
#endif
}

TEST(PlugInLifecycle, unloading_gives_everything_back) {
  const std::size_t fonts = LiveFonts();
  const std::size_t blocks = quillon::CountMemory().blocks;
  {
    const quillon::test::TestHost host({&PlugInMain});
    EXPECT_NE(FormEventRegister(kEventKeystroke, nullptr, nullptr, nullptr), 0u);
    EXPECT_GT(quillon::CountMemory().blocks, blocks);
  }
  EXPECT_EQ(quillon::CountMemory().blocks, blocks);
  EXPECT_EQ(LiveFonts(), fonts);
  EXPECT_EQ(FormEventRegister(kEventKeystroke, nullptr, nullptr, nullptr), 0u);
}

}  // namespace
}  // namespace quillform
