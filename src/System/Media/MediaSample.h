#pragma once
// CMediaSample: one unit of media on its way through a graph (a video frame
// or field, a run of audio frames, a subtitle event): its timing in the
// stream's time scale, hint flags, a trim, a property bag of its own, and
// references to its payload, metadata, analysis and producer data. Samples
// are pool objects; ReclaimCleanUp readies one for reuse.

#include "System/Media/MediaTypes.h"
#include "System/Media/PropertiesDescription.h"
#include "System/PoolObject.h"
#include "System/Properties.h"

namespace Corvane::Mox {

class CAnalysis;
class CBinaryReader;
class CBinaryWriter;
class CByteArray;
class CDataReference;
class CLockedDataReference;
class CMetadata;
class CStream;

class CMediaSample : public CPoolObject, public IProperties, public IPropertiesDescription {
 public:
  CMediaSample(unsigned int tag, long long duration);
  ~CMediaSample() override;

  bool IsType(unsigned int type) const override;

  // A new empty sample of the class a tag names ("vid#", "aud#", "sub#"); null otherwise.
  static CMediaSample* New(unsigned int tag);
  // A copy of the same class (see the copy constructors); null in, null out.
  static CMediaSample* Clone(const CMediaSample* sample);

  void ReclaimCleanUp() override;
  virtual long long GetCompositionTime() const;
  // Bytes of the binary form that follow its size field.
  virtual int GetSize() const;
  virtual Result Read(CBinaryReader* reader, int& version);
  virtual Result Write(CBinaryWriter* writer, int version) const;
  CProperties* GetDescriptiveRepresentation() const override;

  // The binary form read from or written to a stream (little-endian) or a byte array.
  Result Read(CStream* stream, int& version);
  Result Write(CStream* stream, int version) const;
  Result Read(CByteArray* bytes, int& version);
  // A new byte array holding the binary form.
  Result Write(int version, CByteArray*& bytes) const;
  // Reads a whole sample of whatever class its tag names.
  static Result ReadSample(CBinaryReader* reader, CMediaSample*& sample, int& version);

  long long GetDuration() const { return duration_; }
  Result SetDuration(long long duration);
  int GetHint() const { return hint_; }
  Result SetHint(int hint);
  // The sign bit of the hint.
  bool IsExcluded() const { return hint_ < 0; }
  long long GetTime() const { return time_; }
  Result SetTime(long long time);
  Range<int> GetTrim() const { return trim_; }
  void GetTrim(int& head, int& tail) const;
  Result SetTrim(Range<int> trim);
  Result SetTrim(int head, int tail);

  // 0 for an excluded sample, else Duration − (head + tail).
  long long GetCompositionDuration() const;
  bool ContainsCompositionTime(long long time) const;

  bool HasDataReference() const { return dataReference_ != nullptr; }
  // The reference, acquired.
  CDataReference* GetDataReference() const;
  // The reference itself when it answers tag, else the member of that tag of a
  // "many" reference, else null; acquired.
  CDataReference* GetDataReference(unsigned int tag) const;
  Result SetDataReference(CDataReference* reference);
  // Adds to the sample's multiple reference (made on demand); ResultArrayFull
  // when the sample already holds a single, non-multiple reference.
  Result AddDataReference(CDataReference* reference);
  // The memory reference (the reference itself when "dram", else the "dram"
  // member of a "many" reference) held locked in mode by a new locked
  // reference; null when there is none.
  CLockedDataReference* GetLockedDataReference(int mode) const;

  bool HasMetadata() const { return metadata_ != nullptr; }
  CMetadata* GetMetadata() const;
  Result SetMetadata(CMetadata* metadata);
  // The metadata, made empty on demand; acquired.
  CMetadata* AddMetadata();
  CAnalysis* GetAnalysis() const;
  Result SetAnalysis(CAnalysis* analysis);
  CAnalysis* AddAnalysis();
  CObject* GetUserData() const;
  Result SetUserData(CObject* userData);

 protected:
  // The copy constructor's work: the bag, timing and trim are copied; the
  // payload, analysis and user data are shared; the metadata is deep-copied.
  CMediaSample(unsigned int tag, const CMediaSample* source);
  // The class's own fields after the common ones.
  virtual int GetExtraSize() const { return 0; }
  virtual Result WriteExtra(CBinaryWriter*) const { return Result(); }
  virtual Result ReadExtra(CBinaryReader*) { return Result(); }
  virtual void DescribeExtra(CProperties*) const {}

 private:
  long long duration_;
  int hint_;
  long long time_;
  Range<int> trim_;
  CDataReference* dataReference_;
  CMetadata* metadata_;
  CAnalysis* analysis_;
  CObject* userData_;
};

}  // namespace Corvane::Mox
