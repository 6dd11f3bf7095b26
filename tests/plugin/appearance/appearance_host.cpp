#include "tests/plugin/appearance/appearance_host.h"

#include "plugin/frame/plugin_main.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/keys.h"
#include "tests/support/pdf_builder.h"

namespace quillform {

namespace {

using quillon::test::PdfBuilder;
using quillon::test::Ref;

std::string changes;
decltype(Document->AnnotWillChange) announceWill;
decltype(Document->AnnotDidChange) announceDid;

void NoteWill(AnnotHandle annot, Atom key) {
  changes += std::string("will ") + Core->NameFromAtom(key) + "; ";
  announceWill(annot, key);
}

void NoteDid(AnnotHandle annot, Atom key, FailureCode error) {
  changes += std::string("did ") + Core->NameFromAtom(key) + " " + std::to_string(error) + "; ";
  announceDid(annot, key, error);
}

// The catalog of a document with one empty page and these entries.
int AddCatalog(PdfBuilder& pdf, const std::string& entries) {
  const int pages = pdf.Reserve();
  const int page = pdf.Add("<< /Type /Page /Parent " + Ref(pages) + " /MediaBox [0 0 612 792] >>");
  pdf.Set(pages, "<< /Type /Pages /Count 1 /Kids [" + Ref(page) + "] >>");
  return pdf.Add("<< /Type /Catalog /Pages " + Ref(pages) + " " + entries + " >>");
}

}  // namespace

AppearanceHost::AppearanceHost() : host({&PlugInMain, nullptr, {}}) { Open("null"); }

ObjectHandle AppearanceHost::Open(const std::string& objectText,
                                  const std::vector<TestStream>& streams) {
  PdfBuilder pdf;
  for (const TestStream& stream : streams) pdf.AddStream(stream.entries, stream.data);
  const int probe = pdf.Add(objectText);
  const int catalog = AddCatalog(pdf, "/Probe " + Ref(probe));
  doc = quillon::test::OpenTestDocument(pdf.Finish(catalog));
  objects = Document->ObjectDocOf(doc);
  return Objects->DictGet(Objects->DocRoot(objects), Core->AtomFromName("Probe"));
}

void AppearanceHost::OpenForm(const std::string& entries, const std::vector<std::string>& fields) {
  PdfBuilder pdf;
  std::string kids;
  for (const std::string& field : fields) kids += Ref(pdf.Add(field)) + " ";
  const int form = pdf.Add("<< /Fields [" + kids + "] " + entries + " >>");
  const int catalog = AddCatalog(pdf, "/QuillForm " + Ref(form));
  doc = quillon::test::OpenTestDocument(pdf.Finish(catalog));
  objects = Document->ObjectDocOf(doc);
}

ObjectHandle AppearanceHost::Form() { return FormDictOf(doc); }

ObjectHandle AppearanceHost::Field(std::uint32_t index) {
  return Objects->ArrayGet(Objects->DictGet(Form(), key::Fields), index);
}

ChangeLog::ChangeLog() {
  changes.clear();
  announceWill = std::exchange(Document->AnnotWillChange, &NoteWill);
  announceDid = std::exchange(Document->AnnotDidChange, &NoteDid);
}

ChangeLog::~ChangeLog() {
  Document->AnnotWillChange = announceWill;
  Document->AnnotDidChange = announceDid;
}

const std::string& ChangeLog::Text() const { return changes; }

}  // namespace quillform
