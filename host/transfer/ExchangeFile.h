// Exchange files seen by the one who has them imported. The component tells nothing of what it
// finds there, so the host reads them a second time.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/library/HostError.h"
#include "interface/ExchangeFormat.h"

namespace orxdb {

/// One line behind the names of the fields.
struct ExchangeLine {
  enum class Kind {
    Record,
    WrongFields,  ///< another number of fields than the file has names
    TooLong,
  };

  long long number = 0;  ///< from 1, as editors count
  Kind kind = Kind::Record;
  bool torn = false;                ///< a double quote inside a value has cut it in two
  std::vector<std::string> fields;  ///< of a record
};

/// Throws HostError for a file whose header says that it is not imported.
void CheckImported(const std::string& path, const ExchangeHeader& header);

/// An exchange file being read.
class ExchangeFile {
 public:
  /// Reads as far as the names of the fields. Throws HostError for what is no exchange file or of
  /// a kind that is not imported.
  explicit ExchangeFile(const std::string& path);

  const std::string& Table() const noexcept { return m_header.table; }
  const std::vector<std::string>& Names() const noexcept { return m_names; }

  /// The next line that holds anything; nothing at the end of the file.
  std::optional<ExchangeLine> Next();

 private:
  ExchangeReader m_reader;
  ExchangeHeader m_header;
  std::vector<std::string> m_names;
};

}  // namespace orxdb
