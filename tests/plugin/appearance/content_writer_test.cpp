#include "plugin/appearance/content_writer.h"

#include <gtest/gtest.h>

#include <string>

#include "plugin/appearance/border.h"
#include "plugin/model/keys.h"
#include "tests/plugin/appearance/appearance_host.h"

namespace quillform {
namespace {

constexpr Fixed kOne = kFixedOne;
constexpr Fixed kHalf = kFixedOne / 2;

struct ContentWriterTest : AppearanceHost {
  ContentWriter writer = NewContentWriter({0, 20 * kOne, 100 * kOne, 0}, 0);

  std::string TakeText() {
    std::string text(writer.text.c_str());
    writer.text.clear();
    return text;
  }
};

TEST_F(ContentWriterTest, LineIsCutAtItsLimit) {
  const std::string longText(2000, 'x');
  WriteOp(writer, "ab%c", longText.c_str());
  EXPECT_EQ(TakeText(), "ab" + longText.substr(0, 1022));
  WriteOp(writer, "%s Tj", longText.c_str());
  EXPECT_EQ(TakeText(), "(" + longText.substr(0, 1023));
}

TEST_F(ContentWriterTest, EscapesDelimitersAndBytesOutsideAscii) {
  char output[64];
  EXPECT_EQ(EscapeLiteralString("(a)[b]\\\t\n ~\x7F\x80\xFF", output, sizeof output), 34u);
  EXPECT_STREQ(output, "\\(a\\)\\[b\\]\\\\\\011\\012 ~\\177\\200\\377");
}

TEST_F(ContentWriterTest, EscapedFormThatDoesNotFitEndsTheText) {
  char output[8];
  EXPECT_EQ(EscapeLiteralString("abcd\xE9z", output, sizeof output), 4u);
  EXPECT_STREQ(output, "abcd");
  EXPECT_EQ(EscapeLiteralString("abc\xE9z", output, sizeof output), 7u);
  EXPECT_STREQ(output, "abc\\351");
  EXPECT_EQ(EscapeLiteralString("abcdef(", output, sizeof output), 6u);
}

TEST_F(ContentWriterTest, ArrayBecomesAColourByItsLength) {
  const struct {
    const char* array;
    ColourRec colour;
  } cases[] = {{"[]", kNoColour},
               {"[0.5]", {0, kHalf, 0, 0, 0}},
               {"[0.5 0.5]", kNoColour},
               {"[1 (x) 0.5]", {1, kOne, 0, kHalf, 0}},
               {"[0.5 0 1 0.5]", {2, kHalf, 0, kOne, kHalf}},
               {"[0 0 0 0 0]", kNoColour},
               {"null", kNoColour}};
  for (const auto& one : cases) {
    const AnnotHandle annot = OpenWidget("Tx", std::string("/Border ") + one.array);
    const ObjectHandle array = Objects->DictGet(Document->AnnotDict(annot), key::Border);
    EXPECT_TRUE(ColoursEqual(ColourOfArray(array), one.colour)) << one.array;
  }
}

}  // namespace
}  // namespace quillform
