#include "host/output/RowWriter.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "platform/framework/Text.h"

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
  void Row(std::vector<Cell> cells) override { TsvWriter::Row({std::move(cells.back())}); }
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

/// Needs all rows before the first line, to know how wide the columns are.
class TableWriter : public RowWriter {
 public:
  using RowWriter::RowWriter;
  void Header(const std::vector<std::string>& columns) override {
    for (const std::string& column : columns) m_columns.push_back({Shown(Cell::Text(column))});
  }
  void Row(std::vector<Cell> cells) override {
    for (std::size_t i = 0; i < cells.size(); ++i) {
      Column& column = m_columns[i];
      column.numeric &= cells[i].kind == Cell::Kind::Number || cells[i].kind == Cell::Kind::Null;
      cells[i].text = Shown(cells[i]);
      column.width = std::max(column.width, DisplayWidth(cells[i].text));
    }
    m_rows.push_back(std::move(cells));
  }
  void End() override {
    if (m_columns.empty()) return;
    std::vector<std::string> names;
    std::vector<std::string> rules;
    for (Column& column : m_columns) {
      column.width = std::max(column.width, DisplayWidth(column.name));
      names.push_back(column.name);
      rules.emplace_back(column.width, '-');
    }
    Line(names);
    Line(rules);
    for (std::vector<Cell>& row : m_rows) Line(TextsOf(std::move(row)));
  }

 private:
  struct Column {
    std::string name;
    std::size_t width = 0;
    bool numeric = true;
  };

  /// Flags in words, and a blank for every control character, which would break the line.
  static std::string Shown(const Cell& cell) {
    if (cell.kind == Cell::Kind::Flag) return cell.text == "true" ? "yes" : "no";
    std::string text = cell.text;
    std::ranges::replace_if(
        text, [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
    return text;
  }
  void Line(const std::vector<std::string>& texts) {
    std::string line;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const Column& column = m_columns[i];
      const std::string padding(column.width - DisplayWidth(texts[i]), ' ');
      if (i > 0) line += "  ";
      line += column.numeric ? padding + texts[i] : texts[i] + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    Put(line + '\n');
  }

  std::vector<Column> m_columns;
  std::vector<std::vector<Cell>> m_rows;
};

/// The cells of one row, one a line behind its name.
class PropertyWriter : public TableWriter {
 public:
  using TableWriter::TableWriter;
  void Header(const std::vector<std::string>& columns) override {
    m_names = columns;
    TableWriter::Header({"Property", "Value"});
  }
  void Row(std::vector<Cell> cells) override {
    for (std::size_t i = 0; i < cells.size(); ++i) {
      TableWriter::Row({Cell::Text(m_names[i]), std::move(cells[i])});
    }
  }

 private:
  std::vector<std::string> m_names;
};

}  // namespace

std::unique_ptr<RowWriter> MakeRowWriter(Format format, Sink sink) {
  switch (format) {
    case Format::Json:
      return std::make_unique<ArrayWriter>(std::move(sink));
    case Format::Csv:
      return MakeCsvWriter(std::move(sink), ',');
    case Format::Tsv:
      return std::make_unique<TsvWriter>(std::move(sink));
    case Format::Table:
      break;
  }
  return std::make_unique<TableWriter>(std::move(sink));
}

std::unique_ptr<RowWriter> MakeCsvWriter(Sink sink, char separator) {
  return std::make_unique<CsvWriter>(std::move(sink), separator);
}

std::unique_ptr<RowWriter> MakeJsonLinesWriter(Sink sink) {
  return std::make_unique<JsonLinesWriter>(std::move(sink));
}

std::unique_ptr<RowWriter> MakeBareWriter(Format format, Sink sink) {
  if (format != Format::Table) return MakeRowWriter(format, std::move(sink));
  return std::make_unique<BareWriter>(std::move(sink));
}

std::unique_ptr<RowWriter> MakeRecordWriter(Format format, Sink sink) {
  if (format == Format::Table) return std::make_unique<PropertyWriter>(std::move(sink));
  if (format == Format::Json) return std::make_unique<ObjectWriter>(std::move(sink));
  return MakeRowWriter(format, std::move(sink));
}

std::size_t DisplayWidth(std::string_view text) {
  struct Range {
    char16_t first;
    char16_t last;
  };
  constexpr Range kCombining[] = {{0x0300, 0x036F}, {0x200B, 0x200F}, {0x20D0, 0x20FF},
                                  {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF}};
  // Han, kana, Hangul and full-width forms, and the lead halves of the planes of emoji and rarer
  // Han, whose second halves add nothing.
  constexpr Range kWide[] = {{0x1100, 0x115F}, {0x2E80, 0xA4CF}, {0xAC00, 0xD7A3},
                             {0xF900, 0xFAFF}, {0xFE30, 0xFE6F}, {0xFF00, 0xFF60},
                             {0xFFE0, 0xFFE6}, {0xD83C, 0xD83E}, {0xD840, 0xD8BF}};
  const auto in = [](std::span<const Range> ranges, char16_t unit) {
    return std::ranges::any_of(
        ranges, [unit](const Range& range) { return unit >= range.first && unit <= range.last; });
  };
  std::size_t width = 0;
  bool lead = false;
  for (const char16_t unit : Widen(text)) {
    const bool trail = lead && unit >= 0xDC00 && unit <= 0xDFFF;
    lead = unit >= 0xD800 && unit <= 0xDBFF;
    if (!trail && !in(kCombining, unit)) width += in(kWide, unit) ? 2 : 1;
  }
  return width;
}

}  // namespace orxdb
