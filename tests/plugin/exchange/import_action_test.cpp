#include "plugin/exchange/import_action.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "plugin/model/field_values.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/viewer/open_view.h"
#include "tests/plugin/exchange/data_host.h"

namespace quillform {
namespace {

struct ImportAction : DataHost {
  ImportAction() {
    const std::string pdf = quillon::test::FormPdf(
        {quillon::test::WidgetField("Tx", "a")},
        {.objects = {"<< /S /ImportData /F (dir/data.fdf) >>", "<< /S /URI /F (dir/data.fdf) >>"}});
    view = quillon::OpenViewOfFile(Write("form.pdf", pdf));
    doc = Viewer->DocOf(view);
    objects = Document->ObjectDocOf(doc);
    std::filesystem::create_directory(folder.File("dir"));
  }

  ActionHandle Action(std::uint32_t index) {
    return Document->ActionFromObject(
        quillon::ObjectByNumber(objects, quillon::test::kFirstField + 1 + index));
  }
};

TEST_F(ImportAction, a_missing_file_is_asked_for) {
  PerformImportData(Action(0), view);
  EXPECT_EQ(messages, std::vector<std::string>{
                          "FDF \"data.fdf\" was not found. Would you like to browse for it?"});
  EXPECT_EQ(questions, 0);
  answer = quillon::kAnswerYes;
  chosenFile = Write("other.fdf", FdfOf("<< /T (a) /V (2) >>"));
  PerformImportData(Action(0), view);
  EXPECT_EQ(ValueOf("a"), "(2)");
}

TEST_F(ImportAction, editing_takes_form_data_only) {
  chosenFile = Write("text.txt", "text");
  EditImportData(Action(0), view);
  EXPECT_EQ(messages.size(), 1u);
  EXPECT_EQ(questions, 2);
  const ObjectHandle dict = Document->ActionDict(Action(0));
  EXPECT_EQ(Entry(dict, "F"), "(dir/data.fdf)");
  chosenFile = Write("new.fdf", FdfOf(""));
  EditImportData(Action(0), view);
  EXPECT_EQ(Entry(Objects->DictGet(dict, Core->AtomFromName("F")), "F"), "(new.fdf)");
}

}  // namespace
}  // namespace quillform
