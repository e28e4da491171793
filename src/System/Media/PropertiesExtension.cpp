#include "System/Media/PropertiesExtension.h"

#include "System/ByteArray.h"
#include "System/Properties.h"
#include "System/Text.h"
#include "System/VariantArray.h"

namespace Corvane::Mox {

namespace {

constexpr unsigned int F(const char (&code)[5]) { return FourCC(code); }

struct ExtensionType {
  unsigned int tag;
  const char* name;
};

const ExtensionType kTypes[] = {
#define MOX_EXTENSION_TYPE(tag, name) {tag, name},
#include "System/Media/PropertiesExtensionType.def"
#undef MOX_EXTENSION_TYPE
};

}  // namespace

namespace PropertiesExtensionType {

// A short table consulted when a description is printed: a linear search.
const char* GetName(unsigned int tag) {
  for (const ExtensionType& type : kTypes) {
    if (type.tag == tag) return type.name;
  }
  return nullptr;
}

unsigned int GetCanonicalFormat(unsigned int tag) { return GetName(tag) ? tag : 0; }

int GetCount() { return static_cast<int>(sizeof(kTypes) / sizeof(kTypes[0])); }

}  // namespace PropertiesExtensionType

CPropertiesExtension::CPropertiesExtension(unsigned int tag) : CObject(tag) {}

Result CPropertiesExtension::GetProperties(CProperties*) const { return Result(); }

CProperties* CPropertiesExtension::GetDescriptiveRepresentation() const {
  RObject<CProperties> bag(new CProperties());
  bag->SetFourProperty("type", GetTag());
  if (const char* name = PropertiesExtensionType::GetName(GetTag())) bag->SetPropertyDescription("type", name);
  GetProperties(bag.Get());
  return bag.Detach();
}

CProperties* CPropertiesExtension::ToPropertiesDescription(const CPropertiesExtension* extension) {
  return extension ? extension->GetDescriptiveRepresentation() : nullptr;
}

CDecoderBufferProperties::CDecoderBufferProperties(CByteArray* buffer)
    : CDecoderSpecificProperties(TypeCode), buffer_(buffer) {
  if (buffer_) buffer_->Acquire();
}

CDecoderBufferProperties::~CDecoderBufferProperties() {
  if (buffer_) buffer_->Release();
}

Result CDecoderBufferProperties::GetDecoderSpecificInfo(CByteArray*& bytes) const {
  bytes = GetDecoderBuffer();
  return bytes ? Result() : Result(ResultFalse());
}

CByteArray* CDecoderBufferProperties::GetDecoderBuffer() const {
  if (buffer_) buffer_->Acquire();
  return buffer_;
}

Result CDecoderBufferProperties::GetProperties(CProperties* bag) const {
  if (!bag) return ResultArgumentNull();
  return buffer_ ? bag->SetProperty("decoder_specific_info", buffer_) : Result();
}

CAudioChannelCodingProperties::CAudioChannelCodingProperties(int channels, int bitDepth)
    : CMediaPropertiesExtension(TypeCode),
      channels_(channels > 0 ? channels : 0),
      bitDepth_(bitDepth),
      extensions_(new CMediaPropertiesExtension*[static_cast<size_t>(channels_ > 0 ? channels_ : 1)]()) {}

CAudioChannelCodingProperties::~CAudioChannelCodingProperties() {
  for (int i = 0; i < channels_; ++i) {
    if (extensions_[i]) extensions_[i]->Release();
  }
  delete[] extensions_;
}

Result CAudioChannelCodingProperties::AddExtension(int channel, CMediaPropertiesExtension* extension) {
  if (channel < 0 || channel >= channels_) return ResultArgumentOutOfRange();
  if (extension) extension->Acquire();
  if (extensions_[channel]) extensions_[channel]->Release();
  extensions_[channel] = extension;
  return Result();
}

CMediaPropertiesExtension* CAudioChannelCodingProperties::GetExtension(int channel) const {
  if (channel < 0 || channel >= channels_ || !extensions_[channel]) return nullptr;
  extensions_[channel]->Acquire();
  return extensions_[channel];
}

CList<CMediaPropertiesExtension>* CAudioChannelCodingProperties::GetExtensions() const {
  auto* list = new CList<CMediaPropertiesExtension>();
  for (int i = 0; i < channels_; ++i) list->Add(extensions_[i]);
  return list;
}

Result CAudioChannelCodingProperties::GetProperties(CProperties* bag) const {
  if (!bag) return ResultArgumentNull();
  bag->SetProperty("bit_depth", bitDepth_);
  RObject<CVariantArray> channels(new CVariantArray(channels_));
  for (int i = 0; i < channels_; ++i) {
    RObject<CProperties> channel(extensions_[i] ? extensions_[i]->GetDescriptiveRepresentation() : new CProperties());
    RObject<CVariant> value(new CVariant(channel.Get()));
    channels->Set(i, value.Get());
  }
  return bag->SetProperty("channels", channels.Get());
}

CMediaAnnotationRegion::CMediaAnnotationRegion(int x_, int y_, int width_, int height_)
    : x(x_), y(y_), width(width_), height(height_) {}

CMediaAnnotationPeriod::CMediaAnnotationPeriod(long long start, long long duration, CString* name)
    : start_(start), duration_(duration), name_(name), regions_(new CList<CMediaAnnotationRegion>()) {
  if (name_) name_->Acquire();
}

CMediaAnnotationPeriod::~CMediaAnnotationPeriod() {
  if (name_) name_->Release();
  regions_->Release();
}

CString* CMediaAnnotationPeriod::GetName() const {
  if (name_) name_->Acquire();
  return name_;
}

Result CMediaAnnotationPeriod::AddRegion(CMediaAnnotationRegion* region) {
  if (!region) return ResultArgumentNull();
  return regions_->Add(region);
}

CMediaAnnotationProperties::CMediaAnnotationProperties()
    : CMediaPropertiesExtension(TypeCode), periods_(new CList<CMediaAnnotationPeriod>()) {}

CMediaAnnotationProperties::~CMediaAnnotationProperties() { periods_->Release(); }

CMediaAnnotationPeriod* CMediaAnnotationProperties::AddPeriod(long long start, long long duration, CString* name) {
  auto* period = new CMediaAnnotationPeriod(start, duration, name);
  periods_->Add(period);
  return period;
}

Result CMediaAnnotationProperties::GetProperties(CProperties* bag) const {
  if (!bag) return ResultArgumentNull();
  RObject<CVariantArray> periods(new CVariantArray(periods_->GetCount()));
  int index = 0;
  for (CMediaAnnotationPeriod* period : *periods_) {
    RObject<CProperties> entry(new CProperties());
    RObject<CString> name(period->GetName());
    entry->SetProperty("name", name.Get());
    entry->SetProperty("start", period->GetStart());
    entry->SetProperty("duration", period->GetDuration());
    entry->SetProperty("regions", period->GetRegions()->GetCount());
    RObject<CVariant> value(new CVariant(entry.Get()));
    periods->Set(index++, value.Get());
  }
  return bag->SetProperty("periods", periods.Get());
}

CThumbnailProperties::CThumbnailProperties(int width, int height, long long duration)
    : CMediaPropertiesExtension(TypeCode), width_(width), height_(height), duration_(duration) {}

Result CThumbnailProperties::GetProperties(CProperties* bag) const {
  if (!bag) return ResultArgumentNull();
  bag->SetProperty("width", width_);
  bag->SetProperty("height", height_);
  return bag->SetProperty("duration", duration_);
}

}  // namespace Corvane::Mox
