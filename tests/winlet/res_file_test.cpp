#include "winlet/res_file.h"

#include <gtest/gtest.h>

#include <vector>

namespace winlet {
namespace {

using Bytes = std::vector<unsigned char>;

void AddWord(Bytes& bytes, unsigned word) {
  bytes.push_back(static_cast<unsigned char>(word & 0xFF));
  bytes.push_back(static_cast<unsigned char>(word >> 8 & 0xFF));
}

void AddDoubleWord(Bytes& bytes, std::size_t value) {
  AddWord(bytes, static_cast<unsigned>(value & 0xFFFF));
  AddWord(bytes, static_cast<unsigned>(value >> 16));
}

void AddName(Bytes& bytes, const ResName& name) {
  if (name.text.empty()) {
    AddWord(bytes, 0xFFFF);
    AddWord(bytes, name.number);
    return;
  }
  for (const char16_t unit : name.text) AddWord(bytes, unit);
  AddWord(bytes, 0);
}

void Pad(Bytes& bytes) {
  while (bytes.size() % 4 != 0) bytes.push_back(0);
}

void AddRecord(Bytes& file, const ResName& type, const ResName& name, const Bytes& data) {
  Pad(file);
  Bytes names;
  AddName(names, type);
  AddName(names, name);
  Pad(names);
  AddDoubleWord(file, data.size());
  AddDoubleWord(file, 8 + names.size() + 16);
  file.insert(file.end(), names.begin(), names.end());
  file.insert(file.end(), 16, 0);
  file.insert(file.end(), data.begin(), data.end());
}

std::string Found(const Bytes& file, const ResName& type, const ResName& name) {
  const auto data = FindResData(file, type, name);
  return data ? std::string(data->begin(), data->end()) : "none";
}

const ResName kData{kResTypeData, {}};

TEST(ResFile, a_cut_file_ends_the_search_at_the_cut) {
  Bytes whole;
  AddRecord(whole, {0, {}}, {0, {}}, {});  // empty, as every compiled file begins
  AddRecord(whole, kData, {7, {}}, {'n'});
  AddRecord(whole, kData, {0, u"ODD"}, {'a', 'b', 'c'});
  EXPECT_EQ(Found(whole, kData, {0, u"odd"}), "abc") << "names compare without regard to case";
  EXPECT_EQ(Found(whole, kData, {7, {}}), "n");
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const Bytes file(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    const std::string found = Found(file, kData, {0, u"ODD"});
    EXPECT_TRUE(found == "none" || found == "abc") << size;
  }
}

TEST(ResFile, sizes_beyond_the_file_are_refused) {
  Bytes file;
  AddRecord(file, kData, {1, {}}, {'x', 'y'});
  for (const std::size_t at : {0, 4}) {
    for (const unsigned char bad : {'\x03', '\x7F'}) {
      Bytes damaged = file;
      damaged[at + 3] = bad;
      EXPECT_EQ(Found(damaged, kData, {1, {}}), "none");
    }
  }
  file[4] = 8;  // a header that ends before its names do
  EXPECT_EQ(Found(file, kData, {1, {}}), "none");
}

TEST(ResFile, strings_are_counted_within_their_block) {
  Bytes block;
  for (const std::u16string text : {u"zero", u"", u"tw\u20ACo"}) {
    AddWord(block, static_cast<unsigned>(text.size()));
    for (const char16_t unit : text) AddWord(block, unit);
  }
  EXPECT_EQ(StringInBlock(block, 0), u"zero");
  EXPECT_EQ(StringInBlock(block, 1), u"");
  EXPECT_EQ(StringInBlock(block, 2), u"tw\u20ACo");
  EXPECT_EQ(StringInBlock(block, 3), u"");
  block.pop_back();
  EXPECT_EQ(StringInBlock(block, 2), u"") << "half a string is none";
}

}  // namespace
}  // namespace winlet
