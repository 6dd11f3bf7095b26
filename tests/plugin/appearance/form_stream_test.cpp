#include "plugin/appearance/form_stream.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "plugin/model/keys.h"
#include "tests/plugin/appearance/appearance_host.h"
#include "tests/plugin/appearance/show_object.h"

namespace quillform {
namespace {

constexpr Fixed kOne = kFixedOne;

struct FormStreamTest : AppearanceHost {
  ContentWriter writer = NewContentWriter({0, 20 * kOne, 100 * kOne, 0}, 0);
};

TEST_F(FormStreamTest, HoldsTheContentAndTheFewestEntries) {
  for (const std::size_t length : {256u, 257u}) {
    const std::string text(length, ' ');
    writer.text.assign(text.begin(), text.end());
    const ObjectHandle stream = MakeFormStream(objects, writer);
    EXPECT_EQ(ShowObject(stream), std::string("<< /BBox [0 0 100 20] ") +
                                      (length == 257 ? "/Filter [/FlateDecode] " : "") +
                                      "/Resources << /ProcSet [/PDF] >> >>stream");
    EXPECT_EQ(StreamText(stream), text);
  }
}

TEST_F(FormStreamTest, TurnedWidgetsGetTheMatrixThatTurnsTheirFormBack) {
  const struct {
    std::uint16_t rotation;
    const char* box;
    const char* matrix;
  } cases[] = {{90, "[0 0 20 100]", "[0 1 -1 0 100 0]"},
               {180, "[0 0 100 20]", "[-1 0 0 -1 100 20]"},
               {270, "[0 0 20 100]", "[0 -1 1 0 0 20]"}};
  for (const auto& one : cases) {
    ContentWriter turned = NewContentWriter({0, 20 * kOne, 100 * kOne, 0}, one.rotation);
    WriteOp(turned, "n");
    const ObjectHandle stream = MakeFormStream(objects, turned);
    EXPECT_EQ(ShowObject(Objects->DictGet(stream, key::BBox)), one.box) << one.rotation;
    EXPECT_EQ(ShowObject(Objects->DictGet(stream, key::Matrix)), one.matrix) << one.rotation;
  }
}

TEST_F(FormStreamTest, FontIsAlsoThereUnderTheNameThatTheContentSelects) {
  OpenForm(
      "/DR << /Font << /Helv << /BaseFont /Helvetica >> /F1 << /BaseFont /Helvetica /X 1 >> >> "
      ">>");
  WriteOp(writer, "n");
  writer.flags = kWriterUsesFont;
  writer.font.baseFont = key::Helvetica;
  const auto fonts = [this](const char* name) {
    writer.fontResource = Core->AtomFromName(name);
    const ObjectHandle stream = MakeFormStream(objects, writer);
    return ShowObject(Objects->DictGet(Objects->DictGet(stream, key::Resources), key::Font));
  };
  EXPECT_EQ(fonts("F1"),
            "<< /F1 << /BaseFont /Helvetica /X 1 >> /Helv << /BaseFont /Helvetica >> >>");
  EXPECT_EQ(fonts("F2"), "<< /F2 << /BaseFont /Helvetica >> /Helv << /BaseFont /Helvetica >> >>");

  writer.fontResource = kNoAtom;
  writer.font.baseFont = Core->AtomFromName("No-Such-Face");
  EXPECT_TRUE(IsNull(MakeFormStream(objects, writer)));
}

struct WidgetAppearanceTest : AppearanceHost {
  // The stream with the entries given is 11 0 R.
  AnnotHandle Open(const std::string& entries, const std::string& streamEntries = "") {
    return OpenWidget("Tx", entries, "[0 0 100 20]",
                      {.objects = {StreamObject(streamEntries, "n")}});
  }

