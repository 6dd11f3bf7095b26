#include <png.h>

#include "tests/end_to_end/fields_of.h"

namespace quillon::test {
namespace {

// At 72 dots per inch, one pixel a point: rows from the top, a word a pixel.
struct Picture {
  explicit Picture(const std::string& document) {
    const ProcessResult result = Quillon({"render", document, "--dpi", "72", "-o", "-"});
    EXPECT_EQ(result.status, 0) << result.err;
    image.version = PNG_IMAGE_VERSION;
    EXPECT_NE(png_image_begin_read_from_memory(&image, result.out.data(), result.out.size()), 0);
    image.format = PNG_FORMAT_RGBA;
    pixels.resize(std::size_t{image.width} * image.height);
    EXPECT_NE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr), 0);
  }

  png_image image{};
  std::vector<std::uint32_t> pixels;
};

// Whether the widget has the pixel, or has it one pixel outside.
bool Covers(const Json& widget, double x, double y) {
  const Json& rect = widget["rect"];
  return x > rect[0].get<double>() - 2 && x < rect[2].get<double>() + 1 &&
         y > rect[1].get<double>() - 2 && y < rect[3].get<double>() + 1;
}

TEST(RenderCommand, ChangesOnlyTheWidgetsThatWereFilled) {
  const TemporaryFolder folder;
  const std::string filled = folder.File("filled.pdf");
  ASSERT_EQ(Quillon({"fill", ExampleForm(), "applicant.name=Ada Lovelace", "office.stamp=Received",
                     "membership.motto=Poetical science", "-o", filled})
                .status,
            0);
  const Picture before(ExampleForm()), after(filled);
  ASSERT_EQ(before.image.width, 595u);
  ASSERT_EQ(before.image.height, 842u);
  ASSERT_EQ(after.pixels.size(), before.pixels.size());
  std::vector<Json> widgets;
  const Json fields = FieldsOf(filled);
  for (const char* name : {"applicant.name", "office.stamp", "membership.motto"}) {
    const Json field = FieldNamed(fields, name);
    widgets.insert(widgets.end(), field["widgets"].begin(), field["widgets"].end());
  }
  ASSERT_EQ(widgets.size(), 4u);
  std::vector<int> changed(widgets.size() + 1);  // in each widget, and elsewhere
  for (std::size_t at = 0; at < after.pixels.size(); ++at) {
    if (before.pixels[at] == after.pixels[at]) continue;
    const auto x = static_cast<double>(at % 595), y = 841 - static_cast<double>(at / 595);
    const auto place = std::find_if(widgets.begin(), widgets.end(),
                                    [&](const Json& widget) { return Covers(widget, x, y); });
    ++changed[static_cast<std::size_t>(place - widgets.begin())];
  }
  EXPECT_EQ(changed.back(), 0) << "something else changed";
  changed.pop_back();
  EXPECT_GT(*std::min_element(changed.begin(), changed.end()), 30);
}

}  // namespace
}  // namespace quillon::test
