// Rows of cells on standard output, for people or for programs.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/Cell.h"

namespace orxdb {

enum class Format {
  Table,  ///< aligned columns for people
  Json,   ///< an array of one object per row
  Csv,    ///< RFC 4180: CR LF, text with a separator, quote or line end in double quotes
  Tsv,    ///< one line per row; tab, line ends and backslash as \t \n \r \\.
};

/// Writes a header, then rows of as many cells, then what ends the output. Throws HostError when
/// standard output refuses and OutputClosed when nobody reads it any more.
class RowWriter {
 public:
  virtual ~RowWriter() = default;
  virtual void Header(const std::vector<std::string>& columns) = 0;
  virtual void Row(std::vector<Cell> cells) = 0;
  /// Must be the last call.
  virtual void End();

 protected:
  static void Put(std::string_view text);
};

std::unique_ptr<RowWriter> MakeRowWriter(Format format);

/// Writes rows whose last cell is all that people want to see, one a line without a header.
std::unique_ptr<RowWriter> MakeBareWriter(Format format);

/// One such row alone.
void WriteRow(Format format, const std::vector<std::string>& columns, std::vector<Cell> row);

/// One record: a property a line for people, one object as JSON, a header and a row otherwise.
void WriteRecord(Format format, const std::vector<std::string>& names, std::vector<Cell> values);

/// Number of places that text takes on a terminal: none for combining characters, two for wide
/// ones.
std::size_t DisplayWidth(std::string_view text);

}  // namespace orxdb
