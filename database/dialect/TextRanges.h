// Files have indexes by the engine's own rule for texts, which knows the case of the letters A to Z
// alone: an index by the dialect's rule would shut other programs out. So a comparison for which
// that is not enough is given the ranges of such an index in which its texts can be.
#pragma once

#include "database/dialect/SyntaxTree.h"

namespace orxdb {

/// Whether it is a literal other than a text with letters beyond A to Z: to compare with it is the
/// same by both rules.
bool IsPlainLiteral(const Expression& expression);

/// Adds to a resolved LIKE, = or IN of a text field and literals a condition that is true wherever
/// it is, and false instead of false: that the field is in one of some ranges. Nothing where that
/// would narrow nothing down.
void AddTextRanges(Expression& expression);

}  // namespace orxdb
