#include "winlet/profile.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

#include "winlet/registry_file.h"
#include "winlet/strings.h"

namespace {

constexpr std::streamsize kLongestLine = 4096;

std::string_view Trimmed(std::string_view text) {
  constexpr const char* kBlanks = " \t\r";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view Unquoted(std::string_view text) {
  const bool quoted = text.size() >= 2 && text.front() == text.back() &&
                      (text.front() == '"' || text.front() == '\'');
  return quoted ? text.substr(1, text.size() - 2) : text;
}

bool IsSameName(std::string_view a, LPCSTR b) { return lstrcmpiA(std::string(a).c_str(), b) == 0; }

bool IsSection(std::string_view line, LPCSTR section) {
  const std::size_t end = line.find(']');
  return end != std::string_view::npos && IsSameName(Trimmed(line.substr(1, end - 1)), section);
}

// Lines that are longer than anybody's settings end the search.
std::optional<std::string> Find(std::istream& file, LPCSTR section, LPCSTR key) {
  bool inside = false;
  std::string room(kLongestLine, '\0');
  while (file.getline(room.data(), kLongestLine)) {
    const std::string_view line = Trimmed(room.c_str());
    if (line.empty() || line.front() == ';') continue;
    if (line.front() == '[') {
      if (inside) return std::nullopt;
      inside = IsSection(line, section);
      continue;
    }
    const std::size_t equals = line.find('=');
    if (!inside || equals == std::string_view::npos) continue;
    if (IsSameName(Trimmed(line.substr(0, equals)), key)) {
      return std::string(Unquoted(Trimmed(line.substr(equals + 1))));
    }
  }
  return std::nullopt;
}

std::filesystem::path PathOf(LPCSTR file) {
  std::filesystem::path path(file);
  if (path.has_parent_path()) return path;
  const std::filesystem::path folder = winlet::UserFolder();
  return folder.empty() ? folder : folder / path;
}

}  // namespace

DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR otherwise, LPSTR buffer,
                               DWORD size, LPCSTR file) {
  if (buffer == nullptr || size == 0) return 0;
  std::optional<std::string> found;
  if (section != nullptr && key != nullptr && file != nullptr) {
    std::ifstream stream(PathOf(file), std::ios::binary);
    found = Find(stream, section, key);
  }
  const std::string text = found ? *found : std::string(otherwise != nullptr ? otherwise : "");
  const std::size_t length = std::min<std::size_t>(text.size(), size - 1);
  std::memcpy(buffer, text.data(), length);
  buffer[length] = '\0';
  return static_cast<DWORD>(length);
}
