#include "quillon/objects/filters.h"

#include "quillon/support/operations.h"
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

// The encoder of the test itself: codes of growing width, clears at the start only.
std::string LzwEncoded(const std::string& text, bool early) {
  std::map<std::string, unsigned> table;
  for (unsigned i = 0; i < 256; ++i) table[std::string(1, static_cast<char>(i))] = i;
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
  std::string current;
  for (const char c : text) {
    if (table.count(current + c) != 0) {
      current += c;
      continue;
    }
    put(table[current]);
    table[current + c] = next++;
    if (next + (early ? 1u : 0u) > 1u << width && width < 12) ++width;
    current = c;
  }
  put(table[current]);
  ++next;
  if (next + (early ? 1u : 0u) > 1u << width && width < 12) ++width;
  put(257);
  put(0);
  return out;
}

TEST(Filters, LzwChangesItsWidthWhenEarlyChangeSays) {
  std::string text;
  for (unsigned i = 0; i < 4000; ++i) text.push_back(static_cast<char>(i * i % 251 % 7 + 'a'));
  EXPECT_EQ(objects::DecodeLzw(LzwEncoded(text, true), true), text);
  EXPECT_EQ(objects::DecodeLzw(LzwEncoded(text, false), false), text);
}

TEST(Filters, EncodersAreUndoneByDecoders) {
  std::string data;
  for (unsigned size = 0; size < 300; ++size) {
    EXPECT_EQ(objects::DecodeAscii85(objects::EncodeAscii85(data)), data) << size;
    EXPECT_EQ(objects::DecodeAsciiHex(objects::EncodeAsciiHex(data)), data) << size;
    EXPECT_EQ(objects::DecodeFlate(objects::EncodeFlate(data)), data) << size;
    data.push_back(static_cast<char>(size % 11 == 0 ? 0 : size * 37));
  }
  const std::string large(1000000, 'x');
  EXPECT_EQ(objects::DecodeFlate(objects::EncodeFlate(large)), large);
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

TEST(Filters, TiffPredictorAddsComponentsOfAnyWidth) {
  EXPECT_EQ(objects::UndoPredictor("\x01\x02\x03\x01\x01\x01"s, {2, 3, 8, 2}),
            "\x01\x02\x03\x02\x03\x04"s);
  EXPECT_EQ(objects::UndoPredictor("\x00\xFF\x00\x02"s, {2, 1, 16, 2}), "\x00\xFF\x01\x01"s);
  EXPECT_EQ(objects::UndoPredictor("\x12\x34"s, {2, 1, 4, 4}), "\x13\x6A"s);
  EXPECT_EQ(objects::UndoPredictor("\xC0"s, {2, 1, 1, 8}), "\x80"s);
}

TEST(Filters, DamagedAndUnknownDataFailNamingTheObject) {
  const std::pair<const char*, const char*> damaged[] = {{"/Filter/FlateDecode", "not deflated"},
                                                         {"/Filter/ASCII85Decode", "\x7F~>"},
                                                         {"/Filter/ASCIIHexDecode", "xy>"},
                                                         {"/Filter/DCTDecode", "..."},
                                                         {"/Filter 12", "..."}};
  for (const auto& [entries, data] : damaged) {
    SCOPED_TRACE(entries);
    const OpenedDocument file(FileWithObject(StreamText(entries, data)));
    try {
      DecodedStream(file.At(3));
      ADD_FAILURE() << "decoded";
    } catch (const HostFailure& failure) {
      EXPECT_EQ(failure.code, kErrorBadStream);
      EXPECT_EQ(failure.objectNumber, 3u);
    }
  }
}

TEST(Filters, AStreamThatExplodesIsStopped) {
  const std::string packed = objects::EncodeFlate(std::string(100000, '\0'));
  EXPECT_EQ(objects::DecodeFlate(packed, 100000).size(), 100000u);
  EXPECT_THROW(objects::DecodeFlate(packed, 99999), HostFailure);
  EXPECT_THROW(objects::CheckDecodedSize(objects::kMaxDecodedBytes + 1), HostFailure);
}

struct OpenedSource {
  StreamHandle handle;
  explicit OpenedSource(const std::string& data)
      : handle(support::OpenMemoryStream(data.data(), static_cast<std::uint32_t>(data.size()))) {}
  ~OpenedSource() { support::CloseStream(handle); }
  OpenedSource(const OpenedSource&) = delete;
  OpenedSource& operator=(const OpenedSource&) = delete;
};

ObjectHandle NewStreamWith(ObjectDoc doc, const std::string& data, ObjectHandle attributes) {
  const OpenedSource source(data);
  return objects::NewStream(doc, source.handle, attributes);
}

TEST(Filters, NewStreamsAreEncodedAsTheirAttributesSay) {
  const std::string data(1000, 'd');
  const OpenedDocument file(NewPdf());
  for (const char* names : {"", "FlateDecode", "ASCIIHexDecode", "ASCII85Decode", "LZWDecode"}) {
    SCOPED_TRACE(names);
    const ObjectHandle attributes = objects::NewDict(file.doc, 0, 2);
    const ObjectHandle filters = objects::NewArray(file.doc, 0, 2);
    if (*names != 0) {
      objects::ArrayPut(filters, 0, objects::NewName(file.doc, 0, Name("ASCII85Decode")));
      objects::ArrayPut(filters, 1, objects::NewName(file.doc, 0, Name(names)));
      objects::DictPut(attributes, Name("Filter"), filters);
    }
    const ObjectHandle stream = NewStreamWith(file.doc, data, attributes);
    EXPECT_EQ(DecodedStream(stream), data);
    objects::DictPut(file.Root(), Name("S"), stream);
    const OpenedDocument again(PdfToBytes(file.doc));
    EXPECT_EQ(DecodedStream(Get(again.Root(), "S")), data);
  }
  const ObjectHandle image = objects::NewDict(file.doc, 0, 1);
  objects::DictPut(image, Name("Filter"), objects::NewName(file.doc, 0, Name("DCTDecode")));
  EXPECT_THROW(NewStreamWith(file.doc, data, image), HostFailure);
}

TEST(Filters, OpenStreamGivesStoredOrDecodedBytes) {
  const OpenedDocument file(FileWithObject(StreamText("/Filter/ASCIIHexDecode", "4869>")));
  for (const auto& [mode, expected] :
       {std::pair<StreamMode, std::string>{kStreamRaw, "4869>"}, {kStreamDecoded, "Hi"}}) {
    const StreamHandle stream = objects::OpenStream(file.At(3), mode);
    char buffer[10];
    std::string bytes;
    while (const std::uint32_t count = support::ReadStream(stream, buffer, 2)) {
      bytes.append(buffer, count);
    }
    support::CloseStream(stream);
    EXPECT_EQ(bytes, expected);
  }
}

}  // namespace
}  // namespace quillon::test
