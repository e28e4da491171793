#include "System/IO/ObservingStream.h"

namespace Corvane::Mox {

Result CObservingStream::Read(unsigned char* buffer, int count, int* read) {
  int delivered = 0;
  Result result = CWrappedStream::Read(buffer, count, &delivered);
  if (read) *read = delivered;
  if (result.Succeeded()) Observe(buffer, delivered);
  return result;
}

Result CObservingStream::Write(const unsigned char* buffer, int count, int* written) {
  int accepted = 0;
  Result result = CWrappedStream::Write(buffer, count, &accepted);
  if (written) *written = accepted;
  if (result.Succeeded()) Observe(buffer, accepted);
  return result;
}

}  // namespace Corvane::Mox
