#include "System/Media/Filter/AudioConverters/AudioFormatConverter.h"

#include <limits>

#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Filter/AudioConverters/SampleCoding.h"
#include "System/Media/LockedDataReference.h"
#include "gen/CodeBookProperty.h"

namespace Corvane::Mox {

namespace {

constexpr int F(const char (&code)[5]) { return static_cast<int>(FourCC(code)); }

const CAudioFormatConverter::Row kConversions[] = {
#define MOX_AUDIO_CONVERSION(Input, Output) {{Input, 0, 0, 0}, {Output, 0, 0, 0}},
#include "System/Media/Filter/AudioConverters/AudioFormatConversions.def"
#undef MOX_AUDIO_CONVERSION
    {{0, 0, 0, 0}, {0, 0, 0, 0}},
};

bool IsListed(unsigned int input, unsigned int output) {
  for (const auto& row : kConversions)
    if (static_cast<unsigned int>(row.input.format) == input && static_cast<unsigned int>(row.output.format) == output)
      return true;
  return false;
}

bool IsOneOf(unsigned int format, unsigned int a, unsigned int b) { return format == a || format == b; }

}  // namespace

CAudioFormatConverter::CAudioFormatConverter() : CAudioConverter(ComponentCode) {}

const CAudioFormatConverter::Row* CAudioFormatConverter::GetConfigurationTable() const { return kConversions; }

CProperties* CAudioFormatConverter::GetDocumentation() const {
  CProperties* documentation = IPropertiesDocumentation::GetDocumentationT<CodeBookProperty::AudioConverter>();
  if (documentation) documentation->SetProperty("brief", "AudioFormatConverter configuration properties.");
  return documentation;
}

unsigned int CAudioFormatConverter::GetTargetFormat() const {
  if (const CAudioProperties* output = GetOutputProperties()) return output->GetFormat();
  return GetRequestedOutputFormat();
}

Result CAudioFormatConverter::Convert(CAudioSample* in, CAudioSample*& out) {
  out = nullptr;
  if (!in) return ResultArgumentNull();
  const CAudioProperties* input = GetInputProperties();
  if (!input) return ResultNullPointer("input properties not set");
  const unsigned int from = input->GetFormat();
  const unsigned int to = GetTargetFormat();
  if (to == from || to == 0) {
    // Nothing to change: the same bytes under a new sample.
    RObject<CAudioSample> copy(new CAudioSample(in));
    RObject<CDataReference> data(in->GetDataReference());
    Result shared = copy->SetDataReference(data);
    if (shared.Failed()) return shared;
    Result copied = CopySampleMetadata(copy, in);
    if (copied.Failed()) return copied;
    out = copy.Detach();
    return Result();
  }
  Result converted;
  if (IsOneOf(from, FourCC("02ni"), FourCC("in20"))) converted = ConvertFromInt20(in, to, out);
  else if (IsOneOf(from, FourCC("42ni"), FourCC("in24"))) converted = ConvertFromInt24(in, to, out);
  else if (IsOneOf(from, FourCC("23ni"), FourCC("in32"))) converted = ConvertFromInt32(in, to, out);
  else if (IsOneOf(from, FourCC("23lf"), FourCC("fl32"))) converted = ConvertFromFloat32(in, to, out);
  else if (IsOneOf(from, FourCC("46lf"), FourCC("fl64"))) converted = ConvertFromFloat64(in, to, out);
  else if (IsOneOf(from, FourCC("sowt"), FourCC("twos"))) converted = ConvertFromInt16(in, to, out);
  else if (IsOneOf(from, FourCC("u24l"), FourCC("u24b"))) converted = ConvertFromUInt24(in, to, out);
  else if (IsOneOf(from, FourCC("ulaw"), FourCC("alaw"))) converted = ConvertFromLaw(in, to, out);
  else if (from == FourCC("int8")) converted = ConvertFromInt8(in, to, out);
  else if (from == FourCC("raw ")) converted = ConvertFromUInt8(in, to, out);
  else converted = ResultNotSupported("the audio format converter does not read this input format");
  return converted;
}

Result CAudioFormatConverter::ConvertFromLaw(CAudioSample* in, unsigned int output, CAudioSample*& out) {
  return RunWorker(in, output, out);
}
Result CAudioFormatConverter::ConvertFromInt8(CAudioSample* in, unsigned int output, CAudioSample*& out) {
  return RunWorker(in, output, out);
}
Result CAudioFormatConverter::ConvertFromUInt8(CAudioSample* in, unsigned int output, CAudioSample*& out) {
  return RunWorker(in, output, out);
}
Result CAudioFormatConverter::ConvertFromInt16(CAudioSample* in, unsigned int output, CAudioSample*& out) {
  return RunWorker(in, output, out);
}
Result CAudioFormatConverter::ConvertFromInt20(CAudioSample* in, unsigned int output, CAudioSample*& out) {
  return RunWorker(in, output, out);
}
Result CAudioFormatConverter::ConvertFromInt24(CAudioSample* in, unsigned int output, CAudioSample*& out) {
  return RunWorker(in, output, out);
}
Result CAudioFormatConverter::ConvertFromUInt24(CAudioSample* in, unsigned int output, CAudioSample*& out) {
  return RunWorker(in, output, out);
}
Result CAudioFormatConverter::ConvertFromInt32(CAudioSample* in, unsigned int output, CAudioSample*& out) {
  return RunWorker(in, output, out);
}
Result CAudioFormatConverter::ConvertFromFloat32(CAudioSample* in, unsigned int output, CAudioSample*& out) {
  return RunWorker(in, output, out);
}
Result CAudioFormatConverter::ConvertFromFloat64(CAudioSample* in, unsigned int output, CAudioSample*& out) {
  return RunWorker(in, output, out);
}

Result CAudioFormatConverter::SwapBytes(CAudioSample* in, unsigned int output, CAudioSample*& out) {
  const SampleCoding* from = SampleCoding::Find(GetInputFormat());
  const SampleCoding* to = SampleCoding::Find(output);
  if (!from || !to || !from->DiffersOnlyInByteOrder(*to)) return ResultNotSupported("not a byte-order change");
  return RunWorker(in, output, out);
}

Result CAudioFormatConverter::ConvertToLittleEndian(CAudioSample* in, unsigned int output, CAudioSample*& out) {
  const SampleCoding* to = SampleCoding::Find(output);
  if (!to || to->bigEndian) return ResultNotSupported("not a little-endian output format");
  return RunWorker(in, output, out);
}

Result CAudioFormatConverter::RunWorker(CAudioSample* in, unsigned int output, CAudioSample*& out) {
  out = nullptr;
  const CAudioProperties* input = GetInputProperties();
  if (!input || !in) return ResultArgumentNull();
  const SampleCoding* from = SampleCoding::Find(input->GetFormat());
  const SampleCoding* to = SampleCoding::Find(output);
  if (!from || !to || !IsListed(from->format, to->format))
    return ResultNotSupported("the audio format converter does not make this output format from its input");
  RObject<CLockedDataReference> source(in->GetLockedDataReference(CDataReference::LockShared));
  if (!source) return ResultNullPointer("the sample has no data");
  // Whole frames of the declared duration, as far as the data reaches.
  const long long channels = input->GetChannels() > 0 ? input->GetChannels() : 1;
  const long long available = source->GetLength() / from->bytes;
  const long long values = std::min(in->GetDuration() * channels, available - available % channels);
  if (values < 0 || values * to->bytes > std::numeric_limits<int>::max())
    return ResultArgumentOutOfRange("the sample is too large to convert");
  const int length = static_cast<int>(values * to->bytes);
  CAudioSample* created = nullptr;
  Result made = CreateSample(length, created);
  if (made.Failed()) return made;
  RObject<CAudioSample> result(created);
  {
    RObject<CLockedDataReference> target(result->GetLockedDataReference(CDataReference::LockExclusive));
    if (!target) return ResultNullPointer("the output sample has no data");
    Result sized = target->SetLength(length);
    if (sized.Failed()) return sized;
    ConvertSamples(*from, *to, source->GetData(), target->GetData(), static_cast<size_t>(values));
  }
  Result copied = CopySampleMetadata(result, in);
  if (copied.Failed()) return copied;
  result->SetDuration(values / channels);
  out = result.Detach();
  return Result();
}

}  // namespace Corvane::Mox
