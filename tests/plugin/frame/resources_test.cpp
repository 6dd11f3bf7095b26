#include "plugin/resources/resources.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/plugin/frame/plug_in_life.h"

namespace quillform {
namespace {

TEST(MetricResources, every_base_font_has_its_own) {
  for (const char* name :
       {"Times-Roman", "Times-Bold", "Times-Italic", "Times-BoldItalic", "Helvetica",
        "Helvetica-Bold", "Helvetica-Oblique", "Helvetica-BoldOblique", "Courier", "Courier-Bold",
        "Courier-Oblique", "Courier-BoldOblique", "Symbol", "ZapfDingbats"}) {
    const ResourceBytes bytes = FindDataResource(name);
    ASSERT_NE(bytes.data, nullptr) << name;
    EXPECT_STREQ(reinterpret_cast<const char*>(bytes.data), name);
  }
  EXPECT_EQ(FindDataResource("Arial").data, nullptr);
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
  EXPECT_EQ(LocalString(9), "Quillon Forms");
  EXPECT_EQ(LocalString(15), "");
  EXPECT_EQ(LocalString(74),
            "Submit all form fields to a World Wide Web \"Universal Resource Locator\"");
  EXPECT_EQ(LocalString(9, 8), "Quillon");
}

}  // namespace
}  // namespace quillform
