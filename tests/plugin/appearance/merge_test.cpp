// Replacing the marked section of appearances that other programs drew.
#include <gtest/gtest.h>

#include <string>

#include "plugin/appearance/form_stream.h"
#include "plugin/model/keys.h"
#include "tests/plugin/appearance/appearance_host.h"
#include "tests/plugin/appearance/show_object.h"

namespace quillform {
namespace {

constexpr Fixed kOne = kFixedOne;
constexpr const char* kResources = "<< /Font << /Helv << /BaseFont /Helvetica >> >> >>";
constexpr const char* kSection = "q (new) Tj Q EMC";

struct MergeTest : AppearanceHost {
  TextAppearance look{};

  MergeTest() {
    look.baseFont = key::Helvetica;
    look.fontResource = key::Helv;
  }

  ContentWriter Writer(std::uint16_t rotation = 0) {
    ContentWriter writer = NewContentWriter({0, 20 * kOne, 100 * kOne, 0}, rotation);
    BeginMarkedContent(writer, key::Tx);
    WriteOp(writer, "q");
    WriteOp(writer, "%s Tj", "new");
    WriteRestore(writer);
    EndMarkedContent(writer);
    return writer;
  }

  ObjectHandle OldStream(const std::string& content, const std::string& entries = "") {
    return AppearanceOf(OpenWidget("Tx", "/AP << /N 11 0 R >>", "[0 0 9 9]",
                                   {.defaultResources = std::string("/DR ") + kResources,
                                    .objects = {StreamObject(entries, content)}}),
                        key::N, kNoAtom);
  }

