#include "tests/plugin/exchange/data_host.h"

#include <cstring>
#include <filesystem>
#include <fstream>

#include "plugin/exchange/fdf_apply.h"
#include "plugin/exchange/fdf_reader.h"
#include "plugin/exchange/fdf_writer.h"
#include "plugin/host/dialog_hooks.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/viewer/messages.h"

namespace quillform {

namespace {

DataHost* current = nullptr;

bool ChooseFile(OPENFILENAMEA* question) {
  ++current->questions;
  const std::string file = std::exchange(current->chosenFile, {});
  if (file.empty() || file.size() >= question->nMaxFile) return false;
  std::memcpy(question->lpstrFile, file.c_str(), file.size() + 1);
  return true;
}

}  // namespace

DataHost::DataHost() {
  current = this;
  dialogHooks = {&ChooseFile, &ChooseFile};
  quillon::SetMessageRoutine([this](const quillon::Message& message) {
    messages.push_back(message.text);
    return answer != 0 ? answer : quillon::CautiousAnswer(message.flags);
  });
}

DataHost::~DataHost() {
  quillon::SetMessageRoutine({});
  dialogHooks = {};
  current = nullptr;
}

std::string DataHost::Write(const char* name, const std::string& bytes) {
  const std::string file = folder.File(name);
  std::ofstream(file, std::ios::binary) << bytes;
  return file;
}

bool DataHost::Exists(const std::string& file) { return std::filesystem::exists(file); }

OwnedPath DataHost::PathOf(const std::string& file) {
  return OwnedPath(Support->PathFromPlatform(file.c_str()));
}

std::string DataHost::FdfWith(const std::string& entries) {
  return "%FDF-1.2\n1 0 obj\n<< /FDF << " + entries +
         " >> >>\nendobj\ntrailer\n<< /Root 1 0 R >>\n";
}

bool DataHost::Import(const std::string& fields) {
  const OwnedFdf fdf(quillon::OpenPdfBytes(FdfOf(fields), {kFdfHeader, {}}, nullptr));
  return ImportFDF(doc, fdf.doc);
}

std::string DataHost::Exported(bool exportCommand, bool includeEmpty, ObjectHandle list,
                               bool inclusion) {
  const OwnedFdf fdf(
      CreateFDFFromForm(doc, list, inclusion, includeEmpty, exportCommand, true, nullptr));
  return ShowObject(Objects->DictGet(FdfDictOf(fdf.doc), key::Fields));
}

std::string DataHost::ValueOf(const char* name) { return ShowObject(GetFieldValue(Node(name))); }

}  // namespace quillform
