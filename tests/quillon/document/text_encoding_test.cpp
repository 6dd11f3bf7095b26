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

TEST(HostText, GoesBothWaysWhereBothEncodingsHaveTheCharacter) {
  std::size_t both = 0;
  for (int byte = 0; byte < 256; ++byte) {
    const std::string host = ByteString(byte);
    const std::string pdf = Converted(document::HostToPDFText, host);
    if (pdf == "?" && byte != '?') continue;
    ++both;
    EXPECT_EQ(Converted(document::PDFToHostText, pdf), host) << byte;
  }
  // All of Windows-1252 but its five free bytes, DEL, the no-break space and the soft hyphen.
  EXPECT_EQ(both, 256U - 8U - 8U);
}

TEST(HostText, TakesUtf16AndMarksWhatItCannotHold) {
  EXPECT_EQ(Converted(document::PDFToHostText, std::string("\xFE\xFF\x20\xAC\x6F\x22", 6)),
            "\x80?");
  EXPECT_EQ(Converted(document::HostToPDFText, "\x80\x81"), "\xA0?");
}

TEST(HostText, IsCutToTheBufferAndTerminated) {
  char buffer[4] = {'x', 'x', 'x', 'x'};
  EXPECT_EQ(document::HostToPDFText("abcdef", 6, buffer, 3), 2U);
  EXPECT_STREQ(buffer, "ab");
  EXPECT_EQ(buffer[3], 'x');
  EXPECT_EQ(document::HostToPDFText("abc", 3, nullptr, 0), 0U);
}

TEST(NarrowText, KeepsDifferentTextsApartAndHasNoNul) {
  const std::string texts[] = {
      std::string("\xFE\xFF\x6F\x22", 4),                   // 漢
      "%u6F22",                                             // the same, spelled out
      std::string("\xFE\xFF\0%\0u\0006\0F\0002\0002", 14),  // spelled out in the wide form
      std::string("a\0b", 3),
      "ab",
      std::string("\xFE\xFF\xD8\x3D\xDE\x00", 6),  // a surrogate pair
      "100%",
  };
  EXPECT_EQ(Converted(document::NarrowPDFText, texts[0]), "%u6F22");
  EXPECT_EQ(Converted(document::NarrowPDFText, texts[1]),
            Converted(document::NarrowPDFText, texts[2]));
  std::set<std::string> narrow;
  for (const std::string& text : texts) {
    narrow.insert(Converted(document::NarrowPDFText, text));
    EXPECT_EQ(Converted(document::NarrowPDFText, text).find('\0'), std::string::npos);
  }
  EXPECT_EQ(narrow.size(), std::size(texts) - 1);
  EXPECT_TRUE(narrow.contains("100%"));
}

TEST(NarrowText, AnswersTheWholeLengthForAnyBuffer) {
  char buffer[4];
  EXPECT_EQ(document::NarrowPDFText("\xFE\xFF\x6F\x22", 4, buffer, 4), 6U);
  EXPECT_STREQ(buffer, "%u6");
  EXPECT_EQ(document::NarrowPDFText("abc", 3, nullptr, 0), 3U);
}

}  // namespace
}  // namespace quillon
