#include "host/transfer/FreeCadLibrary.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

#include "platform/automation/Ascii.h"
#include "platform/framework/ExecutablePath.h"

namespace orxdb {

namespace fs = std::filesystem;

namespace {

bool IsLibrary(const fs::path& file) {
  return EqualNoCase(file.extension().string(), ".fctl");
}

}  // namespace

std::vector<ListedBit> ListedBits(const JsonLeaves& library) {
  std::vector<ListedBit> bits;
  std::string position;
  for (const JsonLeaf& leaf : library) {
    if (leaf.path.size() < 2 || leaf.path[0] != "tools") continue;
    if (bits.empty() || leaf.path[1] != position) bits.emplace_back();
    position = leaf.path[1];
    if (leaf.path.size() != 3) continue;
    if (leaf.path[2] == "nr") bits.back().number = leaf.text;
    if (leaf.path[2] == "path") bits.back().path = leaf.text;
  }
  return bits;
}

fs::path FileOfBit(const fs::path& library, const ListedBit& bit) {
  if (bit.path.empty()) return {};
  const fs::path folder = library.parent_path();
  const fs::path written = NativePath(bit.path);
  for (const fs::path& place :
       {folder / written, folder / written.filename(), folder / ".." / "Bit" / written,
        folder / ".." / "Bit" / written.filename()}) {
    std::error_code error;
    if (fs::is_regular_file(place, error)) return place.lexically_normal();
  }
  return {};
}

void LeaveOutListedBits(std::vector<fs::path>& files) {
  std::set<fs::path> listed;
  for (const fs::path& file : files) {
    if (!IsLibrary(file)) continue;
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    JsonLeaves leaves;
    ReadJson(text.str(), leaves);
    for (const ListedBit& bit : ListedBits(leaves)) {
      std::error_code error;
      listed.insert(fs::weakly_canonical(FileOfBit(file, bit), error));
    }
  }
  std::erase_if(files, [&](const fs::path& file) {
    std::error_code error;
    return !IsLibrary(file) && listed.contains(fs::weakly_canonical(file, error));
  });
}

}  // namespace orxdb
