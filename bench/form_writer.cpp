#include "bench/form_writer.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <vector>

namespace quillform::bench {
namespace {

// Object numbers: catalog, page tree, form, font, then pages, contents and fields.
constexpr std::uint32_t kCatalog = 1, kPageTree = 2, kForm = 3, kFont = 4, kFirstPage = 5;

constexpr int kColumns = 4;
constexpr int kLeft = 36, kTop = 740, kColumnWidth = 136, kRowHeight = 20;
constexpr int kFieldWidth = 128, kFieldHeight = 16;

struct Writer {
  __attribute__((format(printf, 2, 3))) void Print(const char* format, ...) {
    char text[512];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    bytes.append(text, static_cast<std::size_t>(length));
  }

  // Objects are written in the order of their numbers.
  void Begin() {
    offsets.push_back(bytes.size());
    Print("%zu 0 obj\n", offsets.size());
  }
  void End() { bytes += "\nendobj\n"; }

  void PrintReferences(std::uint32_t first, std::uint32_t count) {
    for (std::uint32_t i = 0; i < count; ++i) Print("%u 0 R ", first + i);
  }

  std::string bytes;
  std::vector<std::size_t> offsets;
};

struct Plan {
  FormSize size;
  std::uint32_t perPage;
  std::uint32_t firstField;

  std::uint32_t FieldsBefore(std::uint32_t page) const {
    return std::min(page * perPage, size.fields);
  }
};

void WriteRoots(const Plan& plan, Writer* out) {
  out->Begin();
  out->Print("<</Type/Catalog/Pages %u 0 R/QuillForm %u 0 R>>", kPageTree, kForm);
  out->End();
  out->Begin();
  out->Print("<</Type/Pages/Count %u/Kids[", plan.size.pages);
  for (std::uint32_t page = 0; page < plan.size.pages; ++page) {
    out->PrintReferences(kFirstPage + 2 * page, 1);
  }
  out->Print("]>>");
  out->End();
  out->Begin();
  out->Print("<</DA(/Helv 9 Tf 0 g)/DR<</Font<</Helv %u 0 R>>>>/Fields[", kFont);
  out->PrintReferences(plan.firstField, plan.size.fields);
  out->Print("]>>");
  out->End();
  out->Begin();
  out->Print("<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>");
  out->End();
}

void WritePage(const Plan& plan, std::uint32_t page, Writer* out) {
  const std::uint32_t number = kFirstPage + 2 * page;
  const std::uint32_t before = plan.FieldsBefore(page);
  out->Begin();
  out->Print(
      "<</Type/Page/Parent %u 0 R/MediaBox[0 0 612 792]/Resources<</Font<</Helv %u 0 R>>>>"
      "/Contents %u 0 R/Annots[",
      kPageTree, kFont, number + 1);
  out->PrintReferences(plan.firstField + before, plan.FieldsBefore(page + 1) - before);
  out->Print("]>>");
  out->End();
  char content[64];
  const int length =
      std::snprintf(content, sizeof content, "BT /Helv 12 Tf 36 765 Td (Page %u) Tj ET", page + 1);
  out->Begin();
  out->Print("<</Length %d>>\nstream\n%s\nendstream", length, content);
  out->End();
}

void WriteField(const Plan& plan, std::uint32_t field, Writer* out) {
  const std::uint32_t page = std::min(field / plan.perPage, plan.size.pages - 1);
  const auto place = static_cast<int>(field - page * plan.perPage);
  const int left = kLeft + place % kColumns * kColumnWidth;
  const int top = kTop - place / kColumns * kRowHeight;
  out->Begin();
  out->Print(
      "<</Type/Annot/Subtype/Widget/FT/Tx/T(%s)/F 4/P %u 0 R/Rect[%d %d %d %d]"
      "/DA(/Helv 9 Tf 0 g)/MK<</BC[0.5]/BG[1]>>/BS<</W 1/S/S>>>>",
      FieldName(field).c_str(), kFirstPage + 2 * page, left, top - kFieldHeight, left + kFieldWidth,
      top);
  out->End();
}

void WriteTrailer(Writer* out) {
  const std::size_t start = out->bytes.size();
  const std::size_t count = out->offsets.size() + 1;
  out->Print("xref\n0 %zu\n0000000000 65535 f \n", count);
  for (const std::size_t offset : out->offsets) out->Print("%010zu 00000 n \n", offset);
  out->Print("trailer\n<</Size %zu/Root %u 0 R>>\nstartxref\n%zu\n%%%%EOF\n", count, kCatalog,
             start);
}

// The check box is object 5, the list box object 6.
void WriteCheckAndListRoots(Writer* out) {
  out->Begin();
  out->Print("<</Type/Catalog/Pages 2 0 R/QuillForm 3 0 R>>");
  out->End();
  out->Begin();
  out->Print("<</Type/Pages/Count 1/Kids[4 0 R]>>");
  out->End();
  out->Begin();
  out->Print(
      "<</DA(/Helv 0 Tf 0 g)/DR<</Font<</Helv 7 0 R>>>>/Fields[5 0 R 6 0 R]"
      "/NeedAppearances true>>");
  out->End();
  out->Begin();
  out->Print("<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Annots[5 0 R 6 0 R]>>");
  out->End();
  out->Begin();
  out->Print(
      "<</Type/Annot/Subtype/Widget/FT/Btn/T(%s)/F 4/P 4 0 R/Rect[36 700 52 716]"
      "/MK<</CA(4)/BC[0]>>>>",
      kCheckName);
  out->End();
}

}  // namespace

std::string OptionName(std::uint32_t number) { return "option" + std::to_string(number + 1); }

std::string WriteCheckAndList(std::uint32_t options) {
  Writer out;
  out.bytes = "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n";
  WriteCheckAndListRoots(&out);
  out.Begin();
  out.Print(
      "<</Type/Annot/Subtype/Widget/FT/Ch/T(%s)/F 4/P 4 0 R/Rect[36 500 236 680]"
      "/MK<</BC[0]>>/Opt[",
      kListName);
  for (std::uint32_t i = 0; i < options; ++i) out.Print("(%s)", OptionName(i).c_str());
  out.Print("]>>");
  out.End();
  out.Begin();
  out.Print("<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>");
  out.End();
  WriteTrailer(&out);
  return std::move(out.bytes);
}

std::string FieldName(std::uint32_t number) { return "field" + std::to_string(number + 1); }

std::string WriteForm(const FormSize& size) {
  const Plan plan{size, (size.fields + size.pages - 1) / size.pages, kFirstPage + 2 * size.pages};
  Writer out;
  out.bytes.reserve(std::size_t{size.fields} * 220 + std::size_t{size.pages} * 400 + 4096);
  out.bytes = "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n";
  WriteRoots(plan, &out);
  for (std::uint32_t page = 0; page < size.pages; ++page) WritePage(plan, page, &out);
  for (std::uint32_t field = 0; field < size.fields; ++field) WriteField(plan, field, &out);
  WriteTrailer(&out);
  return std::move(out.bytes);
}

}  // namespace quillform::bench
