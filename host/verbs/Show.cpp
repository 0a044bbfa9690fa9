#include "host/verbs/Show.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/ioctl.h>
#include <unistd.h>

#include "host/library/HostError.h"
#include "host/output/DisplayText.h"

namespace orxdb {
namespace {

[[noreturn]] void FailToWrite() {
  if (errno == EPIPE) throw OutputClosed();
  throw HostError(std::string("The results cannot be written: ") + std::strerror(errno) + '.');
}

std::unique_ptr<RowWriter> MakeWriter(Layout layout, Shape shape) {
  switch (shape) {
    case Shape::Bare:
      return MakeBareWriter(layout, Put);
    case Shape::Record:
      return MakeRecordWriter(layout, Put);
    case Shape::Rows:
      break;
  }
  return MakeRowWriter(layout, Put);
}

}  // namespace

void Tell(const std::string& sentence) {
  std::fprintf(stderr, "%s\n", Harmless(sentence).c_str());
}

void Put(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) FailToWrite();
}

std::size_t TerminalWidth() {
  winsize size{};
  const bool known = isatty(STDOUT_FILENO) != 0 && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0;
  return known ? size.ws_col : 0;
}

void EndOutput() {
  if (std::fflush(stdout) != 0) FailToWrite();
}

void Show(Layout layout, Shape shape, Answer answer) {
  for (const std::string& remark : answer.remarks) Tell(remark);
  const auto writer = MakeWriter(layout, shape);
  writer->Header(answer.columns);
  for (std::vector<Cell>& row : answer.rows) writer->Row(std::move(row));
  writer->End();
  EndOutput();
  if (!answer.complaint.empty()) throw HostError(answer.complaint);
}

}  // namespace orxdb
