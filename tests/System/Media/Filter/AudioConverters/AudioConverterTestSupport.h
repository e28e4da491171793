#pragma once
// Helpers of the audio converter tests: samples over byte vectors and one
// pass of a transform filter.

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/MemoryDataReference.h"

namespace AudioTest {

using Bytes = std::vector<unsigned char>;
using namespace Corvane::Mox;

inline CAudioProperties* Describe(unsigned int format, int channels, long long rate = 48000) {
  auto* properties = new CAudioProperties();
  properties->SetFormat(format);
  properties->SetChannels(channels);
  properties->SetSampleRate(rate);
  return properties;
}

inline CAudioSample* SampleOver(const Bytes& bytes, long long frames) {
  RObject<CBufferDataReference> data(new CBufferDataReference(static_cast<int>(bytes.size())));
  if (!bytes.empty()) std::memcpy(data->GetData(), bytes.data(), bytes.size());
  auto* sample = new CAudioSample(frames);
  sample->SetDataReference(data);
  return sample;
}

inline Bytes BytesOf(const CMediaSample* sample) {
  RObject<CLockedDataReference> data(sample->GetLockedDataReference(CDataReference::LockShared));
  if (!data) return {};
  return Bytes(data->GetData(), data->GetData() + data->GetLength());
}

template <class T>
Bytes Pack(const std::vector<T>& values) {
  Bytes bytes(values.size() * sizeof(T));
  std::memcpy(bytes.data(), values.data(), bytes.size());
  return bytes;
}

template <class T>
std::vector<T> Unpack(const Bytes& bytes) {
  std::vector<T> values(bytes.size() / sizeof(T));
  std::memcpy(values.data(), bytes.data(), values.size() * sizeof(T));
  return values;
}

}  // namespace AudioTest
