#pragma once

#include <string>

#include "host/transfer/TextDecoder.h"

namespace orxdb {

/// Formats in which tools travel; Auto is recognised by what a source holds, then by its name.
enum class ToolFormat { Auto, Exchange, Csv, Tsv, Json, Jsonl, FreeCad, LinuxCnc };

/// What is known about a source before it is read.
struct ReadOptions {
  ToolFormat format = ToolFormat::Auto;
  Encoding encoding = Encoding::Auto;
  std::string unit = {};  ///< of lengths, where the source tells none: "mm", "in" or empty
};

}  // namespace orxdb
