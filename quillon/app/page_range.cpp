#include "quillon/app/page_range.h"

#include <charconv>
#include <optional>
#include <string_view>

#include "quillon/app/console.h"
#include "quillon/core/failure.h"

namespace quillon::app {
namespace {

std::optional<std::uint32_t> NumberIn(std::string_view text, std::uint32_t otherwise) {
  if (text.empty()) return otherwise;
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace

PageRange ParsePageRange(const std::string& text, std::uint32_t pageCount) {
  if (text.empty() && pageCount > 0) return {0, pageCount - 1};
  const std::string_view whole(text);
  const std::size_t dash = whole.find('-');
  const bool open = dash != std::string_view::npos;
  const auto first = NumberIn(whole.substr(0, dash), open ? 1 : 0);
  const auto last = open ? NumberIn(whole.substr(dash + 1), pageCount) : first;
  if (!first || !last || whole == "-") {
    Fail(kErrorBadParameter, "\"" + Printable(text) + "\" is no range of pages, such as 2-5");
  }
  if (*first == 0 || *first > *last || *last > pageCount) {
    Fail(kErrorBadParameter, "there are no pages " + Printable(text) + ": the document has " +
                                 std::to_string(pageCount));
  }
  return {*first - 1, *last - 1};
}

}  // namespace quillon::app