  ObjectHandle NewStream() {
    ContentWriter writer = NewContentWriter({0, kOne, kOne, 0}, 0);
    WriteOp(writer, "n");
    return MakeFormStream(objects, writer);
  }
};

constexpr const char* kNewForm = "<< /BBox [0 0 1 1] /Resources << /ProcSet [/PDF] >> >>stream";

TEST_F(WidgetAppearanceTest, InstallingWithStateKeepsTheShownOneAndMakesTheStates) {
  const AnnotHandle annot = Open("/AS /Off /AP << /N 11 0 R >>");
  InstallAppearance(annot, key::On, NewStream());
  InstallAppearance(annot, key::Off, NewStream());
  EXPECT_EQ(Entry(annot, key::AppearanceState), "/Off");
  EXPECT_EQ(Entry(annot, key::AP),
            std::string("<< /N << /Off ") + kNewForm + " /On " + kNewForm + " >> >>");
  InstallAppearance(annot, key::On, kNullObject);
  EXPECT_EQ(Entry(annot, key::AP), std::string("<< /N << /Off ") + kNewForm + " >> >>");
}

TEST_F(WidgetAppearanceTest, NoAppearanceRemovesItsEntryAndKeepsOthers) {
  const AnnotHandle annot = Open("/AS /On /AP << /N 11 0 R /D 11 0 R >>", "/BBox [0 0 9 9]");
  InstallAppearance(annot, kNoAtom, kNullObject);
  EXPECT_EQ(Entry(annot, key::AP), "<< /D << /BBox [0 0 9 9] >>stream >>");
  EXPECT_EQ(Entry(annot, key::AppearanceState), "null");
}

TEST_F(WidgetAppearanceTest, ChangesAreAnnouncedOnceAndUnchangedOnesNotAtAll) {
  const AnnotHandle annot = Open("");
  static std::string changes;
  changes.clear();
  static const auto announce = Document->AnnotDidChange;
  Document->AnnotDidChange = [](AnnotHandle changed, Atom key, FailureCode error) {
    changes += Core->NameFromAtom(key) + std::string(" ") + std::to_string(error) + "; ";
    announce(changed, key, error);
  };
  const ObjectHandle stream = NewStream();
  PutAppearance(annot, key::AppearanceDown, kNoAtom, stream);
  PutAppearance(annot, key::AppearanceDown, kNoAtom, stream);
  PutAppearance(annot, key::N, key::On, kNullObject);
  EXPECT_EQ(changes, "AP 0; ");
}

TEST_F(WidgetAppearanceTest, FrameTakesDrawnHeightAndRotationFromWhereTheyStand) {
  const struct {
    const char* entries;
    const char* streamEntries;
    Fixed width;
    Fixed height;
    std::uint16_t rotation;
  } cases[] = {
      {"", "", 100 * kOne, 20 * kOne, 0},
      {"/OH 40", "", 200 * kOne, 40 * kOne, 0},
      {"/OH 12", "", 60 * kOne, 12 * kOne, 0},  // whole, though the quotient of the heights is not
      {"/OH -3", "", 100 * kOne, 20 * kOne, 0},
      {"/MK << /R -90 >>", "", 100 * kOne, 20 * kOne, 270},
      {"/MK << /R 45 >>", "", 100 * kOne, 20 * kOne, 0},
      {"/MK << >> /AP << /N 11 0 R >>", "/Matrix [0 1 -1 0 5 0]", 100 * kOne, 20 * kOne, 0},
      {"/AP << /N 11 0 R >>", "/Matrix [0 1 -1 0 5 0]", 100 * kOne, 20 * kOne, 90},
      {"/AP << /N 11 0 R >>", "/Matrix [0.0 -1 1 0 5 0]", 100 * kOne, 20 * kOne, 270},
      {"/AP << /N 11 0 R >>", "/Matrix [-1 0 0 -1 5 0]", 100 * kOne, 20 * kOne, 180},
      {"/AP << /N << /On 11 0 R >> >>", "/Matrix [0 1 -1 0 5 0]", 100 * kOne, 20 * kOne, 90},
      {"/AP << /N 11 0 R >>", "/Matrix [/x]", 100 * kOne, 20 * kOne, 0},
  };
  for (const auto& one : cases) {
    const WidgetFrame frame = FrameOfWidget(Open(one.entries, one.streamEntries));
    EXPECT_EQ(frame.rect.right - frame.rect.left, one.width) << one.entries;
    EXPECT_EQ(frame.rect.top - frame.rect.bottom, one.height) << one.entries;
    EXPECT_EQ(frame.rotation, one.rotation) << one.entries << one.streamEntries;
  }
}

}  // namespace
}  // namespace quillform
