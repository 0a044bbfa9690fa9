// The readers of foreign tool data. An input is a file, read in every format.
#include <cstdint>
#include <cstdlib>

#include "host/library/HostError.h"
#include "host/transfer/Readers.h"
#include "platform/framework/Text.h"
#include "tests/support/TemporaryFolder.h"

namespace {

void Expect(bool holds) {
  if (!holds) std::abort();
}

/// No byte of it is outside of valid UTF-8.
bool IsUtf8(const std::string& text) {
  bool lead = false;
  for (const char16_t unit : orxdb::Widen(text)) {
    if (unit >= 0xDC00 && unit <= 0xDFFF && !lead) return false;
    lead = unit >= 0xD800 && unit <= 0xDBFF;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orxdb;
  static const test::TemporaryFolder folder;
  const std::string file = folder / "tools";
  std::ofstream(file, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  for (const ToolFormat format :
       {ToolFormat::Auto, ToolFormat::Exchange, ToolFormat::Csv, ToolFormat::Tsv, ToolFormat::Json,
        ToolFormat::Jsonl, ToolFormat::FreeCad, ToolFormat::LinuxCnc}) {
    try {
      const auto reader = OpenDrafts(file, {.format = format});
      std::size_t records = 0;
      while (const auto draft = reader->Next()) {
        Expect(++records <= size + 1);
        Expect(draft->source == file);
        Expect(draft->problem.empty() || draft->values.empty());
        for (const DraftValue& value : draft->values) {
          Expect(IsUtf8(value.name) && IsUtf8(value.text) &&
                 !(value.absent && !value.text.empty()));
        }
      }
      Expect(reader->Done() == 1);
    } catch (const HostError&) {
    }
  }
  return 0;
}
