#pragma once
// CFanInFilterT<K>: several inputs, one output. Inputs are added one by one;
// the output description is combined from them by the component
// (CreateOutputProperties; by default a copy of the first input in the
// selected output format) and fixed at Begin.

#include "System/Collections/Value.h"
#include "System/Media/Filter/MediaFilter.h"
#include "System/Media/Filter/MediaFilterTrack.h"
#include "System/Media/MediaProperties.h"

namespace Corvane::Mox {

template <class K>
class CFanInFilterT : public K {
 public:
  using Sample = typename K::Sample;
  using Properties = typename K::Properties;

  explicit CFanInFilterT(unsigned int componentCode) : K(componentCode) {}

  Properties* GetOutputProperties() const { return output_; }  // borrowed

  int GetOutputMediaCount() const override { return this->IsReady() ? K::GetOutputMediaCount() : (HasOutput() ? 1 : 0); }
  CMediaProperties* GetOutputMedia(int index) const override {
    if (this->IsReady() || index != 0) return K::GetOutputMedia(index);
    Properties* properties = nullptr;
    CreateOutputProperties(SelectOutputFormat(), properties);
    return properties;
  }

  Result Begin() override {
    if (this->IsReady()) return ResultFalse();
    if (this->GetInputMediaCount() == 0) throw ResultFormatError("the input properties are not acceptable");
    Properties* created = nullptr;
    Result made = CreateOutputProperties(SelectOutputFormat(), created);
    output_ = created;
    if (made.Failed()) return made;
    if (!output_) return ResultNullPointer("failed to create output properties");
    return this->BeginWithOutput(output_);
  }

  using K::ReadSample;
  Result ReadSample(Sample*& sample) { return K::ReadSample(0, sample); }

  virtual Result CreateOutputProperties(unsigned int format, Properties*& properties) const {
    properties = nullptr;
    RObject<CMediaProperties> first(this->GetInputMedia(0));
    if (!first) return ResultNullPointer("failed to create output properties");
    RObject<Properties> copy(static_cast<Properties*>(CMediaProperties::Clone(first)));
    if (format) copy->SetFormat(format);
    properties = copy.Detach();
    return Result();
  }

 protected:
  using K::EnqueueOutputSample;
  void EnqueueOutputSample(Sample* sample) { K::EnqueueOutputSample(0, sample); }

 private:
  bool HasOutput() const { return this->GetInputMediaCount() > 0; }
  unsigned int SelectOutputFormat() const {
    unsigned int format = this->GetRequestedOutputFormat();
    if (format) return format;
    RObject<CFormatList> formats(this->GetOutputFormats());
    if (formats && formats->GetCount() > 0) formats->GetValue(0, format);
    return format;
  }

  RObject<Properties> output_;
};

}  // namespace Corvane::Mox
