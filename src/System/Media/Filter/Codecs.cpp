#include "System/Media/Filter/Codecs.h"

#include "System/Media/Filter/FamilyWork.h"

namespace Corvane::Mox {

// ---- decompressors ----

Result CVideoDecompressor::Decompress(CVideoSample* sample) {
  return RunAndQueue<CVideoSample>([&](CVideoSample*& out) { return Decompress(sample, out); },
                                   [&](CVideoSample* out) { EnqueueOutputSample(out); });
}

Result CVideoDecompressor::Decompress(CVideoSample* sample, CVideoSample*& decompressed) {
  return PassThrough(sample, decompressed);
}

Result CVideoDecompressor::ProcessSample(CVideoSample* sample) {
  if (!sample || sample->HasDataReference()) return Decompress(sample);
  Drain(false);
  return RunAndQueue<CVideoSample>(
      [&](CVideoSample*& out) { return CreateGapSample(GetOutputProperties(), sample, out); },
      [&](CVideoSample* out) { EnqueueOutputSample(out); });
}

Result CAudioDecompressor::Decompress(CAudioSample* sample) {
  return RunAndQueue<CAudioSample>([&](CAudioSample*& out) { return Decompress(sample, out); },
                                   [&](CAudioSample* out) { EnqueueOutputSample(out); });
}

Result CAudioDecompressor::Decompress(CAudioSample* sample, CAudioSample*& decompressed) {
  return PassThrough(sample, decompressed);
}

Result CAudioDecompressor::ProcessSample(CAudioSample* sample) {
  if (!sample || sample->HasDataReference()) return Decompress(sample);
  Drain(false);
  return RunAndQueue<CAudioSample>(
      [&](CAudioSample*& out) { return CreateGapSample(GetOutputProperties(), sample, out); },
      [&](CAudioSample* out) { EnqueueOutputSample(out); });
}

// ---- compressors ----

Result CVideoCompressor::Compress(CVideoSample* sample) {
  return RunAndQueue<CVideoSample>([&](CVideoSample*& out) { return Compress(sample, out); },
                                   [&](CVideoSample* out) { EnqueueOutputSample(out); });
}

Result CVideoCompressor::Compress(CVideoSample* sample, CVideoSample*& compressed) {
  return PassThrough(sample, compressed);
}

Result CVideoCompressor::ProcessSample(CVideoSample* sample) {
  if (!sample || sample->HasDataReference()) return Compress(sample);
  CVideoSample* black = nullptr;
  Result created = CreateGapSample(GetInputProperties(), sample, black);
  RObject<CVideoSample> held(black);
  return created.Failed() ? created : Compress(black);
}

Result CAudioCompressor::Compress(CAudioSample* sample) {
  return RunAndQueue<CAudioSample>([&](CAudioSample*& out) { return Compress(sample, out); },
                                   [&](CAudioSample* out) { EnqueueOutputSample(out); });
}

Result CAudioCompressor::Compress(CAudioSample* sample, CAudioSample*& compressed) {
  return PassThrough(sample, compressed);
}

Result CAudioCompressor::ProcessSample(CAudioSample* sample) {
  if (!sample || sample->HasDataReference()) return Compress(sample);
  CAudioSample* silent = nullptr;
  Result created = CreateGapSample(GetInputProperties(), sample, silent);
  RObject<CAudioSample> held(silent);
  return created.Failed() ? created : Compress(silent);
}

Result CVideoFanOutCompressor::Compress(CVideoSample*) { return Result(); }

}  // namespace Corvane::Mox
