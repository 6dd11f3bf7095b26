#include <gtest/gtest.h>

#include <string>

#include "winlet/winlet.h"

namespace {

constexpr int kRawData = 10;

std::string RawData(LPCSTR name) {
  const HRSRC found = FindResourceA(nullptr, name, MAKEINTRESOURCEA(kRawData));
  if (found == nullptr) return "none";
  const HGLOBAL loaded = LoadResource(nullptr, found);
  return {static_cast<const char*>(LockResource(loaded)), SizeofResource(nullptr, found)};
}

std::string LoadedString(UINT id, int size = 64) {
  char text[64] = "untouched";
  const int length = LoadStringA(nullptr, id, text, size);
  return std::string(text) + "/" + std::to_string(length);
}

TEST(ModuleResources, raw_data_is_found_by_text_and_by_number) {
  EXPECT_EQ(RawData("Sample"), std::string("\x02\x01\xFF\xFF") + "ab");
  EXPECT_EQ(RawData(MAKEINTRESOURCEA(5)), "five");
  EXPECT_EQ(RawData("#5"), "five");
  EXPECT_EQ(RawData("Missing"), "none");
  EXPECT_EQ(SizeofResource(nullptr, nullptr), 0u);
}

TEST(ModuleResources, strings_are_loaded_across_blocks_in_the_single_byte_encoding) {
  EXPECT_EQ(LoadedString(1), "one/3");
  EXPECT_EQ(LoadedString(15), "fifteen/7");
  EXPECT_EQ(LoadedString(16), "sixteen/7");
  EXPECT_EQ(LoadedString(300), "caf\xE9 \x80 ?/8");
  EXPECT_EQ(LoadedString(2), "/0");
  EXPECT_EQ(LoadedString(5000), "/0");
  EXPECT_EQ(LoadedString(15, 4), "fif/3");
  EXPECT_EQ(LoadedString(15, 1), "/0");
  EXPECT_EQ(LoadedString(15, 0), "untouched/0");
}

}  // namespace
