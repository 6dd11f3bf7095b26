// The paths of the writer: rectangles, circles and the bands of bevels.
#include "plugin/appearance/content_writer.h"
#include "plugin/appearance/fixed_math.h"

namespace quillform {

namespace {

// Distance of a cubic curve's control points from its ends, for a quarter of the unit circle.
constexpr Fixed kQuarterCircle = 36196;

}  // namespace

void WriteRect(ContentWriter& writer, Fixed x, Fixed y, Fixed width, Fixed height, char op) {
  const char painting[] = {op, '\0'};
  WriteOp(writer, "%f %f %f %f re %c", x, y, width, height, painting);
}

void WriteCircle(ContentWriter& writer, Fixed cx, Fixed cy, Fixed r, char op) {
  const Fixed k = Support->FixedMul(kQuarterCircle, r);
  const char painting[] = {op, '\0'};
  WriteOp(writer, "q 1 0 0 1 %f %f cm", cx, cy);
  WriteOp(writer, "%f 0 m", r);
  WriteOp(writer, "%f %f %f %f 0 %f c", r, k, k, r, r);
  WriteOp(writer, "%f %f %f %f %f 0 c", -k, r, -r, k, -r);
  WriteOp(writer, "%f %f %f %f 0 %f c", -r, -k, -k, -r, -r);
  WriteOp(writer, "%f %f %f %f %f 0 c %c", k, -r, r, -k, r, painting);
  WriteOp(writer, "Q");
}

void WriteHalfCircle(ContentWriter& writer, Fixed cx, Fixed cy, Fixed r, bool upperLeft) {
  const Fixed k = Support->FixedMul(kQuarterCircle, r);
  WriteOp(writer, "q 0.7071 0.7071 -0.7071 0.7071 %f %f cm", cx, cy);
  if (upperLeft) {
    WriteOp(writer, "%f 0 m", r);
    WriteOp(writer, "%f %f %f %f 0 %f c", r, k, k, r, r);
    WriteOp(writer, "%f %f %f %f %f 0 c S", -k, r, -r, k, -r);
  } else {
    WriteOp(writer, "%f 0 m", -r);
    WriteOp(writer, "%f %f %f %f 0 %f c", -r, -k, -k, -r, -r);
    WriteOp(writer, "%f %f %f %f %f 0 c S", k, -r, r, -k, r);
  }
  WriteOp(writer, "Q");
}

void WriteBevelPolygon(ContentWriter& writer, const FixedRect& rect, Fixed depth, bool upperLeft) {
  const auto [left, top, right, bottom] = rect;
  const FixedRect inner{FixedAdd(left, depth), FixedSub(top, depth), FixedSub(right, depth),
                        FixedAdd(bottom, depth)};
  const char* const band = "%f %f m %f %f l %f %f l %f %f l %f %f l %f %f l f";
  if (upperLeft) {
    WriteOp(writer, band, left, bottom, left, top, right, top, inner.right, inner.top, inner.left,
            inner.top, inner.left, inner.bottom);
  } else {
    WriteOp(writer, band, right, top, right, bottom, left, bottom, inner.left, inner.bottom,
            inner.right, inner.bottom, inner.right, inner.top);
  }
}

}  // namespace quillform
