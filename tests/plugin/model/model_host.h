// What the tests of the form model share: the plug-in in a host, and documents with forms.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "plugin/host/form_events.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/form_hooks.h"
#include "tests/plugin/appearance/show_object.h"
#include "tests/support/form_pdf.h"
#include "tests/support/test_host.h"

namespace quillform {

struct ModelHost : testing::Test {
  ModelHost();
  ~ModelHost() override;

  // A new document with these fields; those without Parent stand in Fields.
  void Open(const std::vector<std::string>& fields, const quillon::test::FormPdfParts& parts = {});
  // The same, with every field loaded.
  void Load(const std::vector<std::string>& fields, const quillon::test::FormPdfParts& parts = {});
  // The same as Open, shown in a view, so that notifications are sent.
  void Show(const std::vector<std::string>& fields, const quillon::test::FormPdfParts& parts = {});

  ObjectHandle Form();
  ObjectHandle FieldsArray();
  ObjectHandle Field(std::uint32_t index);   // of Fields
  ActionHandle Action(std::uint32_t index);  // the object `index` after the first field
  FieldNode Node(const char* name) { return FindFieldByName(doc, name); }
  std::uint32_t WidgetCount();
  AnnotHandle Widget(std::uint32_t index);  // on the page

  ObjectHandle Text(const std::string& bytes);
  ObjectHandle Name(const char* text);

  quillon::test::TestHost host;
  Guard guard;  // what a test did not expect fails the test, not the process
  DocHandle doc = nullptr;
  ObjectDoc objects = nullptr;
  DocView view = nullptr;
};

// A field "pair" with two widgets, as fields 0 to 2 of a document made by Open.
std::vector<std::string> TwoWidgets(const std::string& entries = "");

// "12 0 R" of field `index` of a document made by Open.
std::string FieldRef(int index);

ObjectHandle KidOf(ObjectHandle dict, std::uint32_t index);
std::string FullName(ObjectHandle dict);  // "(none)" without one
std::string Entry(ObjectHandle dict, const char* key);

void Subscribe(std::uint32_t event, FormEventNotify notify);

// The names of all nodes in the order of a walk, separated by blanks.
std::string WalkedNames(DocHandle doc, bool terminalOnly, bool onePerName);

}  // namespace quillform
