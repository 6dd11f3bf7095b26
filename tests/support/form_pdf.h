// One-page documents with forms, made from the texts of their fields.
#pragma once

#include <string>
#include <vector>

#include "tests/support/pdf_builder.h"

namespace quillon::test {

// The numbers that the objects of a FormPdf have. Field i (from 0) is kFirstField + i.
enum FormPdfObject : int {
  kCatalog = 1,
  kPages = 2,
  kPage = 3,
  kForm = 4,
  kHelv = 5,
  kZaDb = 6,
  kTiRo = 7,
  kCour = 8,
  kContents = 9,
  kFirstField = 10,
};

// What differs from the usual document. Entries are written as in a dictionary.
struct FormPdfParts {
  std::string formEntries = {};     // further ones of the form dictionary
  std::string pageEntries = {};     // further ones of the page, such as "/Rotate 90"
  std::string catalogEntries = {};  // further ones of the catalog
  std::string defaultAppearance = "/DA (/Helv 0 Tf 0 g )";
  std::string defaultResources =
      "/DR << /Font << /Helv 5 0 R /ZaDb 6 0 R /TiRo 7 0 R /Cour 8 0 R >> >>";
  std::string formKey = "QuillForm";      // empty: the catalog has no form dictionary
  std::vector<std::string> objects = {};  // further objects, numbered after the fields
};

// The document. Each field is the text of a dictionary; one that starts with '/' gets its brackets
// here. Those without a Parent stand in Fields, those that are widgets in the page's Annots. The
// page is 612 by 792.
std::string FormPdf(const std::vector<std::string>& fields, const FormPdfParts& parts = {});

// The entries of a field that is its own widget, such as WidgetField("Tx", "name", "/V (text)").
std::string WidgetField(const std::string& type, const std::string& name,
                        const std::string& entries = "",
                        const std::string& rect = "[100 700 300 720]");

}  // namespace quillon::test
