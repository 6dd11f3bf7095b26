#include "plugin/resources/resources.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>

#include "plugin/resources/language.h"
#include "tests/plugin/frame/plug_in_life.h"

namespace quillform {
namespace {

constexpr std::size_t kHeaderSize = 104;

struct ExpectedMetrics {
  const char* name;
  std::size_t size;
  std::uint16_t flags;
  std::int16_t boxTop;
  std::int16_t ascender;
  std::int16_t angle;
  std::uint16_t first;
  std::uint16_t count;
};

constexpr std::size_t kLatinSize = 1316;
constexpr ExpectedMetrics kExpected[] = {
    {"Times-Roman", kLatinSize, 0x32, 898, 683, 0, 32, 303},
    {"Times-Bold", kLatinSize, 0x32, 935, 676, 0, 32, 303},
    {"Times-Italic", kLatinSize, 0x72, 883, 683, -15, 32, 303},
    {"Times-BoldItalic", kLatinSize, 0x72, 921, 699, -15, 32, 303},
    {"Helvetica", kLatinSize, 0x30, 931, 718, 0, 32, 303},
    {"Helvetica-Bold", kLatinSize, 0x30, 962, 718, 0, 32, 303},
    {"Helvetica-Oblique", kLatinSize, 0x70, 931, 718, -12, 32, 303},
    {"Helvetica-BoldOblique", kLatinSize, 0x70, 962, 718, -12, 32, 303},
    {"Courier", 108, 0x33, 805, 629, 0, 0, 1},
    {"Courier-Bold", 108, 0x33, 801, 626, 0, 0, 1},
    {"Courier-Oblique", 108, 0x73, 805, 629, -12, 0, 1},
    {"Courier-BoldOblique", 108, 0x73, 801, 626, -12, 0, 1},
    {"Symbol", 1004, 0x14, 1010, 0, 0, 32, 225},
    {"ZapfDingbats", 2324, 0x14, 820, 0, 0, 32, 238},
};

std::int16_t WordAt(const ResourceBytes& bytes, std::size_t offset) {
  return static_cast<std::int16_t>(bytes.data[offset] | bytes.data[offset + 1] << 8);
}

// Widths by code, read entry after entry.
std::map<int, int> WidthsOf(const char* name) {
  const ResourceBytes bytes = FindDataResource(name);
  std::map<int, int> widths;
  std::size_t at = kHeaderSize;
  const int first = WordAt(bytes, 98);
  for (int entry = 0; entry < WordAt(bytes, 100); ++entry) {
    if (at + 4 > bytes.size) return {};
    widths[first + entry] = WordAt(bytes, at + 2);
    at += 4;
    if (WordAt(bytes, 102) != 0) {
      at += 2 + static_cast<std::size_t>((WordAt(bytes, at) + 1) / 2 * 2);
    }
  }
  EXPECT_EQ(at, bytes.size) << name;
  return widths;
}

TEST(MetricResources, have_their_sizes_and_headers) {
  for (const ExpectedMetrics& font : kExpected) {
    const ResourceBytes bytes = FindDataResource(font.name);
    ASSERT_NE(bytes.data, nullptr) << font.name;
    ASSERT_EQ(bytes.size, font.size) << font.name;
    EXPECT_STREQ(reinterpret_cast<const char*>(bytes.data), font.name);
    EXPECT_EQ(WordAt(bytes, 64), font.flags) << font.name;
    EXPECT_EQ(WordAt(bytes, 70), font.boxTop) << font.name;
    EXPECT_EQ(WordAt(bytes, 86), font.ascender) << font.name;
    EXPECT_EQ(WordAt(bytes, 96), font.angle) << font.name;
    EXPECT_EQ(WordAt(bytes, 98), font.first) << font.name;
    EXPECT_EQ(WordAt(bytes, 100), font.count) << font.name;
    for (const std::size_t zero : {66, 76, 90, 92, 94}) EXPECT_EQ(WordAt(bytes, zero), 0);
  }
  EXPECT_EQ(FindDataResource("Arial").data, nullptr);
}

TEST(MetricResources, hold_the_published_widths) {
  struct Sample {
    const char* font;
    int code;
    int width;
  };
  constexpr Sample kSamples[] = {
      {"Helvetica", ' ', 278},
      {"Helvetica", 'A', 667},
      {"Helvetica", 0x27, 222},
      {"Helvetica", 0xE9, 778},
      {"Helvetica", 0xA0, 0},
      {"Helvetica", 0xFF, 0},
      {"helvetica-boldoblique", 'a', 556},
      {"Times-Roman", ' ', 250},
      {"Times-Roman", '@', 921},
      {"Times-BoldItalic", 'M', 889},
      {"Times-Italic", 'W', 833},
      {"Times-Bold", 'n', 556},
      {"Courier-Bold", 0, 600},
      {"Symbol", 'a', 631},
      {"Symbol", 0xF0, 0},
      {"ZapfDingbats", 0x33, 755},
      {"ZapfDingbats", 'n', 761},
      {"ZapfDingbats", 0xFE, 918},
  };
  for (const Sample& sample : kSamples) {
    EXPECT_EQ(WidthsOf(sample.font)[sample.code], sample.width)
        << sample.font << " " << sample.code;
  }
}

std::string LocalString(std::uint32_t id, std::size_t size = 257) {
  std::string text(size, '\1');
  const std::size_t length = LoadLocalString(id, text.data(), size);
  EXPECT_EQ(std::strlen(text.c_str()), length);
  text.resize(length);
  return text;
}

TEST(Strings, are_found_by_number_and_cut_to_the_buffer) {
  PlugInLife life;
  ASSERT_TRUE(life.SetUp());
  EXPECT_EQ(LocalString(8), "ENU");
  EXPECT_EQ(LocalString(9), "Quillon Forms");
  EXPECT_EQ(LocalString(15), "");
  EXPECT_EQ(LocalString(16), "");
  EXPECT_EQ(LocalString(74),
            "Submit all form fields to a World Wide Web \"Universal Resource Locator\"");
  EXPECT_EQ(LocalString(153), "Select &URL...");
  EXPECT_EQ(LocalString(154), "");
  EXPECT_EQ(LocalString(9, 8), "Quillon");
  EXPECT_EQ(LocalString(9, 1), "");
}

// A string table with three languages.
std::size_t LoadThreeLanguages(std::uint32_t id, char* buffer, std::size_t size) {
  const std::map<std::uint32_t, std::string> codes{{8, "ENU"}, {154, "DEU"}, {300, "FRA"}};
  const auto found = codes.find(id);
  if (found == codes.end()) return 0;
  return found->second.copy(buffer, size - 1) + (buffer[3] = '\0');
}

TEST(Strings, the_language_is_looked_for_by_its_exact_code) {
  EXPECT_EQ(FindLanguageOffset("ENU", &LoadThreeLanguages), 0u);
  EXPECT_EQ(FindLanguageOffset("DEU", &LoadThreeLanguages), 146u);
  EXPECT_EQ(FindLanguageOffset("FRA", &LoadThreeLanguages), 292u);
  EXPECT_EQ(FindLanguageOffset("fra", &LoadThreeLanguages), 0u);
  EXPECT_EQ(FindLanguageOffset("ITA", &LoadThreeLanguages), 0u);
}

}  // namespace
}  // namespace quillform
