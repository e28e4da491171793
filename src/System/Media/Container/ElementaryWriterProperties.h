#pragma once
// CElementaryWriterProperties: a media-properties extension that lets an
// encoder write its output as an elementary stream beside its samples. Begin
// chooses a writer for the track (the ContainerWriter::ContainerFormat
// property of the description, or one by media kind and format); Resolve
// writes a sample and returns where its bytes now are.

#include "System/Media/PropertiesExtension.h"

namespace Corvane::Mox {

class CContainerWriter;
class CMediaProperties;
class CMediaSample;
class CStream;
class CStreamDataReference;

class CElementaryWriterProperties : public CMediaPropertiesExtension {
 public:
  explicit CElementaryWriterProperties(unsigned int tag);
  ~CElementaryWriterProperties() override;

  // The writer type for a description: its ContainerFormat property when
  // set; otherwise "h264" for AVC, "hevc" for HEVC, "vide" for other video,
  // "ac3 " for (E-)AC-3, "wav " for "dlbe"/"lpcm", "audi" for other audio.
  static unsigned int ChooseWriterType(const CMediaProperties* properties);
  // Ends any earlier writer, then writes into `stream` through the chosen
  // writer; no such writer is ResultInvalidArgument.
  Result Begin(CStream* stream, CMediaProperties* properties);
  // Writes the sample as track 0 and returns a reference to its bytes.
  Result Resolve(CMediaSample* sample, CStreamDataReference*& data);
  Result End();

 private:
  CStream* stream_;
  CContainerWriter* writer_;
};

// CEncoderSettingsProperties: an encoder's settings carried with the
// description it produced; reported under the key "settings".
class CEncoderSettingsProperties : public CMediaPropertiesExtension {
 public:
  CEncoderSettingsProperties(unsigned int tag, CProperties* settings);
  ~CEncoderSettingsProperties() override;
  CProperties* GetSettings() const { return settings_; }  // not acquired
  Result GetProperties(CProperties* bag) const override;

 private:
  CProperties* settings_;
};

}  // namespace Corvane::Mox
