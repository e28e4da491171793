#pragma once
// CFanOutFilterT<K>: one input, several outputs. The component says which
// outputs an input makes (CreateOutputProperties; by default one copy of the
// input); they are described from AddInputMedia on and fixed at Begin.

#include <vector>

#include "System/Media/Filter/MediaFilter.h"
#include "System/Media/Filter/MediaFilterTrack.h"
#include "System/Media/MediaProperties.h"

namespace Corvane::Mox {

template <class K>
class CFanOutFilterT : public K {
 public:
  using Sample = typename K::Sample;
  using Properties = typename K::Properties;

  explicit CFanOutFilterT(unsigned int componentCode) : K(componentCode) {}

  using K::AddInputMedia;
  Result AddInputMedia(const Properties* properties) override {
    if (!properties) return ResultArgumentNull();
    input_ = static_cast<Properties*>(CMediaProperties::Clone(properties));
    this->RemoveInputTracks();
    Result added = K::AddInputMedia(properties);
    if (added.Succeeded()) RefreshOutputs();
    return added;
  }
  Properties* GetInputProperties() const { return input_; }  // borrowed

  Result Begin() override {
    if (this->IsReady()) return ResultFalse();
    if (!input_ || this->Evaluate(input_.Get()) == 0) throw ResultFormatError("the input properties are not acceptable");
    this->RemoveInputTracks();
    this->AddInputTrack(input_);
    Result begun = CMediaFilter::Begin();
    if (begun.Failed()) return begun;
    RefreshOutputs();
    return Result();
  }

  using K::WriteSample;
  Result WriteSample(Sample* sample) { return K::WriteSample(0, sample); }

  // The descriptions of the outputs for the input, in output order.
  virtual Result CreateOutputProperties(std::vector<RObject<Properties>>& outputs) const {
    outputs.clear();
    if (!input_) return ResultNullPointer("failed to create output properties");
    outputs.emplace_back(static_cast<Properties*>(CMediaProperties::Clone(input_)));
    return Result();
  }

 protected:
  using K::ProcessSample;
  Result ProcessSample(int, Sample* sample) override { return ProcessSample(sample); }
  virtual Result ProcessSample(Sample*) { return Result(); }

 private:
  void RefreshOutputs() {
    std::vector<RObject<Properties>> outputs;
    CreateOutputProperties(outputs).ThrowIfFailed();
    this->RemoveOutputTracks();
    for (const RObject<Properties>& output : outputs) this->AddOutputTrack(output);
  }

  RObject<Properties> input_;
};

}  // namespace Corvane::Mox
