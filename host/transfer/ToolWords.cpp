#include "host/transfer/ToolWords.h"

#include <algorithm>
#include <set>
#include <vector>

#include "platform/automation/Ascii.h"

namespace orxdb {
namespace {

struct Kind {
  std::string_view words;  ///< small letters without what parts them
  std::string_view table;
};

constexpr std::string_view kFlat = "FLAT_END_MILL";
constexpr std::string_view kBall = "BALL_END_MILL";
constexpr std::string_view kBull = "BULL_NOSE_END_MILL";
constexpr std::string_view kChamfer = "CHAMFER_MILL";
constexpr std::string_view kDovetail = "DOVETAIL_CUTTER";
constexpr std::string_view kVBit = "V_BIT";
constexpr std::string_view kEngraving = "ENGRAVING_CUTTER";
constexpr std::string_view kSingleFlute = "SINGLE_FLUTE_ROUTER";
constexpr std::string_view kCompression = "COMPRESSION_ROUTER";

constexpr Kind kKinds[] = {
    {"endmill", kFlat},
    {"flatendmill", kFlat},
    {"squareendmill", kFlat},
    {"slotdrill", kFlat},
    {"schaftfräser", kFlat},
    {"ball", kBall},
    {"ballend", kBall},
    {"ballendmill", kBall},
    {"ballmill", kBall},
    {"ballnose", kBall},
    {"kugelfräser", kBall},
    {"bull", kBull},
    {"bullend", kBull},
    {"bullnose", kBull},
    {"cornerradius", kBull},
    {"torus", kBull},
    {"torusfräser", kBull},
    {"chamfer", kChamfer},
    {"chamfermill", kChamfer},
    {"fasenfräser", kChamfer},
    {"dovetail", kDovetail},
    {"dovetailcutter", kDovetail},
    {"schwalbenschwanzfräser", kDovetail},
    {"vbit", kVBit},
    {"vcarve", kVBit},
    {"vgroove", kVBit},
    {"engraver", kEngraving},
    {"engraving", kEngraving},
    {"engravingbit", kEngraving},
    {"engravingcutter", kEngraving},
    {"gravierstichel", kEngraving},
    {"oflute", kSingleFlute},
    {"singleflutebit", kSingleFlute},
    {"singlefluteendmill", kSingleFlute},
    {"singlefluterouter", kSingleFlute},
    {"einschneider", kSingleFlute},
    {"einzahnfräser", kSingleFlute},
    {"compression", kCompression},
    {"kompressionsfräser", kCompression},
    {"facemill", "FACE_MILL"},
    {"facingmill", "FACE_MILL"},
    {"shellmill", "FACE_MILL"},
    {"planfräser", "FACE_MILL"},
    {"slittingsaw", "SLITTING_SAW"},
    {"slitsaw", "SLITTING_SAW"},
    {"woodruff", "WOODRUFF_CUTTER"},
    {"woodruffcutter", "WOODRUFF_CUTTER"},
    {"threadmill", "THREAD_MILL"},
    {"gewindefräser", "THREAD_MILL"},
    {"drill", "TWIST_DRILL"},
    {"drillbit", "TWIST_DRILL"},
    {"twistdrill", "TWIST_DRILL"},
    {"tapdrill", "TWIST_DRILL"},
    {"tappingdrill", "TWIST_DRILL"},
    {"bohrer", "TWIST_DRILL"},
    {"spiralbohrer", "TWIST_DRILL"},
    {"spot", "SPOT_DRILL"},
    {"spotdrill", "SPOT_DRILL"},
    {"spotter", "SPOT_DRILL"},
    {"spottingdrill", "SPOT_DRILL"},
    {"anbohrer", "SPOT_DRILL"},
    {"centerdrill", "CENTER_DRILL"},
    {"centredrill", "CENTER_DRILL"},
    {"zentrierbohrer", "CENTER_DRILL"},
    {"countersink", "COUNTERSINK"},
    {"kegelsenker", "COUNTERSINK"},
    {"counterbore", "COUNTERBORE"},
    {"flachsenker", "COUNTERBORE"},
    {"reamer", "REAMER"},
    {"reibahle", "REAMER"},
    {"boringbar", "BORING_BAR"},
    {"bohrstange", "BORING_BAR"},
    {"pipetap", "PIPE_TAP"},
    {"tap", "TAP"},
    {"gewindebohrer", "TAP"},
};
// "Ball nose end mill" and the like name the special kind, and the general one behind it.
constexpr std::string_view kSpecialEndMills[] = {kBall, kBull,      kChamfer,     kDovetail,
                                                 kVBit, kEngraving, kSingleFlute, kCompression};

std::vector<std::string> WordsOf(std::string_view text) {
  const auto belongs = [](char c) {
    return (c >= '0' && c <= '9') || (LowerAscii(c) >= 'a' && LowerAscii(c) <= 'z') ||
           static_cast<unsigned char>(c) >= 0x80;
  };
  std::vector<std::string> words(1);
  for (const char c : text) {
    if (belongs(c)) {
      words.back() += LowerAscii(c);
    } else if (!words.back().empty()) {
      words.emplace_back();
    }
  }
  return words;
}

/// The kind that the most words from a place on name, and their number; 0 for none.
std::pair<std::string_view, std::size_t> LongestKind(const std::vector<std::string>& words,
                                                     std::size_t first) {
  constexpr std::size_t kMostWords = 4;
  std::pair<std::string_view, std::size_t> longest;
  std::string joined;
  for (std::size_t i = first; i < std::min(first + kMostWords, words.size()); ++i) {
    joined += words[i];
    const auto* const kind = std::ranges::find(kKinds, joined, &Kind::words);
    if (kind != std::end(kKinds)) longest = {kind->table, i + 1 - first};
  }
  return longest;
}

}  // namespace

std::string TableOfWords(std::string_view text) {
  const std::vector<std::string> words = WordsOf(text);
  std::set<std::string_view> tables;
  for (std::size_t i = 0; i < words.size();) {
    const auto [table, count] = LongestKind(words, i);
    if (count > 0) tables.insert(table);
    i += std::max<std::size_t>(1, count);
  }
  const auto isThere = [&](std::string_view table) { return tables.contains(table); };
  if (std::ranges::any_of(kSpecialEndMills, isThere)) tables.erase(kFlat);
  return tables.size() == 1 ? std::string(*tables.begin()) : std::string();
}

}  // namespace orxdb
