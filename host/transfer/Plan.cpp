#include "host/transfer/Plan.h"

#include <numeric>

namespace orxdb {
namespace {

const char* NameOf(Outcome outcome) {
  switch (outcome) {
    case Outcome::Added:
      return "added";
    case Outcome::Present:
      return "present";
    case Outcome::Differs:
      return "differs";
    case Outcome::Updated:
      return "updated";
    case Outcome::Refused:
      break;
  }
  return "refused";
}

}  // namespace

std::string PlanLine::Text() const {
  return source + (place.empty() ? "" : ", " + place) + ": " + NameOf(outcome) +
         (reason.empty() ? "." : ": " + reason);
}

long long PlanCounts::Records() const noexcept {
  return std::accumulate(by.begin(), by.end(), 0LL);
}

}  // namespace orxdb
