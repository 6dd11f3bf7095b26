#include "plugin/model/keys.h"

#include <array>

#include "plugin/host/host.h"

namespace quillform {

namespace key {
#define QUILLFORM_DEFINE_KEY(Role, spelling) Atom Role = 0;
QUILLFORM_KEYS(QUILLFORM_DEFINE_KEY)
#undef QUILLFORM_DEFINE_KEY
}  // namespace key

namespace {

struct KeyRow {
  Atom* atom;
  const char* spelling;
};

#define QUILLFORM_KEY_ROW(Role, spelling) KeyRow{&key::Role, spelling},
constexpr KeyRow kKeyRows[] = {QUILLFORM_KEYS(QUILLFORM_KEY_ROW)};
#undef QUILLFORM_KEY_ROW

static_assert(std::size(kKeyRows) == 153);

}  // namespace

void RegisterKeyAtoms() {
  for (const KeyRow& row : kKeyRows) {
    *row.atom = Core->AtomFromName(row.spelling);
  }
}

Atom FlagsKey(std::uint16_t index) {
  switch (index) {
    case 0:
      return key::F;
    case 1:
      return key::Ff;
    default:
      return kNoAtom;
  }
}

Atom InheritableKey(std::uint32_t bit) {
  switch (bit) {
    case kBitDV:
      return key::DV;
    case kBitV:
      return key::V;
    case kBitDA:
      return key::DA;
    case kBitOH:
      return key::OH;
    case kBitDR:
      return key::DR;
    case kBitQ:
      return key::Q;
    default:
      return kNoAtom;
  }
}

}  // namespace quillform
