#include "plugin/appearance/check_styles.h"

namespace quillform {

Fixed MarkHeight(char mark, Fixed size) {
  std::int32_t height = kCheckStyles[0].height;
  for (const CheckStyle& style : kCheckStyles) {
    if (style.mark == mark) height = style.height;
  }
  return Support->FixedMul(Support->FixedDiv(height * kFixedOne, 1000 * kFixedOne), size);
}

}  // namespace quillform
