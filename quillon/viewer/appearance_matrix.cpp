#include "quillon/viewer/appearance_matrix.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "quillon/document/names.h"
#include "quillon/document/object_reading.h"
#include "quillon/objects/operations.h"

namespace quillon::viewer {
namespace {

using document::Names;

struct Matrix {
  double a, b, c, d, e, f;
};

constexpr Matrix kIdentity = {1, 0, 0, 1, 0, 0};

struct Box {
  double left, bottom, right, top;
};

double ToDouble(Fixed value) { return static_cast<double>(value) / kFixedOne; }

Fixed ToFixed(double value) {
  const double scaled = std::round(value * kFixedOne);
  return static_cast<Fixed>(std::clamp<double>(scaled, std::numeric_limits<Fixed>::min(),
                                               std::numeric_limits<Fixed>::max()));
}

FixedMatrix ToFixed(const Matrix& m) {
  return {ToFixed(m.a), ToFixed(m.b), ToFixed(m.c), ToFixed(m.d), ToFixed(m.e), ToFixed(m.f)};
}

// First `first`, then `then`.
Matrix Concatenate(const Matrix& first, const Matrix& then) {
  return {
      first.a * then.a + first.b * then.c,          first.a * then.b + first.b * then.d,
      first.c * then.a + first.d * then.c,          first.c * then.b + first.d * then.d,
      first.e * then.a + first.f * then.c + then.e, first.e * then.b + first.f * then.d + then.f};
}

Matrix MatrixOf(ObjectHandle stream) {
  const ObjectHandle array = document::EntryOf(stream, Names().Matrix);
  if (!document::IsKind(array, ObjectKind::kArray)) return kIdentity;
  std::array<double, 6> numbers{};
  for (std::uint32_t i = 0; i < numbers.size(); ++i) {
    const auto number = document::NumberOf(objects::ArrayGet(array, i));
    if (!number) return kIdentity;
    numbers[i] = ToDouble(*number);
  }
  return {numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5]};
}

Box BoxOf(const FixedRect& rect) {
  return {ToDouble(rect.left), ToDouble(rect.bottom), ToDouble(rect.right), ToDouble(rect.top)};
}

// The smallest upright box around a box that went through a matrix.
Box BoundsThrough(const Matrix& m, const Box& box) {
  Box bounds = {HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
  for (const double x : {box.left, box.right}) {
    for (const double y : {box.bottom, box.top}) {
      const double u = m.a * x + m.c * y + m.e;
      const double v = m.b * x + m.d * y + m.f;
      bounds = {std::min(bounds.left, u), std::min(bounds.bottom, v), std::max(bounds.right, u),
                std::max(bounds.top, v)};
    }
  }
  return bounds;
}

// A box without extent cannot be stretched; it is only moved.
double Stretch(double from, double to) { return from > 0 ? to / from : 1; }

Matrix Fit(const Box& from, const Box& to) {
  const double x = Stretch(from.right - from.left, to.right - to.left);
  const double y = Stretch(from.top - from.bottom, to.top - to.bottom);
  return {x, 0, 0, y, to.left - from.left * x, to.bottom - from.bottom * y};
}

// Counter-clockwise by a multiple of 90 degrees about a point.
Matrix TurnAbout(double x, double y, std::uint16_t degrees) {
  static constexpr int kSines[] = {0, 1, 0, -1};
  const double sine = kSines[degrees / 90 % 4];
  const double cosine = kSines[(degrees / 90 + 1) % 4];
  return {cosine, sine, -sine, cosine, x - cosine * x + sine * y, y - sine * x - cosine * y};
}

}  // namespace

AppearanceFit FitAppearance(ObjectHandle stream, const FixedRect& rect, std::uint16_t rotation,
                            bool upright) {
  const Matrix own = MatrixOf(stream);
  const FixedRect sameSize = {0, rect.top - rect.bottom, rect.right - rect.left, 0};
  const FixedRect box =
      document::RectOf(document::EntryOf(stream, Names().BBox)).value_or(sameSize);
  Matrix placement = Fit(BoundsThrough(own, BoxOf(box)), BoxOf(rect));
  if (upright && rotation != 0) {
    placement =
        Concatenate(placement, TurnAbout(ToDouble(rect.left), ToDouble(rect.top), rotation));
  }
  return {ToFixed(Concatenate(own, placement)), ToFixed(placement)};
}

}  // namespace quillon::viewer
