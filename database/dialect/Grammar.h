#pragma once

#include <string_view>

#include "database/dialect/SyntaxTree.h"

namespace orxdb {

// Both raise `Syntax` for what the grammar does not know, and for texts out of all proportion.
// Binding strength, weakest first: XOR; OR; AND; NOT; comparisons; &; + -; MOD; \; * /; sign; ^.

/// One condition, and nothing behind it.
Expression ReadCondition(std::string_view text);

/// One SELECT, a semicolon behind it if wanted, and nothing else.
Select ReadSelect(std::string_view text);

}  // namespace orxdb
