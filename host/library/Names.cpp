#include "host/library/Names.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

#include "platform/automation/Ascii.h"

namespace orxdb {
namespace {

struct Spelling {
  std::string_view written;
  std::string_view key;
};

constexpr auto kSpellings = std::to_array<Spelling>({
    {" ", ""},
    {"_", ""},
    {"-", ""},
    {".", ""},
    {"\t", ""},
    {"\u00A0", ""},
    {"\u2013", ""},
    {"Ä", "ae"},
    {"ä", "ae"},
    {"Ö", "oe"},
    {"ö", "oe"},
    {"Ü", "ue"},
    {"ü", "ue"},
    {"ß", "ss"},
    {"Ø", "ø"},
    {"⌀", "ø"},
});

/// Letters to be put in, left out or changed to make one text of the other.
std::size_t Distance(std::string_view left, std::string_view right) {
  std::vector<std::size_t> row(right.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < left.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < right.size(); ++j) {
      const std::size_t changed = diagonal + (left[i] == right[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

}  // namespace

std::string NameKey(std::string_view name) {
  std::string key;
  while (!name.empty()) {
    const auto spelling = std::ranges::find_if(
        kSpellings, [name](const Spelling& known) { return name.starts_with(known.written); });
    if (spelling != kSpellings.end()) {
      key += spelling->key;
      name.remove_prefix(spelling->written.size());
    } else {
      key += LowerAscii(name.front());
      name.remove_prefix(1);
    }
  }
  return key;
}

std::vector<std::string> NearestNames(std::string_view name,
                                      const std::vector<std::string>& names) {
  constexpr std::size_t kShown = 3;
  constexpr std::size_t kLongest = 100;
  const std::string wanted = NameKey(name.substr(0, kLongest));
  std::vector<std::pair<std::size_t, std::string>> ranked;
  for (const std::string& known : names) {
    const std::string key = NameKey(std::string_view(known).substr(0, kLongest));
    // A part of the other name is near, however long the rest is.
    const bool within =
        !wanted.empty() && !key.empty() && (HasPart(key, wanted) || HasPart(wanted, key));
    ranked.emplace_back(within ? 1 : Distance(wanted, key) + 1, known);
  }
  std::ranges::sort(ranked);
  std::vector<std::string> nearest;
  for (auto& [distance, known] : ranked) {
    if (nearest.size() < kShown) nearest.push_back(std::move(known));
  }
  return nearest;
}

std::string Listed(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

}  // namespace orxdb
