#include "host/output/TableWriter.h"

#include <algorithm>
#include <numeric>

#include "host/output/DisplayText.h"

namespace orxdb {
namespace {

constexpr std::size_t kGap = 2;  // blanks between columns

class TableWriter : public RowWriter {
 public:
  explicit TableWriter(Sink sink, std::size_t width = 0)
      : RowWriter(std::move(sink)), m_width(width) {}
  void Header(const std::vector<std::string>& columns) override {
    for (const std::string& column : columns) m_columns.push_back({Shown(Cell::Text(column))});
  }
  void Row(std::vector<Cell> cells) override {
    for (Cell& cell : cells) cell.text = Shown(cell);
    if (m_begun) return Line(cells);
    m_rows.push_back(std::move(cells));
    if (m_rows.size() == kSample) Begin();
  }
  void End() override {
    if (!m_begun) Begin();
  }

 private:
  /// Rows that are kept to know how wide the columns are.
  static constexpr std::size_t kSample = 1000;
  /// Columns are not made narrower than this, nor than their numbers.
  static constexpr std::size_t kNarrowest = 8;

  struct Column {
    std::string name;
    std::size_t width = 0;
    std::size_t narrowest = 0;  ///< places that it may be shortened to
    bool numeric = true;
  };

  /// Flags in words, and a blank for what would break the line.
  static std::string Shown(const Cell& cell) {
    if (cell.kind == Cell::Kind::Flag) return cell.text == "true" ? "yes" : "no";
    std::string text = Harmless(cell.text);
    std::ranges::replace_if(
        text, [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    return text;
  }

  void Measure() {
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
      Column& column = m_columns[i];
      for (const std::vector<Cell>& row : m_rows) {
        const Cell::Kind kind = row[i].kind;
        column.numeric &= kind == Cell::Kind::Number || kind == Cell::Kind::Null;
        column.width = std::max(column.width, DisplayWidth(row[i].text));
      }
      column.narrowest = column.numeric ? std::max(column.width, kNarrowest) : kNarrowest;
      column.width = std::max(column.width, DisplayWidth(column.name));
      column.narrowest = std::min(column.narrowest, column.width);
    }
  }

  std::size_t LineWidth() const {
    return std::accumulate(
        m_columns.begin(), m_columns.end(), std::size_t{0},
        [](std::size_t sum, const Column& column) { return sum + column.width + kGap; });
  }

  /// Takes places from the widest columns.
  void Fit() {
    while (m_width > 0 && LineWidth() > m_width + kGap) {
      Column* widest = nullptr;
      for (Column& column : m_columns) {
        const bool shrinks = column.width > column.narrowest;
        if (shrinks && (widest == nullptr || column.width > widest->width)) widest = &column;
      }
      if (widest == nullptr) return;
      --widest->width;
      m_shortens = true;
    }
  }

  void Begin() {
    m_begun = true;
    if (m_columns.empty()) return;
    Measure();
    Fit();
    std::vector<Cell> names;
    std::vector<Cell> rules;
    for (const Column& column : m_columns) {
      names.push_back(Cell::Text(column.name));
      rules.push_back(Cell::Text(std::string(column.width, '-')));
    }
    Line(names);
    Line(rules);
    for (std::vector<Cell>& row : m_rows) Line(row);
    m_rows.clear();
  }

  void Line(std::vector<Cell>& cells) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      const Column& column = m_columns[i];
      if (m_shortens && cells[i].kind != Cell::Kind::Number) {
        cells[i].text = Shortened(cells[i].text, column.width);
      }
      const std::size_t places = DisplayWidth(cells[i].text);
      const std::string padding(column.width - std::min(column.width, places), ' ');
      if (i > 0) line.append(kGap, ' ');
      line += column.numeric ? padding + cells[i].text : cells[i].text + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    Put(line + '\n');
  }

  std::size_t m_width;
  std::vector<Column> m_columns;
  std::vector<std::vector<Cell>> m_rows;
  bool m_begun = false;
  bool m_shortens = false;
};

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

std::unique_ptr<RowWriter> MakeTableWriter(Sink sink, std::size_t width) {
  return std::make_unique<TableWriter>(std::move(sink), width);
}

std::unique_ptr<RowWriter> MakePropertyWriter(Sink sink) {
  return std::make_unique<PropertyWriter>(std::move(sink));
}

}  // namespace orxdb
