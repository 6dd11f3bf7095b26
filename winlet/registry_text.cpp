#include <algorithm>

#include "winlet/registry_file.h"

namespace winlet {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kHexDigits = "0123456789ABCDEF";
constexpr std::string_view kMarksInNames = "=[]#";

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

int HexValue(char digit) {
  const char capital = digit >= 'a' && digit <= 'f' ? static_cast<char>(digit - 'a' + 'A') : digit;
  const std::size_t value = kHexDigits.find(capital);
  return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

// A percent sign without two digits stands for itself; a NUL ends the text, as it does in memory.
std::string Unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool mark = text[i] == '%' && text.size() - i > 2;
    const int high = mark ? HexValue(text[i + 1]) : -1;
    const int low = mark ? HexValue(text[i + 2]) : -1;
    if (high < 0 || low < 0) {
      plain.push_back(text[i]);
      continue;
    }
    plain.push_back(static_cast<char>(high * 16 + low));
    i += 2;
  }
  return plain.substr(0, plain.find('\0'));
}

std::string Escaped(std::string_view text, std::string_view marks) {
  std::string written;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool atEnd = i == 0 || i + 1 == text.size();
    const bool plain = byte >= ' ' && byte < 0x7F && text[i] != '%' && !(text[i] == ' ' && atEnd) &&
                       marks.find(text[i]) == std::string_view::npos;
    if (plain) {
      written.push_back(text[i]);
    } else {
      written += {'%', kHexDigits[byte >> 4], kHexDigits[byte & 15]};
    }
  }
  return written;
}

char SmallLetter(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool SameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return SmallLetter(x) == SmallLetter(y); });
}

std::string_view TakeLine(std::string_view& rest) {
  const std::size_t end = rest.find('\n');
  std::string_view line = rest.substr(0, end);
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return Trimmed(line);
}

// The place of each setting, so that a file of many is read in one pass.
bool ByName(const RegistrySetting& a, const RegistrySetting& b) {
  const auto less = [](std::string_view x, std::string_view y) {
    return std::lexicographical_compare(x.begin(), x.end(), y.begin(), y.end(), [](char p, char q) {
      return SmallLetter(p) < SmallLetter(q);
    });
  };
  if (!SameName(a.key, b.key)) return less(a.key, b.key);
  return less(a.name, b.name);
}

// Sorted by key and name, the last of equal ones kept.
void SortAndThin(RegistrySettings& settings) {
  std::stable_sort(settings.begin(), settings.end(), &ByName);
  RegistrySettings kept;
  for (RegistrySetting& setting : settings) {
    if (!kept.empty() && !ByName(kept.back(), setting)) kept.pop_back();
    kept.push_back(std::move(setting));
  }
  settings = std::move(kept);
}

}  // namespace

RegistrySettings ParseRegistry(std::string_view file) {
  RegistrySettings settings;
  std::string key;
  for (std::string_view rest = file; !rest.empty();) {
    const std::string_view line = TakeLine(rest);
    if (line.starts_with('#')) continue;
    if (line.starts_with('[')) {
      key = line.ends_with(']') ? Unescaped(Trimmed(line.substr(1, line.size() - 2))) : "";
      continue;
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || key.empty()) continue;
    const std::string name = Unescaped(Trimmed(line.substr(0, equals)));
    if (name.empty()) continue;
    settings.push_back({key, name, Unescaped(Trimmed(line.substr(equals + 1)))});
  }
  SortAndThin(settings);
  return settings;
}

std::string WriteRegistry(const RegistrySettings& settings) {
  std::string file = "# Settings of Quillon Forms. The program writes this file anew.\n";
  std::string_view key;
  for (const RegistrySetting& setting : settings) {
    if (!SameName(key, setting.key)) {
      file += "\n[" + Escaped(setting.key, kMarksInNames) + "]\n";
      key = setting.key;
    }
    file += Escaped(setting.name, kMarksInNames) + "=" + Escaped(setting.text, {}) + "\n";
  }
  return file;
}

const RegistrySetting* FindSetting(const RegistrySettings& settings, std::string_view key,
                                   std::string_view name) {
  const auto found = std::find_if(settings.begin(), settings.end(), [&](const auto& setting) {
    return SameName(setting.key, key) && SameName(setting.name, name);
  });
  return found == settings.end() ? nullptr : &*found;
}

void PutSetting(RegistrySettings& settings, RegistrySetting setting) {
  settings.push_back(std::move(setting));
  SortAndThin(settings);
}

}  // namespace winlet
