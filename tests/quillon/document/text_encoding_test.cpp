#include "quillon/document/text_encoding.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "quillon/document/operations.h"

namespace quillon {
namespace {

std::string ByteString(int byte) { return {static_cast<char>(byte)}; }

using Convert = std::uint32_t (*)(const char*, std::uint32_t, char*, std::uint32_t);

std::string Converted(Convert convert, const std::string& text) {
  std::string buffer(text.size() * 6 + 1, '\xEE');
  const std::uint32_t length = convert(text.data(), static_cast<std::uint32_t>(text.size()),
                                       buffer.data(), static_cast<std::uint32_t>(buffer.size()));
  EXPECT_EQ(buffer[length], '\0');
  return buffer.substr(0, length);
}

TEST(TextEncoding, EveryPdfDocByteComesBackFromItsCharacter) {
  std::set<char32_t> characters;
  for (int byte = 0; byte < 256; ++byte) {
    const char32_t character = PdfDocCharacter(static_cast<unsigned char>(byte));
    if (byte == 0x7F || byte == 0x9F || byte == 0xAD) {
      EXPECT_EQ(character, kNoCharacter) << byte;
      continue;
    }
    EXPECT_EQ(PdfDocByte(character), byte);
    EXPECT_TRUE(characters.insert(character).second) << "two bytes for one character: " << byte;
    EXPECT_EQ(Utf8ToPdfDoc(PdfDocToUtf8(ByteString(byte)), nullptr), ByteString(byte));
  }
  EXPECT_EQ(characters.size(), 253U);
}

TEST(TextEncoding, KnownPlacesOfTheTables) {
  EXPECT_EQ(PdfDocToUtf8("\x80\x8A\x93\xA0\x1F\xE9"), "•−ﬁ€˜é");
  EXPECT_EQ(HostCharacter(0x80), U'€');
  EXPECT_EQ(HostCharacter(0x9F), U'Ÿ');
  EXPECT_EQ(HostCharacter(0xA0), U'\u00A0');
}

TEST(TextEncoding, Utf8ThatPdfDocCannotHoldIsRefusedWithItsPlace) {
  std::size_t offset = 99;
  EXPECT_EQ(Utf8ToPdfDoc("éa漢", &offset), std::nullopt);
  EXPECT_EQ(offset, 3U);
  for (const char* bad : {"a\xC0\x80", "a\xED\xA0\x80", "a\xF4\x90\x80\x80", "a\x80", "a\xE2\x82",
                          "a\xE0\x80\x80", "a\x7F", "a\xEF\xBF\xBD"}) {
    EXPECT_EQ(Utf8ToPdfDoc(bad, &offset), std::nullopt) << bad;
    EXPECT_EQ(offset, 1U) << bad;
  }
}

TEST(TextEncoding, EveryFormOfATextStringBecomesUtf8) {
  EXPECT_EQ(PdfTextToUtf8("a\xE9"), "aé");
  EXPECT_EQ(PdfTextToUtf8(std::string("\xFE\xFF\0a\x6F\x22\xD8\x3D\xDE\x00", 10)), "a漢😀");
  EXPECT_EQ(PdfTextToUtf8("\xEF\xBB\xBF"
                          "漢"),
            "漢");
  EXPECT_EQ(PdfTextToUtf8(std::string("\xFE\xFF\xD8\x3D\0a\0", 7)), "\uFFFDa");
  EXPECT_EQ(PdfTextToUtf8("\xFE\xFF"), "");
}

TEST(HostText, TakesUtf16AndMarksWhatItCannotHold) {
  EXPECT_EQ(Converted(document::PDFToHostText, std::string("\xFE\xFF\x20\xAC\x6F\x22", 6)),
            "\x80?");
  EXPECT_EQ(Converted(document::HostToPDFText, "\x80\x81"), "\xA0?");
}

TEST(NarrowText, KeepsDifferentTextsApartAndHasNoNul) {
  const auto narrow = [](const std::string& text) {
    return Converted(document::NarrowPDFText, text);
  };
  EXPECT_EQ(narrow("\xFE\xFF\x6F\x22"), "%u6F22");
  EXPECT_NE(narrow("%u6F22"), "%u6F22") << "the same, spelled out";
  EXPECT_EQ(narrow("100%"), "100%");
  const std::string withNul = narrow(std::string("a\0b", 3));
  EXPECT_NE(withNul, "ab");
  EXPECT_EQ(withNul.find('\0'), std::string::npos);
}

TEST(TextBuffers, AreFilledToTheirEndAndTerminated) {
  char buffer[4] = {'x', 'x', 'x', 'x'};
  EXPECT_EQ(document::HostToPDFText("abcdef", 6, buffer, 3), 2U);
  EXPECT_STREQ(buffer, "ab");
  EXPECT_EQ(buffer[3], 'x');
  EXPECT_EQ(document::HostToPDFText("abc", 3, nullptr, 0), 0U);
  EXPECT_EQ(document::NarrowPDFText("\xFE\xFF\x6F\x22", 4, buffer, 4), 6U) << "the whole length";
  EXPECT_STREQ(buffer, "%u6");
  EXPECT_EQ(document::NarrowPDFText("abc", 3, nullptr, 0), 3U);
}

}  // namespace
}  // namespace quillon
