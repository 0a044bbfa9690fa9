#include "values/StoredValue.h"

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

}  // namespace orxdb
