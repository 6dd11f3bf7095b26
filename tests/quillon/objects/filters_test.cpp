#include "quillon/objects/filters.h"

#include "tests/quillon/objects/file_text.h"

namespace quillon::test {
namespace {

using namespace std::string_literals;

std::string StreamText(const std::string& entries, const std::string& data) {
  return "<<" + entries + "/Length " + std::to_string(data.size()) + ">>\nstream\n" + data +
         "\nendstream";
}

std::string DecodedFrom(const std::string& entries, const std::string& data) {
  const OpenedDocument file(FileWithObject(StreamText(entries, data)));
  return DecodedStream(file.At(3));
}

TEST(Filters, StandardExamplesDecode) {
  // The example of ISO 32000-1, 7.4.4.2.
  EXPECT_EQ(DecodedFrom("/Filter/LZWDecode", "\x80\x0B\x60\x50\x22\x0C\x0C\x85\x01"), "-----A---B");
  EXPECT_EQ(DecodedFrom("/Filter/ASCIIHexDecode", "48 65\n6C6c 6F2>"), "Hello ");
  EXPECT_EQ(DecodedFrom("/Filter/ASCII85Decode", "87cUR\nD]i,\"Ebo7dz~>"),
            "Hello World\0\0\0\0\0"s);
  EXPECT_EQ(DecodedFrom("/Filter/RunLengthDecode",
                        "\x02"s
                        "abc"
                        "\xFEx\x80"s),
            "abcxxx");
  EXPECT_EQ(DecodedFrom("/Filter[/AHx/A85]", "3837635552445d692c2245626f37 7e3e>"), "Hello World");
}

// Codes of single bytes alone: the table that the decoder keeps grows all the same.
std::string LzwEncoded(const std::string& text, bool early) {
  std::string out;
  unsigned bits = 0;
  int count = 0;
  int width = 9;
  unsigned next = 258;
  const auto put = [&](unsigned code) {
    bits = bits << width | code;
    for (count += width; count >= 8; count -= 8) {
      out.push_back(static_cast<char>(bits >> (count - 8) & 0xFF));
    }
  };
  put(256);
  for (const char c : text) {
    put(static_cast<unsigned char>(c));
    if (++next + (early ? 1u : 0u) > 1u << width) ++width;
  }
  put(257);
  put(0);
  return out;
}

TEST(Filters, LzwChangesItsWidthWhenEarlyChangeSays) {
  std::string text;
  for (unsigned i = 0; i < 3000; ++i) text.push_back(static_cast<char>(i * i % 251));
  EXPECT_EQ(objects::DecodeLzw(LzwEncoded(text, true), true), text);
  EXPECT_EQ(objects::DecodeLzw(LzwEncoded(text, false), false), text);
}

TEST(Filters, PngPredictorsAreUndoneRowByRow) {
  // Rows of three bytes; the filters None, Sub, Up, Average, Paeth, each giving 10 20 30 ...
  const std::string rows =
      "\x00\x0A\x14\x1E"
      "\x01\x0A\x0A\x0A"
      "\x02\x00\x00\x01"
      "\x03\x05\x06\x05"
      "\x04\x00\x0A\x0A"s;
  const objects::PredictorParams params{15, 1, 8, 3};
  EXPECT_EQ(objects::UndoPredictor(rows, params),
            "\x0A\x14\x1E"
            "\x0A\x14\x1E"
            "\x0A\x14\x1F"
            "\x0A\x15\x1F"
            "\x0A\x1F\x29"s);
}

TEST(Filters, AStreamThatExplodesIsStopped) {
  const std::string packed = objects::EncodeFlate(std::string(100000, '\0'));
  EXPECT_EQ(objects::DecodeFlate(packed, 100000).size(), 100000u);
  EXPECT_THROW(objects::DecodeFlate(packed, 99999), HostFailure);
  EXPECT_THROW(objects::CheckDecodedSize(objects::kMaxDecodedBytes + 1), HostFailure);
}

}  // namespace
}  // namespace quillon::test
