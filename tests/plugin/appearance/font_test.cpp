#include <gtest/gtest.h>

#include <string>

#include "plugin/appearance/font_metrics.h"
#include "plugin/appearance/font_resources.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/keys.h"
#include "tests/plugin/appearance/appearance_host.h"
#include "tests/plugin/appearance/show_object.h"

namespace quillform {
namespace {

constexpr Fixed kOne = kFixedOne;
constexpr Fixed kThousandth = kFixedOne / 1000 + 1;

struct FontMetricsTest : AppearanceHost {};

// A width in 1/1000 of the size, as the published metrics tell, at 1000 points: whole points.
std::int32_t Thousandths(Atom font, unsigned char code) {
  return (FontMetricsOf(font, 1000 * kOne).widths[code] + kOne / 2) / kOne;
}

TEST_F(FontMetricsTest, WidthsFollowTheFontsOwnEncoding) {
  EXPECT_EQ(Thousandths(key::Helvetica, 0xE9), 778) << "Oslash, not the accented letter";
  EXPECT_EQ(Thousandths(key::TimesBold, 'A'), 722);
  EXPECT_EQ(Thousandths(key::ZapfDingbats, '4'), 846) << "its entries carry names";
  EXPECT_EQ(Thousandths(key::Helvetica, 0x09), 278) << "a code before the first is a space wide";
  EXPECT_EQ(Thousandths(key::Helvetica, 0x80), 0) << "a code without a glyph";
  for (int code = 0; code < 256; ++code) {
    ASSERT_EQ(Thousandths(key::CourierBold, static_cast<unsigned char>(code)), 600) << code;
  }
}

TEST_F(FontMetricsTest, CacheTellsSizesAndFontsApartAndOutlivesItsCapacity) {
  for (int round = 0; round < 3; ++round) {
    for (Fixed size = 4 * kOne; size < 20 * kOne; size += kOne / 3) {
      for (const Atom font : {key::Helvetica, key::TimesItalic, key::Symbol}) {
        FontMetrics loaded;
        LoadFontMetrics(font, size, &loaded);
        const FontMetrics& cached = FontMetricsOf(font, size);
        ASSERT_EQ(cached.lineHeight, loaded.lineHeight);
        ASSERT_EQ(cached.widths, loaded.widths);
      }
    }
  }
}

struct FontResourcesTest : AppearanceHost {
  ObjectHandle Field() { return Objects->ArrayGet(Objects->DictGet(Form(), key::Fields), 0); }
  FieldNode Node() { return FieldNodeOf(Field()); }
  ObjectHandle FontsIn(ObjectHandle holder) {
    return Objects->DictGet(Objects->DictGet(holder, key::DR), key::Font);
  }
};

TEST_F(FontResourcesTest, NewTextFontsShareTheDocumentEncoding) {
  OpenForm("");
  const ObjectHandle courier = FindOrMakeFontDict(doc, key::Courier);
  EXPECT_TRUE(Objects->IsIndirect(courier));
  const ObjectHandle encoding = Objects->DictGet(courier, key::Encoding);
  EXPECT_TRUE(Objects->IsIndirect(encoding));
  AddFontToFormResources(Form(), courier);
  const ObjectHandle times = FindOrMakeFontDict(doc, key::TimesBold);
  EXPECT_TRUE(Objects->Equal(Objects->DictGet(times, key::Encoding), encoding));
}

// Each code's glyph in PDFDocEncoding where it differs from the standard encoding is told by the
// last code before it and its place in the list; a missing or doubled element would shift these.
TEST_F(FontResourcesTest, EncodingGivesAccentedLettersTheirCodes) {
  OpenForm("");
  const ObjectHandle differences =
      Objects->DictGet(SharedEncodingDict(doc), Core->AtomFromName("Differences"));
  std::string glyphs[256];
  int code = 0;
  for (std::uint32_t i = 0; i < Objects->ArrayLength(differences); ++i) {
    const ObjectHandle element = Objects->ArrayGet(differences, i);
    if (IsKind(element, ObjectKind::kInteger)) {
      code = Objects->IntegerValue(element);
    } else {
      glyphs[code++] = ShowObject(element);
    }
  }
  EXPECT_EQ(code, 256);
  EXPECT_EQ(glyphs[0x1F], "/tilde");
  EXPECT_EQ(glyphs[0x92], "/trademark");
  EXPECT_EQ(glyphs[0xB5], "/mu");
  EXPECT_EQ(glyphs[0xE9], "/eacute");
  EXPECT_EQ(glyphs['A'], "");
}

TEST_F(FontResourcesTest, FontsOfTheFormAndOfFieldsAreFoundBeforeOneIsMade) {
  OpenForm(
      "/DR << /Font << /Helv << /BaseFont /Helvetica /Mark 1 >> "
      "/Cour << /BaseFont /Arial >> >> >>",
      {"<< /T (a) /FT /Tx >>",
       "<< /T (b) /FT /Tx /DR << /Font << /Cour << /BaseFont /Courier /Mark 2 >> >> >> >>"});
  LoadAllFields(doc);
  const Atom mark = Core->AtomFromName("Mark");
  const auto markOf = [&](Atom base) {
    return ShowObject(Objects->DictGet(FindOrMakeFontDict(doc, base), mark));
  };
  EXPECT_EQ(markOf(key::Helvetica), "1");
  EXPECT_EQ(markOf(key::Courier), "2");
  EXPECT_EQ(markOf(key::TimesRoman), "null");
  EXPECT_TRUE(IsNull(FindOrMakeFontDict(doc, Core->AtomFromName("Futura"))));
}

TEST_F(FontResourcesTest, FontThatNoResourcesKeepIsMadeOncePerDocument) {
  OpenForm("");
  const ObjectHandle first = FindOrMakeFontDict(doc, key::Courier);
  EXPECT_TRUE(Objects->Equal(FindOrMakeFontDict(doc, key::Courier), first));
  Objects->Destroy(first);
  EXPECT_EQ(BaseFontOf(FindOrMakeFontDict(doc, key::Courier)), key::Courier);
  OpenForm("");
  EXPECT_EQ(Objects->DocumentOf(FindOrMakeFontDict(doc, key::Courier)), objects);
}

TEST_F(FontResourcesTest, FieldUsesInheritedResourcesAndKeepsFontsThatAreThere) {
  OpenForm("/DR << /Font << /Helv << /BaseFont /Arial >> >> >>", {"<< /T (a) /FT /Tx >>"});
  const ObjectHandle courier = FindOrMakeFontDict(doc, key::Courier);
  EXPECT_EQ(AddFontToFieldResources(Node(), courier), key::Cour);
  EXPECT_TRUE(Objects->Equal(Objects->DictGet(FontsIn(Form()), key::Cour), courier));
  EXPECT_FALSE(Objects->DictKnown(Field(), key::DR));
  EXPECT_EQ(AddFontToFieldResources(Node(), FindOrMakeFontDict(doc, key::Helvetica)), key::Helv);
  EXPECT_EQ(BaseFontOf(Objects->DictGet(FontsIn(Form()), key::Helv)), Core->AtomFromName("Arial"));
}

TEST_F(FontResourcesTest, ResourceNameLeadsToABaseFontInOneWayOrAnother) {
  OpenForm("/DR << /Font << /F1 << /BaseFont /Courier-Bold >> >> >>", {"<< /T (a) /FT /Tx >>"});
  const Atom lost = Core->AtomFromName("F9");
  EXPECT_EQ(ResolveFieldFont(Node(), Core->AtomFromName("F1")), key::CourierBold);
  EXPECT_EQ(ResolveFieldFont(Node(), key::TiRo), key::TimesRoman);
  EXPECT_EQ(BaseFontOf(Objects->DictGet(FontsIn(Form()), key::TiRo)), key::TimesRoman);
  EXPECT_EQ(ResolveFieldFont(Node(), lost), key::Helvetica);
  const ObjectHandle standIn = Objects->DictGet(FontsIn(Form()), lost);
  EXPECT_EQ(BaseFontOf(standIn), key::Helvetica);
  EXPECT_EQ(FontKeyOf(standIn), lost);
}

}  // namespace
}  // namespace quillform
