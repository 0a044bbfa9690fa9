// Tool bits of FreeCAD, a file each, and libraries of them.
#include <algorithm>

#include "host/library/HostError.h"
#include "host/transfer/FileReader.h"
#include "host/transfer/FreeCadLibrary.h"
#include "host/transfer/ToolWords.h"
#include "platform/automation/Ascii.h"
#include "platform/framework/ExecutablePath.h"

namespace orxdb {
namespace {

/// The whole text of a file as JSON.
JsonLeaves ReadWhole(TextSource& source) {
  constexpr std::size_t kLongestFile = std::size_t{16} << 20;
  std::string text;
  for (int next; (next = source.Get()) != TextSource::kEnd;) {
    if (text.size() == kLongestFile) throw HostError(source.Name() + " is longer than 16 MiB.");
    text += static_cast<char>(next);
  }
  JsonLeaves leaves;
  const std::string problem = ReadJson(text, leaves);
  if (!problem.empty()) throw HostError(source.Name() + ": " + problem);
  return leaves;
}

/// The unit in which a library counts the unit behind a number: "5.0000 mm"; empty for what is no
/// length.
std::string UnitOf(std::string_view text) {
  struct Written {
    std::string_view text;
    const char* unit;
  };
  constexpr Written kUnits[] = {{"mm", "mm"}, {"µm", "mm"}, {"μm", "mm"},  {"um", "mm"},
                                {"cm", "mm"}, {"m", "mm"},  {"in", "in"},  {"inch", "in"},
                                {"\"", "in"}, {"″", "in"},  {"thou", "in"}};
  const std::size_t end = text.find_first_not_of("+-0123456789.,/ ");
  if (end == 0 || end == text.npos) return {};
  const auto* const unit = std::ranges::find(kUnits, text.substr(end), &Written::text);
  return unit == std::end(kUnits) ? "" : unit->unit;
}

std::string Joined(const std::vector<std::string>& path, std::size_t first) {
  std::string name;
  for (std::size_t i = first; i < path.size(); ++i) name += (name.empty() ? "" : ".") + path[i];
  return name;
}

/// Finds the kind of tool: by its shape, "shapes/endmill.fcstd" or "Endmill", or by its type.
class KindFinder {
 public:
  /// Whether the leaf tells the kind.
  bool Add(const JsonLeaf& leaf) {
    const std::string& name = leaf.path.back();
    if (leaf.path.size() == 1 ? name != "shape" && name != "shape-type" : name != "ToolType") {
      return false;
    }
    std::filesystem::path shape = NativePath(leaf.text);
    if (EqualNoCase(shape.extension().string(), ".fcstd")) shape = shape.stem();
    if (table.empty()) table = TableOfWords(shape.filename().string());
    if (written.empty()) written = leaf.text;
    return true;
  }

  std::string table;
  std::string written;
};

bool HasMember(const JsonLeaves& leaves, std::string_view name) {
  return std::ranges::any_of(
      leaves, [&](const JsonLeaf& leaf) { return !leaf.path.empty() && leaf.path[0] == name; });
}

/// Throws HostError for what is no tool bit.
void CheckBit(const JsonLeaves& leaves, const std::string& file) {
  if (HasMember(leaves, "parameter") || HasMember(leaves, "attribute")) return;
  throw HostError(file + " is neither a tool bit nor a library of them.");
}

void ReadBit(const JsonLeaves& leaves, const std::string& file, ToolDraft& draft) {
  KindFinder kind;
  std::string unit;
  bool named = false;
  for (const JsonLeaf& leaf : leaves) {
    const std::string& group = leaf.path.empty() ? file : leaf.path.front();
    const bool own = leaf.path.size() == 1 && (group == "version" || group == "id");
    if (leaf.path.empty() || leaf.kind == JsonLeaf::Kind::Structure || own || kind.Add(leaf)) {
      continue;
    }
    const bool grouped = leaf.path.size() > 1 && (group == "parameter" || group == "attribute");
    std::string name = Joined(leaf.path, grouped ? 1 : 0);
    if (name == "name") name = "Name";
    named |= name == "Name";
    const std::string length = grouped ? UnitOf(leaf.text) : "";
    if (!length.empty() && (unit.empty() || name == "Diameter")) unit = length;
    draft.values.push_back({std::move(name), leaf.text, leaf.kind == JsonLeaf::Kind::Null});
  }
  if (!named) {
    draft.values.insert(draft.values.begin(),
                        {"Name", std::filesystem::path(NativePath(file)).stem().string()});
  }
  draft.table = kind.table;
  if (!unit.empty()) draft.unit = unit;
  if (kind.table.empty() && !kind.written.empty()) draft.values.push_back({"Shape", kind.written});
}

class BitReader : public FileReader {
 public:
  BitReader(TextSource source, const ReadOptions& options, JsonLeaves leaves)
      : FileReader(std::move(source), options), m_leaves(std::move(leaves)) {}

 private:
  std::optional<ToolDraft> Read() override {
    if (std::exchange(m_read, true)) return std::nullopt;
    ToolDraft draft = Draft("");
    ReadBit(m_leaves, m_source.Name(), draft);
    return draft;
  }

  JsonLeaves m_leaves;
  bool m_read = false;
};

class LibraryReader : public FileReader {
 public:
  LibraryReader(TextSource source, const ReadOptions& options, std::vector<ListedBit> bits)
      : FileReader(std::move(source), options), m_bits(std::move(bits)) {}

  double Done() const override {
    if (m_bits.empty()) return 1;
    return static_cast<double>(m_next) / static_cast<double>(m_bits.size());
  }

 private:
  std::optional<ToolDraft> Read() override {
    if (m_next == m_bits.size()) return std::nullopt;
    const ListedBit& bit = m_bits[m_next++];
    ToolDraft draft = Draft("tool " + std::to_string(m_next));
    const auto file = FileOfBit(NativePath(m_source.Name()), bit);
    if (file.empty()) {
      draft.problem = Cited(bit.path) + " is not there.";
      return draft;
    }
    try {
      TextSource source(file.string(), m_options.encoding);
      const JsonLeaves leaves = ReadWhole(source);
      CheckBit(leaves, bit.path);
      ReadBit(leaves, bit.path, draft);
      if (!bit.number.empty()) draft.values.push_back({"Tool number", bit.number});
    } catch (const HostError& error) {
      draft.problem = error.what();
    }
    return draft;
  }

  std::vector<ListedBit> m_bits;
  std::size_t m_next = 0;
};

}  // namespace

std::unique_ptr<DraftReader> MakeFreeCadReader(TextSource source, const ReadOptions& options) {
  JsonLeaves leaves = ReadWhole(source);
  if (HasMember(leaves, "tools")) {
    return std::make_unique<LibraryReader>(std::move(source), options, ListedBits(leaves));
  }
  CheckBit(leaves, source.Name());
  return std::make_unique<BitReader>(std::move(source), options, std::move(leaves));
}

}  // namespace orxdb
