#include "host/transfer/JsonText.h"

#include <nlohmann/json.hpp>

namespace orxdb {
namespace {

/// Is told of the parts of a JSON text one by one. Returning false ends the reading.
class Leaves {
 public:
  explicit Leaves(JsonLeaves& leaves) : m_leaves(leaves) {}

  const std::string& Problem() const noexcept { return m_problem; }

  bool null() { return Add(JsonLeaf::Kind::Null, {}); }
  bool boolean(bool flag) { return Add(JsonLeaf::Kind::Flag, flag ? "true" : "false"); }
  bool number_integer(std::int64_t number) {
    return Add(JsonLeaf::Kind::Number, std::to_string(number));
  }
  bool number_unsigned(std::uint64_t number) {
    return Add(JsonLeaf::Kind::Number, std::to_string(number));
  }
  bool number_float(double, const std::string& digits) {
    return Add(JsonLeaf::Kind::Number, digits);
  }
  bool string(std::string& text) { return Add(JsonLeaf::Kind::Text, text); }
  bool binary(nlohmann::json::binary_t&) { return false; }

  bool key(std::string& name) {
    m_path.back() = name;
    return true;
  }
  bool start_object(std::size_t) { return Start(false); }
  bool start_array(std::size_t) { return Start(true); }
  bool end_object() { return End(); }
  bool end_array() { return End(); }

  bool parse_error(std::size_t, const std::string&, const nlohmann::json::exception& error) {
    // "[what kind] parse error at line 1, column 6: syntax error while parsing value - why"
    const std::string whole = error.what();
    const std::size_t end = whole.find(" - ");
    m_problem = "It is no JSON: " + (end == whole.npos ? whole : whole.substr(end + 3)) + '.';
    return false;
  }

 private:
  static constexpr std::size_t kDeepest = 16;

  bool Add(JsonLeaf::Kind kind, std::string text) {
    m_leaves.push_back({m_path, kind, std::move(text)});
    Step();
    return true;
  }
  bool Start(bool list) {
    if (m_path.size() == kDeepest) {
      m_problem = "Its values are nested too deeply.";
      return false;
    }
    m_path.emplace_back(list ? "0" : "");
    m_open.push_back({list, 0, m_leaves.size()});
    return true;
  }
  bool End() {
    const bool empty = m_leaves.size() == m_open.back().leaves;
    m_open.pop_back();
    m_path.pop_back();
    if (empty) return Add(JsonLeaf::Kind::Structure, {});
    Step();
    return true;
  }
  void Step() {
    if (!m_open.empty() && m_open.back().list) m_path.back() = std::to_string(++m_open.back().next);
  }

  struct Open {
    bool list;
    std::size_t next;
    std::size_t leaves;
  };

  JsonLeaves& m_leaves;
  std::vector<std::string> m_path;
  std::vector<Open> m_open;
  std::string m_problem;
};

}  // namespace

std::string ReadJson(std::string_view text, JsonLeaves& leaves) {
  Leaves handler(leaves);
  // What is behind the text's end would be read over: the strict mode refuses it.
  const bool read = nlohmann::json::sax_parse(text.begin(), text.end(), &handler);
  if (read) return {};
  return handler.Problem().empty() ? "It is no JSON." : handler.Problem();
}

}  // namespace orxdb
