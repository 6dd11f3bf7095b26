#include <gtest/gtest.h>

#include <cstdarg>
#include <string>

#include "winlet/winlet.h"

namespace {

std::string Format(const char* format, ...) {
  char text[1025];
  va_list arguments;
  va_start(arguments, format);
  const int length = wvsprintfA(text, format, arguments);
  va_end(arguments);
  EXPECT_EQ(std::string(text).size(), static_cast<std::size_t>(length));
  return text;
}

TEST(Formatter, knows_numbers_texts_and_their_widths) {
  EXPECT_EQ(Format("%ld out of %d, %u", -3, 70000, 4294967295u), "-3 out of 70000, 4294967295");
  EXPECT_EQ(Format("[%5d|%-5d|%05d|%.3d]", -42, -42, -42, 7), "[  -42|-42  |-0042|007]");
  EXPECT_EQ(Format("%x %X %#x %08lx", 255, 255, 255, 255), "ff FF 0xff 000000ff");
  EXPECT_EQ(Format("[%s|%6s|%-6s|%.2s|%c]", "abc", "abc", "abc", "abc", 'z'),
            "[abc|   abc|abc   |ab|z]");
  EXPECT_EQ(Format("%s", nullptr), "(null)");
}

TEST(Formatter, keeps_what_it_does_not_know_and_its_limit) {
  EXPECT_EQ(Format("100%% %q %"), "100% q ");
  EXPECT_EQ(Format("%s", std::string(5000, 'x').c_str()).size(), 1023u);
  EXPECT_EQ(Format("%999999999999d", 1).size(), 1023u);
}

}  // namespace
