#include "host/transfer/Readers.h"

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

#include "host/library/HostError.h"
#include "host/transfer/FileReader.h"
#include "host/transfer/FreeCadLibrary.h"
#include "host/transfer/Recognition.h"
#include "platform/framework/ExecutablePath.h"

namespace orxdb {
namespace {

namespace fs = std::filesystem;

/// Formats that tell themselves apart as they are read.
bool SameFamily(ToolFormat left, ToolFormat right) {
  const auto family = [](ToolFormat format) {
    if (format == ToolFormat::Tsv) return ToolFormat::Csv;
    return format == ToolFormat::Jsonl ? ToolFormat::Json : format;
  };
  return family(left) == family(right);
}

/// A reader of what is of the format that the options name.
std::unique_ptr<DraftReader> MakeReader(TextSource source, const ReadOptions& options) {
  switch (options.format) {
    case ToolFormat::Csv:
    case ToolFormat::Tsv:
      return MakeCsvReader(std::move(source), options);
    case ToolFormat::Json:
    case ToolFormat::Jsonl:
      return MakeJsonReader(std::move(source), options);
    case ToolFormat::FreeCad:
      return MakeFreeCadReader(std::move(source), options);
    case ToolFormat::LinuxCnc:
      return MakeLinuxCncReader(std::move(source), options);
    case ToolFormat::Exchange:
      return MakeExchangeReader(std::move(source), options);
    case ToolFormat::Auto:
      break;
  }
  throw HostError(source.Name() + " holds no tool data of a known format.");
}

/// The files of a folder one behind the other.
class FolderReader : public DraftReader {
 public:
  FolderReader(std::string name, const ReadOptions& options)
      : m_name(std::move(name)), m_options(options) {
    std::error_code error;
    for (fs::recursive_directory_iterator entry(NativePath(m_name), error), end;
         !error && entry != end; entry.increment(error)) {
      std::error_code unknown;
      if (entry->is_regular_file(unknown)) m_files.push_back(entry->path());
    }
    if (error) throw HostError(m_name + " cannot be read: " + error.message() + '.');
    std::ranges::sort(m_files);
    LeaveOutListedBits(m_files);
  }

  std::optional<ToolDraft> Next() override {
    while (m_reader || m_next < m_files.size()) {
      if (!m_reader) {
        if (auto damaged = OpenNext()) return damaged;
      } else if (auto draft = m_reader->Next()) {
        return draft;
      } else {
        std::ranges::copy(m_reader->Remarks(), std::back_inserter(m_remarks));
        m_reader.reset();
      }
    }
    End();
    return std::nullopt;
  }

  double Done() const override {
    if (m_files.empty()) return 1;
    const double left = m_reader ? 1 - std::max(0.0, m_reader->Done()) : 0;
    return (static_cast<double>(m_next) - left) / static_cast<double>(m_files.size());
  }

 private:
  /// Opens the next file. Gives a record when it is damaged.
  std::optional<ToolDraft> OpenNext() {
    const std::string file = m_files[m_next++].string();
    try {
      TextSource source(file, m_options.encoding);
      ReadOptions options = m_options;
      options.format = Recognise(source.Ahead(), file);
      const bool wanted =
          m_options.format == ToolFormat::Auto || SameFamily(m_options.format, options.format);
      if (options.format == ToolFormat::Auto || !wanted) {
        m_passedOver.push_back(file);
        return std::nullopt;
      }
      m_holdsTools = true;
      m_reader = MakeReader(std::move(source), options);
      return std::nullopt;
    } catch (const HostError& error) {
      m_holdsTools = true;
      ToolDraft draft;
      draft.source = file;
      draft.problem = error.what();
      return draft;
    }
  }

  void End() {
    const std::vector<std::string> passedOver = std::exchange(m_passedOver, {});
    if (!m_holdsTools) {
      throw HostError(m_name + " holds no tool data of " +
                      (m_options.format == ToolFormat::Auto ? "a known" : "this") + " format.");
    }
    if (passedOver.empty()) return;
    constexpr std::size_t kNamed = 5;
    std::string remark = "Passed over as no tool data: " + passedOver.front();
    for (std::size_t i = 1; i < std::min(kNamed, passedOver.size()); ++i) {
      remark += ", " + passedOver[i];
    }
    if (passedOver.size() > kNamed) {
      remark += " and " + std::to_string(passedOver.size() - kNamed) + " more";
    }
    m_remarks.push_back(remark + '.');
  }

  std::string m_name;
  ReadOptions m_options;
  std::vector<std::filesystem::path> m_files;
  std::size_t m_next = 0;
  std::unique_ptr<DraftReader> m_reader;
  bool m_holdsTools = false;
  std::vector<std::string> m_passedOver;
};

}  // namespace

std::unique_ptr<DraftReader> OpenDrafts(const std::string& source, const ReadOptions& options) {
  std::error_code error;
  if (source != "-" && fs::is_directory(NativePath(source), error)) {
    return std::make_unique<FolderReader>(source, options);
  }
  TextSource text(source, options.encoding);
  ReadOptions known = options;
  if (known.format == ToolFormat::Auto) known.format = Recognise(text.Ahead(), source);
  return MakeReader(std::move(text), known);
}

}  // namespace orxdb
