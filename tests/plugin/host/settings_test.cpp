#include "plugin/host/settings.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/plugin/frame/plug_in_life.h"
#include "tests/plugin/host/settings_sandbox.h"

namespace quillform {
namespace {

// The plug-in past its setup, without settings.
struct Settings : testing::Test {
  Settings() {
    ClearSettings();
    EXPECT_TRUE(life.SetUp());
  }

  PlugInLife life;
};

constexpr const char* kSection = "Field Things";

TEST_F(Settings, are_texts_of_subkeys_in_the_documented_place) {
  const SettingsSection section(kSection);
  SettingsWrite(section.store, "Border", kNotIndexed, "dd", {std::int16_t{3}, std::int16_t{-20}});
  SettingsWrite(section.store, "URL", 0, "s", {"http://a.example/b, c"});
  EXPECT_EQ(StoredSettingText(kSection, "Border"), "3 -20");
  EXPECT_EQ(StoredSettingText(kSection, "URL-0"), "http://a.example/b, c");

  char url[10];
  ASSERT_TRUE(SettingsRead(section.store, "URL", 0, "s", {SettingText{url, sizeof url}}));
  EXPECT_STREQ(url, "http://a.");
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

TEST_F(Settings, of_another_section_are_others) {
  SettingsStore* store = SettingsOpen();
  ASSERT_NE(store, nullptr);
  std::int32_t number = 0;
  SettingsWrite(store, "Number", kNotIndexed, "l", {std::int32_t{1}});
  EXPECT_FALSE(SettingsRead(store, "Number", kNotIndexed, "l", {&number})) << "no section yet";

  SettingsSelectSection(store, "One");
  SettingsWrite(store, "Number", kNotIndexed, "l", {std::int32_t{-70000}});
  SettingsSelectSection(store, "Two");
  EXPECT_FALSE(SettingsRead(store, "Number", kNotIndexed, "l", {&number}));
  SettingsSelectSection(store, "one");
  EXPECT_TRUE(SettingsRead(store, "NUMBER", kNotIndexed, "l", {&number})) << "case plays no part";
  EXPECT_EQ(number, -70000);
  SettingsClose(store);
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

std::string FixedText(Fixed number) { return MakeSettingText("x", {number}); }

Fixed FixedFrom(const char* text) {
  Fixed number = -1;
  ReadSettingText(text, "x", {&number});
  return number;
}

TEST(SettingText, numbers_have_four_decimals) {
  EXPECT_EQ(FixedText(0x00018000), "1.5000");
  EXPECT_EQ(FixedText(-0x8000), "-0.5000");
  EXPECT_EQ(FixedText(0x7FFFFFFF), "32768.0000");
  EXPECT_EQ(MakeSettingText("f", {0.00123f}), "0.0012");
  EXPECT_EQ(FixedFrom("1.5"), 0x00018000);
  EXPECT_EQ(FixedFrom("-2"), -131071) << "half a step is added, then the fraction is cut off";
  EXPECT_EQ(FixedFrom("1e300"), 0x7FFFFFFF);
  EXPECT_EQ(FixedFrom("nan"), 0);
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

TEST_F(Settings, targets_that_do_not_fit_the_format_are_refused) {
  const auto code = [](auto work) { return CatchFailure(work); };
  float wrong = 0;
  EXPECT_EQ(code([&] { ReadSettingText("5", "l", {&wrong}); }), quillon::kErrorBadParameter);
  EXPECT_EQ(code([&] { MakeSettingText("ll", {std::int32_t{1}}); }), quillon::kErrorBadParameter);
}

}  // namespace
}  // namespace quillform
