#include "quillon/objects/numbers.h"
#include "tests/quillon/objects/file_text.h"

namespace quillon::test {
namespace {

TEST(Numbers, EveryFixedReadsBackFromItsText) {
  for (std::int64_t value = -0x80000000LL; value <= 0x7FFFFFFFLL; value += 65537 / 3) {
    std::string text;
    objects::AppendFixed(&text, static_cast<Fixed>(value));
    if (text.find('.') == std::string::npos) text += ".0";
    EXPECT_EQ(objects::ParseNumber(text).value, value) << text;
  }
}

TEST(Numbers, OddSpellingsAreUnderstood) {
  struct Case {
    const char* text;
    bool real;
    std::int32_t value;
  };
  const Case cases[] = {{"007", false, 7},
                        {"+5", false, 5},
                        {"-.5", true, -0x8000},
                        {"4.", true, 0x40000},
                        {"--3", false, -3},
                        {"99999999999", false, 0x7FFFFFFF},
                        {"-40000.5", true, -0x7FFFFFFF - 1},
                        {"0.00001", true, 1}};
  for (const Case& test : cases) {
    const objects::ParsedNumber number = objects::ParseNumber(test.text);
    EXPECT_EQ(number.real, test.real) << test.text;
    EXPECT_EQ(number.value, test.value) << test.text;
    EXPECT_FALSE(number.canonical) << test.text;
  }
  EXPECT_TRUE(objects::ParseNumber("-12.25").canonical);
}

TEST(Values, WhatIsNotChangedKeepsItsSpellingInAChangedObject) {
  const std::string parts =
      "/N[1.0 007 +2 -.50 3.14159265 123456789012]/S(a\\\n\\101\\))/H<4 1>/R 2 0 R/X#41#20 null";
  const OpenedDocument file(FileWithObject("<<" + parts + "/T(old)>>"));
  PutText(file.doc, file.At(3), "T", "new");
  EXPECT_NE(PdfToBytes(file.doc).find("<</N[1.0 007 +2 -.50 3.14159265 123456789012]"
                                      "/S(a\\\n\\101\\))/H<4 1>/R 2 0 R/XA#20 null/T(new)>>"),
            std::string::npos);
}

TEST(Values, StringsAreDecodedAndWrittenSafely) {
  const OpenedDocument file(FileWithObject("[(a(b)\\)\\n\\t\\0533\\8\\\r\nz\r\nq) <48656C6C6F7>]"));
  const ObjectHandle array = file.At(3);
  EXPECT_EQ(Text(objects::ArrayGet(array, 0)), "a(b))\n\t+38z\nq");
  EXPECT_EQ(Text(objects::ArrayGet(array, 1)), "Hellop");
  std::string all = "\r\n()\\";
  for (int i = 0; i < 256; ++i) all.push_back(static_cast<char>(i));
  objects::ArrayPut(array, 0, NewText(file.doc, all));
  objects::ArrayPut(array, 1, NewText(file.doc, std::string(300, 'p') + all));
  const OpenedDocument again(PdfToBytes(file.doc));
  EXPECT_EQ(Text(objects::ArrayGet(again.At(3), 0)), all);
  EXPECT_EQ(Text(objects::ArrayGet(again.At(3), 1)), std::string(300, 'p') + all);
}

TEST(Values, NamesAreUnescapedAndEscaped) {
  const OpenedDocument file(FileWithObject("[/A#20B /A#2FB /Lime#zz / /C#00]"));
  const char* expected[] = {"A B", "A/B", "Lime#zz", "", "C#00"};
  for (std::uint32_t i = 0; i < 5; ++i) {
    const Atom atom = objects::NameValue(objects::ArrayGet(file.At(3), i));
    EXPECT_STREQ(core::NameFromAtom(atom), expected[i]);
  }
  objects::ArrayInsert(file.At(3), 5, objects::NewName(file.doc, 0, Name("(\xC3\xA4)#")));
  const OpenedDocument again(PdfToBytes(file.doc));
  EXPECT_EQ(objects::NameValue(objects::ArrayGet(again.At(3), 5)), Name("(\xC3\xA4)#"));
  EXPECT_EQ(objects::NameValue(objects::ArrayGet(again.At(3), 4)), Name("C#00"));
}

TEST(Values, StaleHandlesFail) {
  ObjectHandle stale{};
  {
    const OpenedDocument file(FileWithObject("<</A[1 2]>>"));
    const ObjectHandle array = Get(file.At(3), "A");
    objects::Destroy(array);
    NewText(file.doc, "takes the place of the array");
    EXPECT_THROW(objects::ArrayLength(array), HostFailure);
    EXPECT_EQ(objects::TypeOf(Get(file.At(3), "A")), ObjectKind::kNull);
    stale = file.At(3);
  }
  const OpenedDocument another(FileWithObject("<</A[1 2]>>"));
  EXPECT_THROW(objects::TypeOf(stale), HostFailure);
}

TEST(Containers, EnumeratingSurvivesChangesOfTheContainer) {
  const OpenedDocument file(FileWithObject("[(a) (b) (c)]"));
  const ObjectHandle array = file.At(3);
  struct Seen {
    ObjectHandle array;
    std::string text;
  } seen{array, ""};
  objects::EnumDict(
      array,
      [](ObjectHandle, ObjectHandle value, void* data) -> Boolean {
        auto& all = *static_cast<Seen*>(data);
        all.text += objects::TypeOf(value) == ObjectKind::kNull ? "-" : Text(value);
        if (all.text == "a") objects::Destroy(objects::ArrayGet(all.array, 1));
        objects::ArrayRemove(all.array, 0);
        return 1;
      },
      &seen);
  EXPECT_EQ(seen.text, "a-c");
  EXPECT_EQ(objects::ArrayLength(array), 0u);
}

TEST(Containers, ADirectObjectStandsInOnePlaceOnly) {
  const OpenedDocument file(FileWithObject("<</A<</X 1>>>>"));
  const ObjectHandle dict = file.At(3);
  const ObjectHandle inner = Get(dict, "A");
  objects::DictPut(dict, Name("B"), inner);
  objects::DictPut(inner, Name("X"), objects::NewInteger(file.doc, 0, 2));
  objects::DictPut(inner, Name("Self"), inner);
  EXPECT_NE(PdfToBytes(file.doc).find("<</A<</X 2/Self<</X 2>>>>/B<</X 1>>>>"), std::string::npos);
  // Taken out, it can be put elsewhere as itself.
  objects::DictRemove(dict, Name("A"));
  objects::DictPut(dict, Name("C"), inner);
  EXPECT_TRUE(objects::Equal(Get(dict, "C"), inner));
}

TEST(Containers, AnotherDocumentsObjectIsRefused) {
  const OpenedDocument file(FileWithObject("<<>>"));
  const OpenedDocument other(FileWithObject("<</A[]>>"));
  EXPECT_THROW(objects::DictPut(file.At(3), Name("A"), Get(other.At(3), "A")), HostFailure);
  EXPECT_THROW(objects::DictPut(file.At(3), Name("A"), other.At(3)), HostFailure);
}

}  // namespace
}  // namespace quillon::test
