#pragma once
// CTransformFilterT<K>: one input, one output, over a media-kind base K
// (CVideoFilter, CAudioFilter, CSubtitleFilter, CMetadataFilter).
//
// The output description is known as soon as the input is: before Begin,
// GetOutputMedia describes what the filter would produce for the current
// "OutputFormat" (the first acceptable output format when unset), so a
// topology can ask for it right after AddInputMedia. Begin fixes both.

#include "System/Collections/Value.h"
#include "System/Media/Filter/MediaFilter.h"
#include "System/Media/Filter/MediaFilterTrack.h"
#include "System/Media/MediaProperties.h"
#include "gen/CodeBookProperty.h"

namespace Corvane::Mox {

template <class K>
class CTransformFilterT : public K {
 public:
  using Sample = typename K::Sample;
  using Properties = typename K::Properties;

  explicit CTransformFilterT(unsigned int componentCode) : K(componentCode) {}

  // ---- negotiation ----
  using K::AddInputMedia;
  Result AddInputMedia(const Properties* properties) override {
    if (!properties) return ResultArgumentNull();
    SetInputProperties(properties);
    this->RemoveInputTracks();
    return K::AddInputMedia(properties);
  }
  void SetInputProperties(const Properties* properties) {
    input_ = properties ? static_cast<Properties*>(CMediaProperties::Clone(properties)) : nullptr;
  }
  Properties* GetInputProperties() const { return input_; }    // borrowed
  Properties* GetOutputProperties() const { return output_; }  // borrowed

  int GetOutputMediaCount() const override {
    if (this->IsReady()) return K::GetOutputMediaCount();
    RObject<CMediaProperties> media(GetOutputMedia(0));
    return media ? 1 : 0;
  }
  CMediaProperties* GetOutputMedia(int index) const override {
    if (this->IsReady() || index != 0) return K::GetOutputMedia(index);
    const unsigned int format = SelectOutputFormat();
    return format ? CreateOutputProperties(format) : nullptr;
  }
  // The one-track forms beside the indexed ones of the base.
  using K::GetInputMedia;
  using K::IsInputMediaReady;
  using K::IsOutputMediaReady;
  CMediaProperties* GetInputMedia() const { return this->GetInputMedia(0); }
  CMediaProperties* GetOutputMedia() const { return GetOutputMedia(0); }
  void SetOutputFormat(unsigned int format) {
    this->SetFourProperty(CodeBookProperty::MediaFilter::OutputFormat, format);
  }
  unsigned int GetInputFormat() const { return input_ ? input_->GetFormat() : 0; }
  unsigned int GetOutputFormat() const { return output_ ? output_->GetFormat() : 0; }
  bool IsInputMediaReady() const { return this->IsInputMediaReady(0); }
  bool IsOutputMediaReady() const { return this->IsOutputMediaReady(0); }
  int GetPendingInputSampleCount() const { return K::GetPendingInputSampleCount(0); }
  int GetPendingOutputSampleCount() const { return K::GetPendingOutputSampleCount(0); }

  // ---- running ----
  Result Begin() override {
    if (this->IsReady()) return ResultFalse();
    if (this->Evaluate(input_.Get()) == 0) throw ResultFormatError("the input properties are not acceptable");
    this->RemoveInputTracks();
    this->AddInputTrack(input_);
    RObject<CFormatList> formats(this->GetOutputFormats());
    unsigned int format = this->GetRequestedOutputFormat();
    // The lists are narrowed by the requested format: nothing left means the
    // request is the problem when there is one.
    if ((!formats || formats->GetCount() == 0) && format != 0)
      return ResultFormatError("the output format is not acceptable");
    if (!formats || formats->GetCount() == 0)
      return ResultFormatError("there are no acceptable output formats that match the input properties");
    if (format == 0) formats->GetValue(0, format);
    if (!formats->ContainsValue(format)) return ResultFormatError("the output format is not acceptable");
    Properties* created = nullptr;
    Result made = CreateOutputProperties(format, created);
    output_ = created;
    if (made.Failed()) return made;
    if (!output_) return ResultNullPointer("failed to create output properties");
    return this->BeginWithOutput(output_);
  }

  using K::WriteSample;
  using K::ReadSample;
  Result WriteSample(Sample* sample) { return K::WriteSample(0, sample); }
  Result ReadSample(Sample*& sample) { return K::ReadSample(0, sample); }

  // The description of the output for a format: by default a copy of the
  // input with that Format, no graphics-context extension and no bit rate.
  virtual Result CreateOutputProperties(unsigned int format, Properties*& properties) const {
    properties = nullptr;
    if (!input_) return ResultNullPointer("failed to create output properties");
    RObject<Properties> copy(static_cast<Properties*>(CMediaProperties::Clone(input_)));
    copy->SetFormat(format);
    copy->RemoveExtension(FourCC("gce "));
    copy->SetBitRate(0);
    properties = copy.Detach();
    return Result();
  }
  Properties* CreateOutputProperties(unsigned int format) const {
    Properties* properties = nullptr;
    CreateOutputProperties(format, properties);
    return properties;
  }

 protected:
  using K::ProcessSample;
  using K::EnqueueOutputSample;
  Result ProcessSample(int, Sample* sample) override { return ProcessSample(sample); }
  virtual Result ProcessSample(Sample*) { return Result(); }
  void EnqueueOutputSample(Sample* sample) { K::EnqueueOutputSample(0, sample); }

  const Properties* GetCurrentInput() const override { return input_; }

  // The format Begin would choose, or 0 when there is none.
  unsigned int SelectOutputFormat() const {
    if (!input_ || this->Evaluate(input_.Get()) == 0) return 0;
    RObject<CFormatList> formats(this->GetOutputFormats());
    if (!formats || formats->GetCount() == 0) return 0;
    unsigned int format = this->GetRequestedOutputFormat();
    if (format == 0) formats->GetValue(0, format);
    return formats->ContainsValue(format) ? format : 0;
  }

 private:
  RObject<Properties> input_;
  RObject<Properties> output_;
};

}  // namespace Corvane::Mox
