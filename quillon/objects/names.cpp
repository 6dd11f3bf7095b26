// Names between the text of files and atoms.
#include <array>
#include <cstring>

#include "quillon/core/operations.h"
#include "quillon/objects/document.h"
#include "quillon/objects/limits.h"

namespace quillon::objects {
namespace {

// Files repeat a few dozen names all the time: most look-ups end here.
struct KnownName {
  const char* text;
  std::size_t length;
  Atom atom;
};
constexpr std::size_t kKnownNames = 1024;

KnownName& KnownNameSlot(std::string_view text) {
  static std::array<KnownName, kKnownNames> known{};
  std::size_t hash = text.size();
  for (const char c : text) hash = hash * 31 + static_cast<unsigned char>(c);
  return known[(hash ^ hash >> 10) % kKnownNames];
}

NameCode FurtherName(Document& doc, const std::string& text) {
  const auto known = doc.furtherNameCodes.find(text);
  if (known != doc.furtherNameCodes.end()) return known->second;
  CheckNames(doc);
  const auto code = kFirstFurtherName + static_cast<NameCode>(doc.furtherNames.size());
  doc.furtherNames.push_back(text);
  doc.furtherNameCodes.emplace(text, code);
  return code;
}

}  // namespace

NameCode NameFromText(Document& doc, std::string_view text) {
  KnownName& known = KnownNameSlot(text);
  if (known.text != nullptr && known.length == text.size() &&
      std::memcmp(known.text, text.data(), text.size()) == 0) {
    return known.atom;
  }
  const std::string name(text);
  try {
    const Atom atom = core::AtomFromName(name.c_str());
    known = {core::NameFromAtom(atom), text.size(), atom};
    return atom;
  } catch (const HostFailure& failure) {
    if (failure.code != kErrorTooManyNames) throw;
  }
  return FurtherName(doc, name);
}

std::string_view NameText(const Document& doc, NameCode name) {
  if (name >= kFirstFurtherName) return doc.furtherNames.at(name - kFirstFurtherName);
  const char* text = core::NameFromAtom(static_cast<Atom>(name));
  return text == nullptr ? std::string_view() : std::string_view(text);
}

}  // namespace quillon::objects
