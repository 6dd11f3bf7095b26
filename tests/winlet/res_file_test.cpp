#include "winlet/res_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace winlet {
namespace {

using namespace std::string_literals;

// No byte more, so that reading beyond them is found.
std::vector<unsigned char> Bytes(const std::string& text) { return {text.begin(), text.end()}; }

// The data of a record of the type for data.
std::string Found(const std::string& file, const ResName& name) {
  const std::vector<unsigned char> bytes = Bytes(file);
  const auto data = FindResData(bytes, {kResTypeData, {}}, name);
  return data ? std::string(data->begin(), data->end()) : "none";
}

// Version, flags and language.
const std::string kRest(16, '\0');

const std::string kEmpty = "\0\0\0\0\x20\0\0\0\xFF\xFF\0\0\xFF\xFF\0\0"s + kRest;
const std::string kSeven = "\1\0\0\0\x20\0\0\0\xFF\xFF\x0A\0\xFF\xFF\7\0"s + kRest + "n\0\0\0"s;
const std::string kOdd = "\3\0\0\0\x24\0\0\0\xFF\xFF\x0A\0O\0D\0D\0\0\0"s + kRest + "abc";

TEST(ResFile, a_cut_file_ends_the_search_at_the_cut) {
  const std::string whole = kEmpty + kSeven + kOdd;  // as every compiled file begins
  EXPECT_EQ(Found(whole, {0, u"odd"}), "abc") << "names compare without regard to case";
  EXPECT_EQ(Found(whole, {7, {}}), "n");
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(Found(whole.substr(0, size), {0, u"ODD"}), "none") << size;
  }
}

TEST(ResFile, sizes_beyond_the_file_are_refused) {
  for (const std::size_t at : {0, 4}) {
    for (const char bad : {'\x03', '\x7F'}) {
      std::string damaged = kSeven;
      damaged[at + 3] = bad;
      EXPECT_EQ(Found(damaged, {7, {}}), "none");
    }
  }
  std::string damaged = kSeven;
  damaged[4] = 8;
  EXPECT_EQ(Found(damaged, {7, {}}), "none") << "the header ends before its names do";
}

TEST(ResFile, strings_are_counted_within_their_block) {
  const std::string block = "\4\0z\0e\0r\0o\0\0\0\4\0t\0w\0\xAC\x20o\0"s;
  EXPECT_EQ(StringInBlock(Bytes(block), 0), u"zero");
  EXPECT_EQ(StringInBlock(Bytes(block), 1), u"");
  EXPECT_EQ(StringInBlock(Bytes(block), 2), u"tw\u20ACo");
  EXPECT_EQ(StringInBlock(Bytes(block), 3), u"");
  const std::string cut = block.substr(0, block.size() - 1);
  EXPECT_EQ(StringInBlock(Bytes(cut), 2), u"") << "half a string is none";
}

}  // namespace
}  // namespace winlet
