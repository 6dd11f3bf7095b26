#include "plugin/exchange/fdf_writer.h"

#include <new>
#include <string>

#include "plugin/appearance/form_parts.h"
#include "plugin/exchange/fdf_fields.h"
#include "plugin/exchange/fdf_reader.h"
#include "plugin/exchange/path_text.h"
#include "plugin/host/owned_files.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/keys.h"
#include "plugin/resources/error_texts.h"

namespace quillform {

namespace {

constexpr std::uint32_t kFileIdSize = 33;

void PutText(ObjectHandle dict, Atom key, ObjectDoc doc, const std::string& text) {
  Objects->DictPut(
      dict, key,
      Objects->NewString(doc, false, text.data(), static_cast<std::uint32_t>(text.size())));
}

// A document that was never saved has no name to give.
void PutFileName(ObjectHandle dict, ObjectDoc fdf, DocHandle doc, const char* basePath) {
  const OwnedPath path(AcquireDocumentPath(doc));
  if (path == nullptr) return;
  const OwnedPath base(basePath != nullptr ? Support->PathFromPlatform(basePath) : nullptr);
  PutText(dict, key::F, fdf,
          base != nullptr ? RelativeTextOfPath(path.get(), base.get()) : TextOfPath(path.get()));
}

void PutFileId(ObjectHandle dict, ObjectDoc fdf, DocHandle doc) {
  const ObjectHandle array = PutNewArray(dict, key::ID, fdf, 2);
  for (std::uint16_t i = 0; i < 2; ++i) {
    char id[kFileIdSize];
    const std::uint32_t length = Document->GetFileID(doc, i, id, sizeof id);
    Objects->ArrayPut(array, i, Objects->NewString(fdf, false, id, length));
  }
}

void FillFdf(ObjectDoc fdf, DocHandle doc, const FieldCollection& collection,
             const char* basePath) {
  const bool hasFields = !collection.fields.empty();
  const ObjectHandle dict = PutNewDict(Objects->DocRoot(fdf), key::FDF, fdf, hasFields ? 3 : 2);
  if (hasFields) {
    NewObject fields(MakeFieldsArray(fdf, collection.fields, collection.exportCommand));
    Objects->DictPut(dict, key::Fields, fields.handle);
    fields.Release();
  }
  PutFileName(dict, fdf, doc, basePath);
  PutFileId(dict, fdf, doc);
}

void CollectForFdf(DocHandle doc, ObjectHandle list, bool inclusion, FieldCollection* collection) {
  try {
    SelectFields(doc, list, inclusion, collection);
  } catch (const std::bad_alloc&) {
    Raise(ownErrors.exportFailed);
  }
  SortCollectedFields(collection);
}

void Save(ObjectDoc fdf, FileHandle file) {
  quillon::SaveDocumentParams params{};
  params.header = kFdfHeader;
  Objects->SaveDocument(fdf, file, quillon::kSaveWhole, &params);
}

}  // namespace

ObjectDoc CreateFDFFromForm(DocHandle doc, ObjectHandle list, bool inclusion, bool includeEmpty,
                            bool exportCommand, bool loadAll, const char* basePath) {
  if (loadAll) LoadAllFields(doc);
  FieldCollection collection;
  collection.includeEmpty = includeEmpty;
  collection.exportCommand = exportCommand;
  collection.listMayName = true;
  CollectForFdf(doc, list, inclusion, &collection);
  OwnedFdf fdf(Objects->NewDocument());
  FillFdf(fdf.doc, doc, collection, basePath);
  return fdf.Release();
}

quillon::FileHandle WriteFDF(ObjectDoc fdf, PathHandle path) {
  const OwnedFdf owned(fdf);
  FileHandle file = nullptr;
  if (Support->OpenFile(path, quillon::kOpenReplace, &file) != quillon::kErrorNone) {
    Raise(quillon::kErrorOpenFile);
  }
  const FailureCode failure = CatchFailure([&] { Save(fdf, file); });
  if (failure == quillon::kErrorNone) return file;
  DropFailures([&] { Support->CloseFile(file); });
  DropFailures([&] { Support->DeleteFile(path); });
  Raise(failure);
}

}  // namespace quillform
