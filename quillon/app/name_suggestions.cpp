#include "quillon/app/name_suggestions.h"

#include <algorithm>
#include <numeric>

namespace quillon::app {
namespace {

constexpr std::size_t kMostSuggestions = 3;

std::string Lower(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

// How many letters must be put in, left out or changed.
std::size_t EditDistance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t above = row[j];
      const std::size_t change = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({above + 1, row[j - 1] + 1, change});
      diagonal = above;
    }
  }
  return row.back();
}

struct Candidate {
  std::size_t distance;
  std::size_t place;
};

}  // namespace

std::vector<std::string> SuggestNames(const std::string& wanted,
                                      const std::vector<std::string>& names) {
  const std::string target = Lower(wanted);
  const std::size_t furthest = target.size() / 4 + 1;
  std::vector<Candidate> candidates;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string name = Lower(names[i]);
    if (name.ends_with("." + target)) {
      candidates.push_back({0, i});
      continue;
    }
    const std::size_t lengths =
        std::max(name.size(), target.size()) - std::min(name.size(), target.size());
    if (lengths > furthest) continue;
    const std::size_t distance = EditDistance(target, name);
    if (distance <= furthest) candidates.push_back({distance, i});
  }
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const Candidate& a, const Candidate& b) { return a.distance < b.distance; });
  std::vector<std::string> suggestions;
  for (std::size_t i = 0; i < std::min(kMostSuggestions, candidates.size()); ++i) {
    suggestions.push_back(names[candidates[i].place]);
  }
  return suggestions;
}

}  // namespace quillon::app
