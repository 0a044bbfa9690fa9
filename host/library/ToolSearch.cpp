#include "host/library/ToolSearch.h"

#include <algorithm>
#include <array>

#include "host/library/Cause.h"
#include "host/library/Lengths.h"
#include "host/library/Names.h"
#include "host/library/SearchTerms.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

// What a fit in a place counts: words by 1 to 3, for a part to a whole word.
constexpr Fit kNameWord = 3;
constexpr Fit kKindWord = 4;
constexpr Fit kTextWord = 2;
constexpr Fit kMainSize = 12;
constexpr Fit kSearchedSize = 5;
constexpr Fit kOtherNumber = 2;

/// A kind of tool as a search sees it.
class SearchedKind {
 public:
  SearchedKind(ToolDatabase& database, const ToolKind& kind, const std::vector<SearchTerm>& terms)
      : m_terms(terms) {
    const std::vector<Property> properties = database.Properties(kind.table);
    const std::vector<std::string> params = database.SearchParams(kind.table);
    for (std::size_t i = 0; i < properties.size(); ++i) AddField(kind, properties[i], i, params);
    const std::u16string names = Widen(kind.type + ' ' + kind.subtype + ' ' + kind.table);
    // Written in one word, too.
    const std::u16string key = Widen(NameKey(kind.subtype));
    for (const SearchTerm& term : terms) {
      m_fits.push_back(std::max(FitOf(term, names), FitOf(term, key)) * kKindWord);
    }
  }

  /// How well the tool fits; 0 when one of the terms does not fit at all.
  Fit FitOfTool(const ArrayAccess<VARIANT>& values) const {
    const double millimetres =
        MillimetresOf(m_unit < values.size() && values[m_unit].vt == VT_BSTR &&
                              LengthUnitNamed(NarrowBstr(values[m_unit].bstrVal)) == Unit::Inch
                          ? Unit::Inch
                          : Unit::Millimetre);
    Fit sum = 0;
    for (std::size_t i = 0; i < m_terms.size(); ++i) {
      Fit best = m_fits[i];
      for (const Field& field : m_fields) {
        const bool better = field.most > best && field.position < values.size();
        if (better)
          best = std::max(best, FitIn(field, values[field.position], m_terms[i], millimetres));
      }
      if (best == 0) return 0;
      sum += best;
    }
    return sum;
  }

  /// The places of what is shown of a tool; behind all values for what its kind has not.
  const std::array<std::size_t, 5>& Shown() const { return m_shown; }

 private:
  struct Field {
    std::size_t position;
    Fit weight;
    Fit most;  ///< the best fit that there can be
    bool length;
  };

  void AddField(const ToolKind& kind, const Property& property, std::size_t position,
                const std::vector<std::string>& params) {
    const std::string& name = property.name;
    const bool searched = std::ranges::find(params, name) != params.end();
    if (ToolDatabase::IsKey(kind.table, name)) {
      m_shown[0] = position;
    } else if (property.type == VT_BSTR) {
      const Fit weight = name == "Name" || name == "Thread_Size" ? kNameWord : kTextWord;
      if (name != "Unit") m_fields.push_back({position, weight, weight * 3, false});
    } else if (IsLength(property)) {
      const bool main = m_shown[2] == kNone && (searched || name == "Diameter");
      const Fit weight = main ? kMainSize : searched ? kSearchedSize : kOtherNumber;
      m_fields.push_back({position, weight, weight, true});
      if (main) m_shown[2] = position;
    } else if (!name.starts_with("AUX_") && property.type != VT_BOOL) {
      const Fit weight = searched ? kSearchedSize : kOtherNumber;
      m_fields.push_back({position, weight, weight, false});
    }
    if (name == "Name") m_shown[1] = position;
    if (name == "Unit") m_shown[3] = m_unit = position;
    if (name == "Material") m_shown[4] = position;
  }

