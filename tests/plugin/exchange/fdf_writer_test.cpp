#include "plugin/exchange/fdf_writer.h"

#include <gtest/gtest.h>

#include "plugin/exchange/fdf_reader.h"
#include "plugin/exchange/form_data_commands.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"
#include "plugin/resources/error_texts.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "tests/plugin/appearance/appearance_host.h"
#include "tests/plugin/exchange/data_host.h"

namespace quillform {
namespace {

using quillon::test::WidgetField;

struct FdfWriter : DataHost {
  // A list of the first fields.
  ObjectHandle ListOf(std::uint32_t count) {
    const ObjectHandle list = Objects->NewArray(objects, false, count);
    for (std::uint32_t i = 0; i < count; ++i) Objects->ArrayPut(list, i, Field(i));
    return list;
  }
};

TEST_F(FdfWriter, fields_are_in_ascending_order_and_those_of_one_parent_share_an_entry) {
  Open({WidgetField("Tx", "name", "/V (Ann)"), "/T (a) /Kids [13 0 R 14 0 R]",
        "/T (ab) /Kids [15 0 R]", "/FT /Tx /T (y) /Parent 11 0 R /V (2)",
        "/FT /Tx /T (x) /Parent 11 0 R /V (1)", "/FT /Tx /T (y) /Parent 12 0 R /V (3)"});
  EXPECT_EQ(Exported(true),
            "[<< /Kids [<< /T (x) /V (1) >> << /T (y) /V (2) >>] /T (a) >> "
            "<< /Kids [<< /T (y) /V (3) >>] /T (ab) >> << /T (name) /V (Ann) >>]");
}

TEST_F(FdfWriter, what_is_left_out_depends_on_who_asks) {
  Open({WidgetField("Tx", "secret", "/V (s) /Ff 8192"),
        WidgetField("Tx", "private", "/V (p) /Ff 4"), WidgetField("Tx", "empty"),
        WidgetField("Btn", "off")});
  // The user's own export has what brings the form back to where it is.
  EXPECT_EQ(Exported(true), "[<< /T (off) /V /Off >> << /T (secret) /V (s) >>]");
  EXPECT_EQ(Exported(false), "null");
  EXPECT_EQ(Exported(false, true), "[<< /T (empty) >> << /T (off) >>]");
}

TEST_F(FdfWriter, a_list_selects_fields_and_groups_or_leaves_them_out) {
  Open({WidgetField("Tx", "a", "/V (1)"), "/T (g) /Kids [13 0 R]",
        "/FT /Tx /T (w) /V (2) /Kids [14 0 R 15 0 R]", "/FT /Tx /T (x) /Parent 11 0 R /V (3)",
        "/Subtype /Widget /Rect [0 0 9 9] /Parent 12 0 R",
        "/Subtype /Widget /Rect [0 0 9 9] /Parent 12 0 R"});
  const ObjectHandle list = ListOf(3);
  Objects->ArrayInsert(list, 0, Objects->NewInteger(objects, false, 7));
  const std::string a = "<< /T (a) /V (1) >>";
  const std::string g = "<< /Kids [<< /T (x) /V (3) >>] /T (g) >>";
  EXPECT_EQ(Exported(true, false, list), "[" + a + " " + g + " << /T (w) /V (2) >>]");
  EXPECT_EQ(Exported(true, false, ListOf(1)), "[" + a + "]");
  // A field that is shown twice is left out as a whole; a group has no value to leave out.
  EXPECT_EQ(Exported(true, false, list, false), "[" + g + "]");
}

TEST_F(FdfWriter, a_field_tree_that_leads_back_to_itself_ends) {
  Open({"/T (g) /Kids [11 0 R 11 0 R]", "/T (h) /Parent 10 0 R /Kids [10 0 R 12 0 R]",
        "/FT /Tx /T (x) /Parent 11 0 R /V (1)"});
  EXPECT_EQ(Exported(true, false, ListOf(1)),
            "[<< /Kids [<< /Kids [<< /T (x) /V (1) >>] /T (h) >>] /T (g) >>]");
}

TEST_F(FdfWriter, the_document_is_named_relative_to_the_file_and_identified) {
  const std::string form = Write("form.pdf", quillon::test::FormPdf({}));
  view = quillon::OpenViewOfFile(form);
  doc = Viewer->DocOf(view);
  const std::string base = folder.File("data.fdf");
  const std::string platformForm = std::filesystem::path(form).make_preferred().string();
  for (const char* given : {base.c_str(), static_cast<const char*>(nullptr)}) {
    const OwnedFdf fdf(CreateFDFFromForm(doc, kNullObject, true, false, true, true, given));
    const ObjectHandle dict = FdfDictOf(fdf.doc);
    EXPECT_EQ(Entry(dict, "F"), given != nullptr ? "(form.pdf)" : "(" + platformForm + ")");
    EXPECT_EQ(Objects->ArrayLength(Objects->DictGet(dict, key::ID)), 2u);
    EXPECT_FALSE(Objects->DictKnown(dict, key::Fields));
    EXPECT_TRUE(FdfIsFor(dict, doc));
  }
}

TEST_F(FdfWriter, the_export_command_writes_a_file_that_the_reader_takes) {
  Show({WidgetField("Tx", "a", "/V (1)")});
  const std::string file = chosenFile = folder.File("out.fdf");
  ExportFormData();
  const OwnedPath path = PathOf(file);
  ASSERT_TRUE(FileIsFdf(path.get()));
  const OwnedFdf fdf(OpenFdf(path.get()));
  EXPECT_EQ(Entry(FdfDictOf(fdf.doc), "Fields"), "[<< /T (a) /V (1) >>]");
}

TEST_F(FdfWriter, a_file_that_cannot_be_written_whole_is_gone) {
  Show({WidgetField("Tx", "a", "/V (1)")});
  const FailingSlot failing(&Objects->SaveDocument);
  const std::string file = chosenFile = folder.File("cut.fdf");
  EXPECT_EQ(CatchFailure([] { ExportFormData(); }), quillon::kErrorGeneral);
  EXPECT_FALSE(Exists(file));
}

}  // namespace
}  // namespace quillform
