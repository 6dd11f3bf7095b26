#include "tests/support/form_pdf.h"

namespace quillon::test {
namespace {

std::string Bracketed(const std::string& text) {
  return text.starts_with('/') ? "<< " + text + " >>" : text;
}

bool Contains(const std::string& text, const char* part) {
  return text.find(part) != std::string::npos;
}

bool IsWidget(const std::string& text) {
  return Contains(text, "/Subtype /Widget") || Contains(text, "/Subtype/Widget");
}

std::string StandardFont(const char* name, const char* encoding) {
  return std::string("<< /Type /Font /Subtype /Type1 /BaseFont /") + name + encoding + " >>";
}

void AddFonts(PdfBuilder& pdf) {
  constexpr const char* kEncoding = " /Encoding /WinAnsiEncoding";
  pdf.Add(StandardFont("Helvetica", kEncoding));
  pdf.Add(StandardFont("ZapfDingbats", ""));
  pdf.Add(StandardFont("Times-Roman", kEncoding));
  pdf.Add(StandardFont("Courier", kEncoding));
}

}  // namespace

std::string FormPdf(const std::vector<std::string>& fields, const FormPdfParts& parts) {
  std::string roots;
  std::string annots;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const std::string reference = Ref(kFirstField + static_cast<int>(i)) + " ";
    if (!Contains(fields[i], "/Parent")) roots += reference;
    if (IsWidget(fields[i])) annots += reference;
  }
  const std::string form =
      parts.formKey.empty() ? "" : "/" + parts.formKey + " " + Ref(kForm) + " ";
  PdfBuilder pdf;
  pdf.Add("<< /Type /Catalog /Pages " + Ref(kPages) + " " + form + parts.catalogEntries + " >>");
  pdf.Add("<< /Type /Pages /Kids [" + Ref(kPage) + "] /Count 1 >>");
  pdf.Add("<< /Type /Page /Parent " + Ref(kPages) + " /MediaBox [0 0 612 792] /Resources << >>" +
          " /Contents " + Ref(kContents) + " /Annots [" + annots + "] " + parts.pageEntries +
          " >>");
  pdf.Add("<< /Fields [" + roots + "] " + parts.defaultResources + " " + parts.defaultAppearance +
          " " + parts.formEntries + " >>");
  AddFonts(pdf);
  pdf.AddStream("", "q Q");
  for (const std::string& field : fields) pdf.Add(Bracketed(field));
  for (const std::string& object : parts.objects) pdf.Add(object);
  return pdf.Finish(kCatalog);
}

std::string WidgetField(const std::string& type, const std::string& name,
                        const std::string& entries, const std::string& rect) {
  return "/FT /" + type + " /T (" + name + ") /Type /Annot /Subtype /Widget /F 4 /P " + Ref(kPage) +
         " /Rect " + rect + " " + entries;
}

}  // namespace quillon::test
