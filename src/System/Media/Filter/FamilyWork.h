#pragma once
// The shared tail of the families' one-argument work operations (Convert,
// Decompress, Compress): run the two-argument form and queue what it yields.
// Included only by the families' source files.

#include "System/Object.h"

namespace Corvane::Mox {

template <class Sample, class Work, class Queue>
Result RunAndQueue(Work work, Queue queue) {
  Sample* produced = nullptr;
  Result worked = work(produced);
  RObject<Sample> held(produced);
  if (worked.Failed()) return worked;
  if (held) queue(held.Get());
  return Result();
}

template <class Sample>
Result PassThrough(Sample* sample, Sample*& result) {
  if (sample) sample->Acquire();
  result = sample;
  return Result();
}

}  // namespace Corvane::Mox
