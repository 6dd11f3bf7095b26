#include "plugin/model/form_dict.h"

#include "plugin/model/keys.h"
#include "tests/plugin/appearance/appearance_host.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

struct FormDict : ModelHost {
  bool HasFormWith(const std::string& entries) {
    ForgetFormDict();
    Open({}, {.formEntries = entries});
    return DocumentHasForm(doc);
  }
};

TEST_F(FormDict, only_revisions_from_0_8_on_are_forms) {
  EXPECT_TRUE(HasFormWith(""));
  EXPECT_FALSE(HasFormWith("/QuillForm 0.5"));
  EXPECT_TRUE(HasFormWith("/QuillForm 0.8"));
  EXPECT_TRUE(HasFormWith("/QuillForm (0.1)"));
  Open({}, {.catalogEntries = "/QuillForm << /Fields 3 >>", .formKey = ""});
  EXPECT_FALSE(DocumentHasForm(doc));
}

TEST_F(FormDict, is_made_or_taken_over_from_an_older_revision_and_announced) {
  static int announced;
  announced = 0;
  Subscribe(kEventFormMade, [](FormEventRecord*, void*) { ++announced; });
  ASSERT_FALSE(HasFormWith("/QuillForm 0.5"));
  CreateFormDict(doc);
  EXPECT_EQ(Entry(Form(), "QuillForm"), "null");
  EXPECT_TRUE(DocumentHasForm(doc));
  Open({}, {.formKey = ""});
  const ObjectHandle form = CreateFormDict(doc);
  EXPECT_TRUE(Objects->Equal(form, FormDictOf(doc)));
  EXPECT_EQ(Entry(form, "Fields"), "[]");
  EXPECT_EQ(announced, 2);
}

TEST_F(FormDict, that_the_host_cannot_make_leaves_the_catalog_alone) {
  Open({}, {.formKey = ""});
  const FailingSlot failing(&Objects->DictPut);
  EXPECT_TRUE(IsNull(CreateFormDict(doc)));
  EXPECT_TRUE(IsNull(Form()));
}

}  // namespace
}  // namespace quillform
