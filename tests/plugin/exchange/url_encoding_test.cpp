#include "plugin/exchange/url_encoding.h"

#include <gtest/gtest.h>

#include "quillon/support/stream.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

struct UrlEncoding : ModelHost {
  UrlEncoding() {
    Open({});
    auto stream = std::make_unique<quillon::ByteStream>();
    stream->write = [this](const void* bytes, std::uint32_t size) {
      written.append(static_cast<const char*>(bytes), size);
      return size;
    };
    output = {quillon::GiveStream(std::move(stream)), false};
  }
  ~UrlEncoding() override { Support->CloseStream(output.stream); }

  // What one pair adds.
  std::string Pair(const std::string& name, ObjectHandle value) {
    written.clear();
    WritePair(&output, name.c_str(), value);
    return written;
  }

  std::string written;
  PairOutput output{};
};

TEST_F(UrlEncoding, pairs_are_joined_and_everything_but_letters_and_digits_is_escaped) {
  EXPECT_EQ(Pair("addr.city", Text("a b&c\r\nd")), "addr%2ecity=a+b%26c%0d%0ad");
  EXPECT_EQ(Pair("b", Text("2")), "&b=2");
  EXPECT_EQ(Pair("\xE9-_", Text(std::string("\0\x7F\xFF", 3))), "&%e9%2d%5f=%00%7f%ff");
}

TEST_F(UrlEncoding, every_line_end_is_sent_as_one_of_both_characters) {
  EXPECT_EQ(Pair("a", Text("x\ry\nz\r\n\n\r")), "a=x%0d%0ay%0d%0az%0d%0a%0d%0a%0d%0a");
}

TEST_F(UrlEncoding, names_and_missing_values_are_pairs_and_other_values_none) {
  EXPECT_EQ(Pair("list", Objects->NewArray(objects, 0, 0)), "");
  EXPECT_FALSE(output.holdsData) << "the first pair has no & before it";
  EXPECT_EQ(Pair("ok", Name("Yes 1")), "ok=Yes+1");
  EXPECT_EQ(Pair("off", quillon::kNullObject), "&off=");
}

TEST_F(UrlEncoding, long_values_go_out_whole_in_pieces) {
  const char* const escapes[][2] = {{"x", "x"}, {"\n", "%0d%0a"}, {"%", "%25"}};
  for (std::size_t length = 1000; length < 1040; ++length) {
    for (const auto& [unit, escape] : escapes) {
      std::string text, expected = output.holdsData ? "&n=" : "n=";
      for (std::size_t i = 0; i < length; ++i) {
        text += unit;
        expected += escape;
      }
      ASSERT_EQ(Pair("n", Text(text)), expected) << length;
    }
  }
}

}  // namespace
}  // namespace quillform
