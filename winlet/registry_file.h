// The settings of the user as a text file, in place of a registry.
//
//   # A line that starts with a number sign, and one that is neither of the next two, says nothing.
//   [Software\Somebody\Something]     the key that the settings below it belong to
//   Colour=Blue                       a subkey of that key, and its unnamed value
//
// Blanks around names and texts do not count. "%" and two hexadecimal digits stand for the byte of
// that number: so are written "%" itself, control characters, bytes beyond ASCII, blanks at either
// end, and in names "=", "[", "]" and "#" too. Names compare without regard to the case of letters.
// Of a setting that is there twice the last one counts.
//
// The file is quillon-forms.registry in the folder "vantrel" of $XDG_CONFIG_HOME, or of ~/.config.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace winlet {

struct RegistrySetting {
  std::string key;   // the whole path, its levels separated by backslashes
  std::string name;  // the subkey
  std::string text;
};

using RegistrySettings = std::vector<RegistrySetting>;

// Never fails: what makes no sense is left out.
RegistrySettings ParseRegistry(std::string_view file);
std::string WriteRegistry(const RegistrySettings& settings);

// Null when there is none.
const RegistrySetting* FindSetting(const RegistrySettings& settings, std::string_view key,
                                   std::string_view name);
void PutSetting(RegistrySettings& settings, RegistrySetting setting);

// The folder of that file; empty when the user has no place for settings.
std::filesystem::path UserFolder();

// A larger file is nobody's settings.
inline constexpr std::size_t kMostRegistryBytes = 1 << 20;

// What the user has stored; empty when there is no file yet, none when there is one that cannot be
// read or is too large.
std::optional<RegistrySettings> LoadRegistry();

// Stores one setting beside those that the file holds by then; changes by several processes follow
// one another. False when it cannot be stored; the file is then as it was.
bool StoreSetting(RegistrySetting setting);

}  // namespace winlet
