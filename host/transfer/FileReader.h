// What the readers of one file share.
#pragma once

#include <memory>
#include <utility>

#include "host/transfer/Draft.h"
#include "host/transfer/ReadOptions.h"
#include "host/transfer/Source.h"

namespace orxdb {

class FileReader : public DraftReader {
 public:
  FileReader(TextSource source, const ReadOptions& options)
      : m_source(std::move(source)), m_options(options) {}

  std::optional<ToolDraft> Next() final {
    std::optional<ToolDraft> draft;
    if (!m_ended) draft = Read();
    if (!draft && !std::exchange(m_ended, true)) {
      for (std::string& remark : m_source.Remarks()) m_remarks.push_back(std::move(remark));
    }
    return draft;
  }
  double Done() const override { return m_ended ? 1 : m_source.Done(); }

 protected:
  /// No record is longer, in bytes.
  static constexpr std::size_t kLongest = std::size_t{1} << 20;
  static constexpr const char* kTooLong = "It is longer than 1 MiB.";

  /// As Next; not called again behind the end.
  virtual std::optional<ToolDraft> Read() = 0;

  /// A record without values.
  ToolDraft Draft(std::string place) const {
    ToolDraft draft;
    draft.source = m_source.Name();
    draft.place = std::move(place);
    draft.unit = m_options.unit;
    return draft;
  }
  ToolDraft Draft(long long line) const { return Draft("line " + std::to_string(line)); }

  TextSource m_source;
  const ReadOptions m_options;

 private:
  bool m_ended = false;
};

// The readers. They throw HostError for what is no source of their format.
std::unique_ptr<DraftReader> MakeCsvReader(TextSource source, const ReadOptions& options);
std::unique_ptr<DraftReader> MakeExchangeReader(TextSource source, const ReadOptions& options);
std::unique_ptr<DraftReader> MakeFreeCadReader(TextSource source, const ReadOptions& options);
std::unique_ptr<DraftReader> MakeJsonReader(TextSource source, const ReadOptions& options);
std::unique_ptr<DraftReader> MakeLinuxCncReader(TextSource source, const ReadOptions& options);

}  // namespace orxdb
