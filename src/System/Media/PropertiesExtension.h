#pragma once
// Description extensions: typed data that does not fit a description's fixed
// fields (decoder configuration, HDR mastering data, channel coding,
// annotations, ...), stored in the description under a four-character tag.
// PropertiesExtensionType names the tags.

#include "System/Collections/List.h"
#include "System/Media/PropertiesDescription.h"
#include "System/Object.h"

namespace Corvane::Mox {

class CByteArray;
class CProperties;
class CString;

class CPropertiesExtension : public CObject, public IPropertiesDescription {
 public:
  explicit CPropertiesExtension(unsigned int tag);

  unsigned int GetTag() const { return GetType(); }
  // Publishes the extension's content as properties of bag.
  virtual Result GetProperties(CProperties* bag) const;
  // A bag with "type" (the tag, described by its name) and the content.
  CProperties* GetDescriptiveRepresentation() const override;
  static CProperties* ToPropertiesDescription(const CPropertiesExtension* extension);
};

class CMediaPropertiesExtension : public CPropertiesExtension {
 public:
  explicit CMediaPropertiesExtension(unsigned int tag) : CPropertiesExtension(tag) {}
};

// Decoder configuration bytes.
class CDecoderSpecificProperties : public CMediaPropertiesExtension {
 public:
  explicit CDecoderSpecificProperties(unsigned int tag) : CMediaPropertiesExtension(tag) {}
  // The configuration bytes, acquired (null when there are none).
  virtual Result GetDecoderSpecificInfo(CByteArray*& bytes) const = 0;
};

// Decoder configuration bytes held in a byte array ("dspe").
class CDecoderBufferProperties : public CDecoderSpecificProperties {
 public:
  static constexpr unsigned int TypeCode = FourCC("dspe");

  // Acquires buffer (may be null).
  explicit CDecoderBufferProperties(CByteArray* buffer);
  ~CDecoderBufferProperties() override;

  Result GetDecoderSpecificInfo(CByteArray*& bytes) const override;
  // The buffer, acquired.
  CByteArray* GetDecoderBuffer() const;
  Result GetProperties(CProperties* bag) const override;

 private:
  CByteArray* buffer_;
};

// Per-channel extensions of audio whose channels carry coded data ("acc ").
class CAudioChannelCodingProperties : public CMediaPropertiesExtension {
 public:
  static constexpr unsigned int TypeCode = FourCC("acc ");

  explicit CAudioChannelCodingProperties(int channels, int bitDepth = 0);
  ~CAudioChannelCodingProperties() override;

  int GetChannels() const { return channels_; }
  int GetBitDepth() const { return bitDepth_; }
  // ResultArgumentOutOfRange for a channel outside 0..channels−1.
  Result AddExtension(int channel, CMediaPropertiesExtension* extension);
  // The channel's extension, acquired; null when none.
  CMediaPropertiesExtension* GetExtension(int channel) const;
  // The extensions by channel (null entries for channels without one), acquired.
  CList<CMediaPropertiesExtension>* GetExtensions() const;
  Result GetProperties(CProperties* bag) const override;

 private:
  int channels_;
  int bitDepth_;
  CMediaPropertiesExtension** extensions_;
};

// One region of an annotated period: a rectangle in picture coordinates.
class CMediaAnnotationRegion : public CObject {
 public:
  CMediaAnnotationRegion(int x, int y, int width, int height);
  int x, y, width, height;
};

// A named period of a stream and its regions.
class CMediaAnnotationPeriod : public CObject {
 public:
  CMediaAnnotationPeriod(long long start, long long duration, CString* name);
  ~CMediaAnnotationPeriod() override;

  long long GetStart() const { return start_; }
  long long GetDuration() const { return duration_; }
  // The name, acquired.
  CString* GetName() const;
  Result AddRegion(CMediaAnnotationRegion* region);
  // Borrowed.
  CList<CMediaAnnotationRegion>* GetRegions() const { return regions_; }

 private:
  long long start_;
  long long duration_;
  CString* name_;
  CList<CMediaAnnotationRegion>* regions_;
};

// Named periods of a stream ("anno").
class CMediaAnnotationProperties : public CMediaPropertiesExtension {
 public:
  static constexpr unsigned int TypeCode = FourCC("anno");

  CMediaAnnotationProperties();
  ~CMediaAnnotationProperties() override;

  // The new period, acquired.
  CMediaAnnotationPeriod* AddPeriod(long long start, long long duration, CString* name);
  // Borrowed.
  CList<CMediaAnnotationPeriod>* GetPeriods() const { return periods_; }
  Result GetProperties(CProperties* bag) const override;

 private:
  CList<CMediaAnnotationPeriod>* periods_;
};

// Thumbnail tiles of an image stream ("thmb").
class CThumbnailProperties : public CMediaPropertiesExtension {
 public:
  static constexpr unsigned int TypeCode = FourCC("thmb");

  CThumbnailProperties(int width, int height, long long duration);

  int GetWidth() const { return width_; }
  int GetHeight() const { return height_; }
  long long GetDuration() const { return duration_; }
  Result GetProperties(CProperties* bag) const override;

 private:
  int width_;
  int height_;
  long long duration_;
};

namespace PropertiesExtensionType {

// The name of an extension tag; null when the tag is not known.
const char* GetName(unsigned int tag);
// The tag itself for a known tag, 0 otherwise: extension tags form no families.
unsigned int GetCanonicalFormat(unsigned int tag);
int GetCount();

}  // namespace PropertiesExtensionType

}  // namespace Corvane::Mox