  // The merged content, "null" for no stream.
  std::string Merged(const std::string& content) {
    ContentWriter writer = Writer();
    const ObjectHandle stream = MergeMarkedContent(OldStream(content), writer, look, kNullObject);
    return IsNull(stream) ? "null" : StreamText(stream);
  }
};

TEST_F(MergeTest, ReplacesOnlyTheSectionWhateverStandsAroundIt) {
  const std::string section = kSection;
  const struct {
    const char* content;
    std::string merged;
  } cases[] = {
      {"1 g 0 0 9 9 re f /Tx BMC BT ET EMC\n0 G\n",
       "1 g 0 0 9 9 re f /Tx BMC " + section + "\n\n0 G\n"},
      {"q\r\n/Tx BMC\r\nBT (old) Tj ET\r\nEMC\r\nQ\r\n",
       "q\r\n/Tx BMC\r" + section + "\n\r\nQ\r\n"},
      {"/Tx  BMC\t(old) Tj\tEMC\tQ", "/Tx  BMC\t" + section + "\n\tQ"},
      {"/Tx BMC (old) Tj EMC", "/Tx BMC " + section + "\n"},
      {"//Tx BMC (old) Tj EMC Q", "//Tx BMC " + section + "\n Q"},
      {"/Tx BM /Tx BMC (old) Tj EMC Q", "/Tx BM /Tx BMC " + section + "\n Q"},
  };
  for (const auto& one : cases) EXPECT_EQ(Merged(one.content), one.merged) << one.content;
}

TEST_F(MergeTest, EndOperatorIsFoundOutsideStringsAndAsAWholeWord) {
  const std::string expected = std::string("/Tx BMC ") + kSection + "\n Q";
  for (const char* content : {
           "/Tx BMC ( EMC ) Tj EMC Q",
           "/Tx BMC (a ( EMC ) b EMC ) Tj EMC Q",
           "/Tx BMC (a \\) EMC \\( b) Tj EMC Q",
           "/Tx BMC (\\\\) Tj EMC Q",
           "/Tx BMC (x)EMC Tj EMC Q",
           "/Tx BMC EMCx xEMC EM EEMC EMC( EMC ) EMC Q",
           "/Tx BMC ) EMC Q",
       }) {
    EXPECT_EQ(Merged(content), expected) << content;
  }
}

TEST_F(MergeTest, ContentWithoutACompleteSectionIsNotMerged) {
  for (const char* content : {
           "",
           "q 1 g 0 0 9 9 re f Q",
           "/Tx << /MCID 0 >> BDC (old) Tj EMC Q",
           "q /TxBMC (old) Tj EMC Q",
           "q /Tx BMC (old) Tj ET Q",
           "q /Tx BMC (old EMC Tj EMC Q",
           "q /Tx BMC",
       }) {
    EXPECT_EQ(Merged(content), "null") << content;
  }
}

TEST_F(MergeTest, OperatorsMayLieAcrossTheBlocksInWhichTheHostReads) {
  for (std::size_t before = 4080; before < 4100; ++before) {
    const std::string padding(before, 'x');
    EXPECT_EQ(Merged(padding + " /Tx BMC (old) Tj EMC Q"),
              padding + " /Tx BMC " + kSection + "\n Q");
    EXPECT_EQ(Merged("/Tx BMC " + padding + " EMC " + padding),
              std::string("/Tx BMC ") + kSection + "\n " + padding);
  }
}

TEST_F(MergeTest, KeepsTheFilterOfTheOldStreamInTheBoxOfTheNewOne) {
  const std::string hex =
      "2F547820424D4320286F6C642920546A20454D43205120512051>";  // ASCIIHexDecode
  ContentWriter writer = Writer(90);
  const ObjectHandle kept =
      MergeMarkedContent(OldStream(hex, "/Filter [/ASCIIHexDecode]"), writer, look, kNullObject);
  EXPECT_EQ(ShowObject(Objects->DictGet(kept, key::Filter)), "[/ASCIIHexDecode]");
  EXPECT_EQ(ShowObject(Objects->DictGet(kept, key::BBox)), "[0 0 20 100]");
  EXPECT_EQ(ShowObject(Objects->DictGet(kept, key::Matrix)), "[0 1 -1 0 100 0]");
  EXPECT_EQ(StreamText(kept), std::string("/Tx BMC ") + kSection + "\n Q Q Q");
}

TEST_F(MergeTest, TakesTheOldResourcesOverAndAddsTheFontThatTheyLack) {
  const char* const content = "/Tx BMC (old) Tj EMC Q";
  const struct {
    const char* resources;
    const char* expected;
  } cases[] = {
      {"<< /Font << /F1 << /BaseFont /Courier >> >> /ExtGState << /G 1 >> >>",
       "<< /ExtGState << /G 1 >> /Font << /F1 << /BaseFont /Courier >> "
       "/Helv << /BaseFont /Helvetica >> >> >>"},
      {"<< /Font << /Helv << /BaseFont /Arial >> >> >>",
       "<< /Font << /Helv << /BaseFont /Arial >> >> >>"},
      {"null", kResources},
  };
  for (const auto& one : cases) {
    const ObjectHandle old = OldStream(content, std::string("/Resources ") + one.resources);
    const ObjectHandle usual = Objects->DictGet(Form(), key::DR);
    ContentWriter writer = Writer();
    const ObjectHandle stream = MergeMarkedContent(old, writer, look, usual);
    EXPECT_EQ(ShowObject(Objects->DictGet(stream, key::Resources)), one.expected);
    EXPECT_TRUE(IsNull(Objects->DictGet(old, key::Resources)));
    EXPECT_EQ(ShowObject(usual), kResources);
  }
}

TEST_F(MergeTest, FailureOfTheHostGivesNoStream) {
  ContentWriter writer = Writer();
  EXPECT_TRUE(IsNull(
      MergeMarkedContent(OldStream("zz", "/Filter /FlateDecode"), writer, look, kNullObject)));
  const ObjectHandle old = OldStream("/Tx BMC (old) Tj EMC Q");
  const FailingSlot failing(&Support->ReadStream);
  EXPECT_TRUE(IsNull(MergeMarkedContent(old, writer, look, kNullObject)));
}

}  // namespace
}  // namespace quillform
