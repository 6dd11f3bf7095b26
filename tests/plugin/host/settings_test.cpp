#include "plugin/host/settings.h"

#include <gtest/gtest.h>

#include <string>

#include "plugin/frame/plugin_main.h"
#include "tests/plugin/host/settings_sandbox.h"
#include "tests/support/test_host.h"

namespace quillform {
namespace {

struct Settings : testing::Test {
  Settings() : host({&PlugInMain}) { ClearSettings(); }

  quillon::test::TestHost host;
};

constexpr const char* kSection = "Field Things";

TEST_F(Settings, are_texts_of_subkeys_in_the_documented_place) {
  StoreSettingText(kSection, "URL-0", "http://a.example/b, c");
  const SettingsSection section(kSection);
  char url[10];
  ASSERT_TRUE(SettingsRead(section.store, "URL", 0, "s", {SettingText{url, sizeof url}}));
  EXPECT_STREQ(url, "http://a.");
  SettingsWrite(section.store, "Border", kNotIndexed, "df", {std::int16_t{-20}, 0.25f});
  std::int16_t width = 0;
  float part = 0;
  ASSERT_TRUE(SettingsRead(section.store, "BORDER", kNotIndexed, "df", {&width, &part}));
  EXPECT_EQ(width, -20);
  EXPECT_EQ(part, 0.25f);
}

TEST_F(Settings, that_are_missing_or_empty_or_too_long_leave_the_targets_alone) {
  StoreSettingText(kSection, "Empty", "");
  StoreSettingText(kSection, "Long", std::string(256, '7'));
  StoreSettingText(kSection, "Fits", std::string(255, '7'));
  const SettingsSection section(kSection);
  std::int32_t number = 5;
  EXPECT_FALSE(SettingsRead(section.store, "Missing", kNotIndexed, "l", {&number}));
  EXPECT_FALSE(SettingsRead(section.store, "Empty", kNotIndexed, "l", {&number}));
  EXPECT_FALSE(SettingsRead(section.store, "Long", kNotIndexed, "l", {&number}));
  EXPECT_EQ(number, 5);
  EXPECT_TRUE(SettingsRead(section.store, "Fits", kNotIndexed, "l", {&number}));
  EXPECT_EQ(number, 2147483647);
}

TEST_F(Settings, of_the_start_have_the_defaults_of_nobody_asked) {
  EXPECT_FALSE(ReadDebugSetting());
  char code[kLanguageCodeSize] = "FRA";
  ReadLanguageSetting(code);
  EXPECT_STREQ(code, "FRA");
  StoreSettingText("General", "Debug", "N");
  EXPECT_FALSE(ReadDebugSetting());
  StoreSettingText("General", "Debug", "Y");
  StoreSettingText("General", "Language", "DEUTSCH");
  EXPECT_TRUE(ReadDebugSetting());
  ReadLanguageSetting(code);
  EXPECT_STREQ(code, "DEU");
}

TEST(SettingText, items_are_parted_by_blanks_and_commas) {
  std::uint16_t flag = 7;
  std::int16_t red = 0;
  std::int32_t green = 0;
  float blue = 0;
  ReadSettingText(" Yes,, 255 ,+70000 0.25", "bdlf", {&flag, &red, &green, &blue});
  EXPECT_EQ(flag, 1);
  EXPECT_EQ(red, 255);
  EXPECT_EQ(green, 70000);
  EXPECT_EQ(blue, 0.25f);
  ReadSettingText("y 65535", "bdlf", {&flag, &red, &green, &blue});
  EXPECT_EQ(flag, 0);
  EXPECT_EQ(red, -1) << "the lower 16 bits";
  EXPECT_EQ(green, 0) << "missing";
  EXPECT_EQ(MakeSettingText("bdl", {std::uint16_t{2}, red, std::int32_t{-1}}), "Y -1 -1");
}

TEST(SettingText, a_text_is_all_the_rest) {
  char text[64];
  ReadSettingText(" , a b", "s", {SettingText{text, sizeof text}});
  EXPECT_STREQ(text, " , a b");
  Fixed size = 0;
  ReadSettingText("12.0000 Helvetica Bold", "xs", {&size, SettingText{text, 8}});
  EXPECT_EQ(size, 12 * quillon::kFixedOne);
  EXPECT_STREQ(text, "Helveti");
}

}  // namespace
}  // namespace quillform
