#include "host/output/RowWriter.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "host/output/DisplayText.h"
#include "host/output/TableWriter.h"

namespace orxdb {
namespace {

std::string Joined(std::span<const std::string> fields, std::string_view separator) {
  std::string line;
  for (const std::string& field : fields) {
    if (&field != &fields.front()) line += separator;
    line += field;
  }
  return line;
}

std::vector<std::string> TextsOf(std::vector<Cell> cells) {
  std::vector<std::string> texts;
  texts.reserve(cells.size());
  for (Cell& cell : cells) texts.push_back(std::move(cell.text));
  return texts;
}

/// Formats with one line per row: each tells how it writes a field and what ends a line.
class LineWriter : public RowWriter {
 public:
  using RowWriter::RowWriter;
  void Header(const std::vector<std::string>& columns) override { Line(columns); }
  void Row(std::vector<Cell> cells) override { Line(TextsOf(std::move(cells))); }

 protected:
  virtual void Line(std::vector<std::string> fields) = 0;
};

class CsvWriter : public RowWriter {
 public:
  CsvWriter(Sink sink, char separator)
      : RowWriter(std::move(sink)), m_separator(1, separator), m_special(m_separator + "\"\r\n") {}
  void Header(const std::vector<std::string>& columns) override {
    std::vector<std::string> fields;
    fields.reserve(columns.size());
    for (const std::string& column : columns) fields.push_back(Field(Cell::Text(column)));
    Line(fields);
  }
  void Row(std::vector<Cell> cells) override {
    for (Cell& cell : cells) cell.text = Field(cell);
    Line(TextsOf(std::move(cells)));
  }

 private:
  std::string Field(const Cell& cell) const {
    const bool empty = cell.kind == Cell::Kind::Text && cell.text.empty();
    if (!empty && cell.text.find_first_of(m_special) == std::string::npos) return cell.text;
    std::string quoted = "\"";
    for (const char c : cell.text) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
  }
  void Line(const std::vector<std::string>& fields) { Put(Joined(fields, m_separator) + "\r\n"); }

  std::string m_separator;
  std::string m_special;
};

/// For people and their spreadsheets.
class ShownCsvWriter : public CsvWriter {
 public:
  using CsvWriter::CsvWriter;
  void Row(std::vector<Cell> cells) override {
    for (Cell& cell : cells) cell.text = Harmless(cell.text);
    CsvWriter::Row(std::move(cells));
  }
};

class TsvWriter : public LineWriter {
 public:
  using LineWriter::LineWriter;

 private:
  void Line(std::vector<std::string> fields) override {
    constexpr std::string_view kSpecial = "\t\n\r\\";
    for (std::string& field : fields) {
      std::string escaped;
      for (const char c : field) {
        const std::size_t place = kSpecial.find(c);
        if (place == std::string_view::npos) {
          escaped += c;
        } else {
          escaped += {'\\', "tnr\\"[place]};
        }
      }
      field = std::move(escaped);
    }
    Put(Joined(fields, "\t") + '\n');
  }
};

/// Only the last cell of each row.
class BareWriter : public TsvWriter {
 public:
  using TsvWriter::TsvWriter;

 private:
  void Header(const std::vector<std::string>&) override {}
  void Row(std::vector<Cell> cells) override {
    cells.back().text = Harmless(cells.back().text);
    TsvWriter::Row({std::move(cells.back())});
  }
};

/// Rows as objects.
class JsonWriter : public RowWriter {
 public:
  using RowWriter::RowWriter;
  void Header(const std::vector<std::string>& columns) override {
    std::ranges::transform(columns, std::back_inserter(m_columns), Quoted);
  }

 protected:
  std::string Object(const std::vector<Cell>& cells, std::string_view separator) const {
    std::vector<std::string> members;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      members.push_back(m_columns[i] + ": " + ValueOf(cells[i]));
    }
    return Joined(members, separator);
  }

 private:
  static std::string Quoted(const std::string& text) {
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  }
  static std::string ValueOf(const Cell& cell) {
    if (cell.kind == Cell::Kind::Null) return "null";
    return cell.kind == Cell::Kind::Text ? Quoted(cell.text) : cell.text;
  }

  std::vector<std::string> m_columns;
};

/// An array of objects.
class ArrayWriter : public JsonWriter {
 public:
  using JsonWriter::JsonWriter;

 private:
  void Row(std::vector<Cell> cells) override {
    Put((m_first ? "[\n  {" : ",\n  {") + Object(cells, ", ") + '}');
    m_first = false;
  }
  void End() override { Put(m_first ? "[]\n" : "\n]\n"); }

  bool m_first = true;
};

/// An object a line.
class JsonLinesWriter : public JsonWriter {
 public:
  using JsonWriter::JsonWriter;

 private:
  void Row(std::vector<Cell> cells) override { Put('{' + Object(cells, ", ") + "}\n"); }
};

/// One object, a member a line.
class ObjectWriter : public JsonWriter {
 public:
  using JsonWriter::JsonWriter;

 private:
  void Row(std::vector<Cell> cells) override { Put("{\n  " + Object(cells, ",\n  ") + "\n}\n"); }
};

}  // namespace

std::unique_ptr<RowWriter> MakeRowWriter(Layout layout, Sink sink) {
  switch (layout.format) {
    case Format::Json:
      return std::make_unique<ArrayWriter>(std::move(sink));
    case Format::Csv:
      return std::make_unique<ShownCsvWriter>(std::move(sink), ',');
    case Format::Tsv:
      return std::make_unique<TsvWriter>(std::move(sink));
    case Format::Table:
      break;
  }
  return MakeTableWriter(std::move(sink), layout.width);
}

std::unique_ptr<RowWriter> MakeCsvWriter(Sink sink, char separator) {
  return std::make_unique<CsvWriter>(std::move(sink), separator);
}

std::unique_ptr<RowWriter> MakeJsonLinesWriter(Sink sink) {
  return std::make_unique<JsonLinesWriter>(std::move(sink));
}

std::unique_ptr<RowWriter> MakeBareWriter(Layout layout, Sink sink) {
  if (layout.format != Format::Table) return MakeRowWriter(layout, std::move(sink));
  return std::make_unique<BareWriter>(std::move(sink));
}

std::unique_ptr<RowWriter> MakeRecordWriter(Layout layout, Sink sink) {
  if (layout.format == Format::Table) return MakePropertyWriter(std::move(sink));
  if (layout.format == Format::Json) return std::make_unique<ObjectWriter>(std::move(sink));
  return MakeRowWriter(layout, std::move(sink));
}

}  // namespace orxdb
