#include <cmath>

#include "tests/end_to_end/fields_of.h"
#include "tests/end_to_end/picture.h"

namespace quillon::test {
namespace {

constexpr double kDpi = 72;  // one pixel a point
constexpr double kPageHeight = 842;

// The pixels of a widget, one more on each side.
Area AreaOf(const Json& widget) {
  const Json& rect = widget["rect"];
  return {static_cast<int>(std::floor(rect[0].get<double>())) - 1,
          static_cast<int>(std::floor(kPageHeight - rect[3].get<double>())) - 1,
          static_cast<int>(std::ceil(rect[2].get<double>())) + 1,
          static_cast<int>(std::ceil(kPageHeight - rect[1].get<double>())) + 1};
}

struct RenderCommand : testing::Test {
  Picture Render(const std::string& document) {
    const ProcessResult result = Quillon({"render", document, "--dpi", "72", "-o", "-"});
    EXPECT_EQ(result.status, 0) << result.err;
    return DecodePng(result.out);
  }

  TempFolder folder;
};

TEST_F(RenderCommand, ChangesOnlyTheWidgetsThatWereFilled) {
  const std::string filled = folder.File("filled.pdf");
  ASSERT_EQ(Quillon({"fill", ExampleForm(), "applicant.name=Ada Lovelace", "office.stamp=Received",
                     "membership.motto=Poetical science", "-o", filled})
                .status,
            0);
  const Picture before = Render(ExampleForm()), after = Render(filled);
  ASSERT_EQ(before.width, 595);
  ASSERT_EQ(before.height, kPageHeight);
  ASSERT_EQ(after.width, before.width);
  std::vector<Area> areas;
  const Json fields = FieldsOf(filled);
  for (const char* name : {"applicant.name", "office.stamp", "membership.motto"}) {
    const Json field = FieldNamed(fields, name);
    EXPECT_FALSE(field["widgets"].empty());
    for (const Json& widget : field["widgets"]) {
      areas.push_back(AreaOf(widget));
      EXPECT_GT(DifferencesInside(before, after, areas.back()), 30) << name;
    }
  }
  EXPECT_EQ(DifferencesOutside(before, after, areas), 0);
}

}  // namespace
}  // namespace quillon::test
