// What verbs write: results to standard output, sentences to standard error.
#pragma once

#include <memory>
#include <string>

#include "host/library/Answer.h"
#include "host/output/RowWriter.h"

namespace orxdb {

/// Whoever read the output has read enough (`| head`); the program ends quietly.
class OutputClosed {};

/// Tells the person a sentence beside the result.
void Tell(const std::string& sentence);

/// Writes to standard output. Throws HostError when that refuses and OutputClosed when nobody reads
/// it any more.
void Put(std::string_view text);
/// Places of a line on the terminal that the results go to; 0 when they go elsewhere.
std::size_t TerminalWidth();
/// Writes what has been held back, likewise.
void EndOutput();

enum class Shape {
  Rows,
  Bare,    ///< of each row, people want to see the last cell
  Record,  ///< there is one row, of properties
};

/// Writes an answer. Throws HostError with its complaint when it has one.
void Show(Layout layout, Shape shape, Answer answer);

}  // namespace orxdb
