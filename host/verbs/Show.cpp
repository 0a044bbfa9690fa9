#include "host/verbs/Show.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "host/library/HostError.h"

namespace orxdb {
namespace {

[[noreturn]] void FailToWrite() {
  if (errno == EPIPE) throw OutputClosed();
  throw HostError(std::string("The results cannot be written: ") + std::strerror(errno) + '.');
}

std::unique_ptr<RowWriter> MakeWriter(Format format, Shape shape) {
  switch (shape) {
    case Shape::Bare:
      return MakeBareWriter(format, Put);
    case Shape::Record:
      return MakeRecordWriter(format, Put);
    case Shape::Rows:
      break;
  }
  return MakeRowWriter(format, Put);
}

}  // namespace

void Tell(const std::string& sentence) {
  std::fprintf(stderr, "%s\n", sentence.c_str());
}

void Put(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) FailToWrite();
}

void EndOutput() {
  if (std::fflush(stdout) != 0) FailToWrite();
}

void Show(Format format, Shape shape, Answer answer) {
  for (const std::string& remark : answer.remarks) Tell(remark);
  const auto writer = MakeWriter(format, shape);
  writer->Header(answer.columns);
  for (std::vector<Cell>& row : answer.rows) writer->Row(std::move(row));
  writer->End();
  EndOutput();
  if (!answer.complaint.empty()) throw HostError(answer.complaint);
}

}  // namespace orxdb
