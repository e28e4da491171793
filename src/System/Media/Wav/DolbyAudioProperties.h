#pragma once
// CDolbyAudioProperties ("dbmd"): the Dolby audio metadata chunk of a file,
// attached to the track unread so that it can travel to a writer.

#include "System/Media/PropertiesExtension.h"

namespace Corvane::Mox {

class CDolbyAudioMetadata;

class CDolbyAudioProperties : public CMediaPropertiesExtension {
 public:
  static constexpr unsigned int TypeCode = FourCC("dbmd");

  // Acquires metadata.
  explicit CDolbyAudioProperties(CDolbyAudioMetadata* metadata);
  ~CDolbyAudioProperties() override;

  // Acquired.
  CDolbyAudioMetadata* GetMetadata() const;
  // The chunk's bytes, acquired (null when none).
  CByteArray* GetBytes() const;
  // "size": the number of bytes held.
  Result GetProperties(CProperties* bag) const override;

 private:
  CDolbyAudioMetadata* metadata_;
};

}  // namespace Corvane::Mox