  static Fit FitIn(const Field& field, const VARIANT& value, const SearchTerm& term,
                   double millimetres) {
    double number = 0;
    switch (value.vt) {
      case VT_BSTR:
        return FitOf(term, View(value.bstrVal)) * field.weight;
      case VT_R8:
        number = value.dblVal;
        break;
      case VT_R4:
        number = value.fltVal;
        break;
      case VT_UI1:
        number = value.bVal;
        break;
      case VT_I2:
        number = value.iVal;
        break;
      case VT_I4:
        number = value.lVal;
        break;
      default:
        return 0;
    }
    const bool fits =
        field.length ? IsAmong(number * millimetres, term.sizes) : IsAmong(number, term.numbers);
    return fits ? field.weight : 0;
  }

  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  const std::vector<SearchTerm>& m_terms;
  std::vector<Fit> m_fits;  ///< of each term by the kind alone
  std::vector<Field> m_fields;
  std::size_t m_unit = kNone;
  std::array<std::size_t, 5> m_shown{kNone, kNone, kNone, kNone, kNone};
};

struct Hit {
  Fit fit = 0;
  std::size_t place = 0;  ///< in the order of the library
  std::vector<Cell> row;

  bool operator<(const Hit& other) const {
    return fit != other.fit ? fit > other.fit : place < other.place;
  }
};

/// The best hits so far; the worst of them is the first.
class BestHits {
 public:
  explicit BestHits(std::size_t limit) : m_limit(limit) {}

  /// Whether a hit found now would be one of the best.
  bool Takes(Fit fit) {
    ++m_count;
    return m_limit > 0 && (m_hits.size() < m_limit || fit > m_hits.front().fit);
  }
  void Add(Fit fit, std::vector<Cell> row) {
    if (m_hits.size() == m_limit) {
      std::pop_heap(m_hits.begin(), m_hits.end());
      m_hits.pop_back();
    }
    m_hits.push_back({fit, m_count, std::move(row)});
    std::push_heap(m_hits.begin(), m_hits.end());
  }

  std::size_t Count() const { return m_count; }
  std::vector<Hit> Sorted() && {
    std::sort(m_hits.begin(), m_hits.end());
    return std::move(m_hits);
  }

 private:
  std::size_t m_limit;
  std::size_t m_count = 0;
  std::vector<Hit> m_hits;
};

/// Whether a kind is meant by a text: its table, or words of its names.
bool IsMeant(const ToolKind& kind, const std::string& type) {
  const std::string key = NameKey(type);
  return key.empty() || NameKey(kind.table) == key || NameKey(kind.type) == key ||
         HasPart(NameKey(kind.subtype), key);
}

std::vector<ToolKind> KindsMeant(const ToolDatabase& database, const std::string& type) {
  std::vector<ToolKind> kinds;
  std::vector<std::string> names;
  for (const ToolKind& kind : database.Types()) {
    if (IsMeant(kind, type)) kinds.push_back(kind);
    for (const std::string& name : {kind.type, kind.subtype, kind.table}) {
      if (std::ranges::find(names, name) == names.end()) names.push_back(name);
    }
  }
  if (kinds.empty()) {
    throw HostError("There is no kind of tool " + Cited(type) + '.' + Nearest(type, names));
  }
  return kinds;
}

}  // namespace

Answer FindTools(ToolDatabase& database, const std::string& text, const SearchOptions& options) {
  const std::vector<SearchTerm> terms = TermsOf(text);
  if (terms.empty()) throw HostError("A text to look for is wanted.");
  BestHits best(options.limit);
  for (const ToolKind& kind : KindsMeant(database, options.type)) {
    const SearchedKind searched(database, kind, terms);
    database.Select(kind.table, {}, {});
    for (ToolWalk walk(database, kind.table, {}); walk; walk.Next()) {
      const Fit fit =
          searched.FitOfTool(ArrayAccess<VARIANT>(walk.Current().values().get().parray));
      if (fit == 0 || !best.Takes(fit)) continue;
      std::vector<Cell> row = walk.Values({searched.Shown().begin(), searched.Shown().end()});
      row.insert(row.begin(), Cell::Text(kind.table));
      best.Add(fit, std::move(row));
    }
  }
  if (best.Count() == 0) {
    throw HostError("No tool has all of " + Cited(text) + ". Try fewer words.");
  }
  Answer answer({"Table", "ID", "Name", "Size", "Unit", "Material"});
  if (best.Count() > options.limit) {
    answer.remarks.push_back("These are the best of " + std::to_string(best.Count()) + " tools.");
  }
  for (Hit& hit : std::move(best).Sorted()) answer.rows.push_back(std::move(hit.row));
  return answer;
}

}  // namespace orxdb
