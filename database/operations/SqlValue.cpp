#include "database/operations/SqlValue.h"

#include <algorithm>

#include "platform/automation/Ascii.h"

namespace orxdb {

CellView CellOf(const SqlValue& value) {
  CellView view;
  if (const auto* integer = std::get_if<std::int64_t>(&value)) {
    view.kind = CellView::Kind::Integer;
    view.integer = *integer;
  } else if (const auto* real = std::get_if<double>(&value)) {
    view.kind = CellView::Kind::Real;
    view.real = *real;
  } else if (const auto* text = std::get_if<std::string>(&value)) {
    view.kind = CellView::Kind::Text;
    view.text = *text;
  } else if (const auto* blob = std::get_if<Blob>(&value)) {
    view.kind = CellView::Kind::Bytes;
    view.text = {reinterpret_cast<const char*>(blob->data()), blob->size()};
  }
  return view;
}

std::string Quoted(std::string_view name) {
  std::string quoted = "\"";
  for (const char c : name) {
    quoted += c;
    if (c == '"') quoted += c;
  }
  quoted += '"';
  return quoted;
}

bool SameName(std::string_view a, std::string_view b) noexcept {
  return EqualNoCase(a, b);
}

std::string FoldedName(std::string_view name) {
  std::string folded(name);
  std::transform(folded.begin(), folded.end(), folded.begin(), LowerAscii);
  return folded;
}

}  // namespace orxdb
