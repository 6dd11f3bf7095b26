#include "plugin/resources/open_file_name.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "plugin/frame/plugin_main.h"
#include "plugin/host/dialog_hooks.h"
#include "quillon/viewer/modal.h"
#include "tests/support/test_host.h"

namespace quillform {
namespace {

struct Asked {
  std::string filter;  // NULs as bars
  DWORD flags;
  std::uint32_t modalDepth;
};
Asked asked;

bool Choose(OPENFILENAMEA* question) {
  const char* end = question->lpstrFilter;
  while (*end != '\0') end += std::strlen(end) + 1;
  asked = {std::string(question->lpstrFilter, end), question->Flags, quillon::ModalDepth()};
  for (char& byte : asked.filter) {
    if (byte == '\0') byte = '|';
  }
  std::strncpy(question->lpstrFile, "/forms/a.pdf", question->nMaxFile);
  return true;
}

struct OpenFileName : testing::Test {
  OpenFileName() : host({&PlugInMain, nullptr, {}}) {}
  ~OpenFileName() override { dialogHooks = {}; }

  bool Ask(bool offerAllFiles) {
    return AskOpenFileName({nullptr, "Choose", nullptr, "Quillon Files", "pdf", offerAllFiles},
                           path, sizeof path);
  }

  quillon::test::TestHost host;
  char path[64] = "before";
};

TEST_F(OpenFileName, asks_for_files_of_the_type_in_the_hosts_modal_state) {
  dialogHooks.AskOpenFile = &Choose;
  EXPECT_TRUE(Ask(false));
  EXPECT_STREQ(path, "/forms/a.pdf");
  EXPECT_EQ(asked.filter, "Quillon Files (*.pdf)|*.pdf|");
  EXPECT_EQ(asked.flags, OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_ENABLEHOOK | OFN_EXPLORER);
  EXPECT_EQ(asked.modalDepth, 1u);
  EXPECT_EQ(quillon::ModalDepth(), 0u);
  EXPECT_TRUE(Ask(true));
  EXPECT_EQ(asked.filter, "Quillon Files (*.pdf)|*.pdf|All Files (*.*)|*.*|");
}

TEST_F(OpenFileName, without_anybody_to_ask_counts_as_cancelled) {
  dialogHooks.AskOpenFile = [](OPENFILENAMEA*) { return false; };
  EXPECT_FALSE(Ask(true));
  EXPECT_STREQ(path, "");
#if !defined(_WIN32)
  // Elsewhere the platform's chooser would wait for somebody.
  dialogHooks = {};
  std::strcpy(path, "before");
  EXPECT_FALSE(Ask(true));
  EXPECT_STREQ(path, "");
#endif
}

}  // namespace
}  // namespace quillform
