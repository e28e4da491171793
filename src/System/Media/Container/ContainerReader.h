#pragma once
// CContainerReader: the base of the readers that open a media file (or
// stream) and deliver its tracks. A reader is a property bag; its type code
// is its four-character component code.
//
// Calling order: create (by probing or by type), set properties, BeginIndex
// (tracks are known when it returns), query the tracks, Read...Sample until a
// null sample, EndIndex. Samples carry a "read" data reference (position and
// length in the file) instead of bytes; ReadVideoData and its kin fetch the
// bytes when a consumer asks.

#include "System/Media/Container/Container.h"

namespace Corvane::Mox {

class CAudioSample;
class CByteArray;
class CContainerDataReference;
class CDataReference;
class CMediaSample;
class CMemoryDataReference;
class CStorageDataReference;
class CStream;
class CStreamDataReference;
class CString;
class CSubtitleSample;
class CVideoSample;

class CContainerReader : public CContainer {
 public:
  using OpenStreamCallback = Result (*)(void* user, CString* path);

  explicit CContainerReader(unsigned int componentCode);
  ~CContainerReader() override;

  Result BeginIndex() override { return Result(); }
  Result EndIndex() override { return Result(); }

  // ReadTimeout and ReadMargin live in fields and reach every stream opened
  // so far (and later ones); IsIndexAtEnd reaches the open streams too.
  using IProperties::GetProperty;
  using IProperties::SetProperty;
  Result GetProperty(CString* name, CVariant*& value) const override;
  Result SetProperty(CString* name, CVariant* value) override;
  int GetReadTimeout() const;
  int GetReadMargin() const;

  // How sure the reader is that the stream is its format: 128 a positive
  // identification, 256 or more settles probing at once, 0 or less never wins.
  virtual int Validate(CStream* stream);
  virtual Result AdvanceIndex(double) { return Result(); }

  // The next sample of a track (acquired), or null at the track's end.
  virtual Result ReadVideoSample(int track, CVideoSample*& sample);
  virtual Result ReadAudioSample(int track, CAudioSample*& sample);
  virtual Result ReadSubtitleSample(int track, CSubtitleSample*& sample);
  // The bytes behind a "read" reference: in memory (Read...Data) or as a
  // reference to a stream range without reading (Resolve...Data).
  virtual Result ReadVideoData(int track, CContainerDataReference* reference, CDataReference*& data);
  virtual Result ResolveVideoData(int track, CContainerDataReference* reference, CStreamDataReference*& data);
  virtual Result ReadVideoMetadata(int track, unsigned int type, CContainerDataReference* reference,
                                   CMemoryDataReference*& data);
  virtual Result ReadAudioData(int track, CContainerDataReference* reference, CDataReference*& data);
  virtual Result ResolveAudioData(int track, CContainerDataReference* reference, CStreamDataReference*& data);
  virtual Result ReadAudioMetadata(int track, unsigned int type, CContainerDataReference* reference,
                                   CMemoryDataReference*& data);
  virtual Result ReadSubtitleData(int track, CContainerDataReference* reference, CDataReference*& data);
  virtual Result ResolveSubtitleData(int track, CContainerDataReference* reference, CStreamDataReference*& data);
  virtual Result ReadSubtitleMetadata(int track, unsigned int type, CContainerDataReference* reference,
                                      CMemoryDataReference*& data);

  // Replaces a sample's "read" reference with its bytes; a sample without one
  // is left alone.
  Result ReadVideoData(int track, CVideoSample* sample);
  Result ReadAudioData(int track, CAudioSample* sample);
  Result ReadSubtitleData(int track, CSubtitleSample* sample);
  // Gives the sample its metadata (empty when it has none) and reads every
  // element whose payload is still a "read" reference, decoding it from the
  // bytes. A sample whose essence has not been read is logged ("sample
  // missing data reference"), but its elements are still read.
  Result ReadVideoMetadata(int track, CVideoSample* sample);
  Result ReadAudioMetadata(int track, CAudioSample* sample);
  Result ReadSubtitleMetadata(int track, CSubtitleSample* sample);

  // Opens the context's default stream, or a named side file.
  virtual Result OpenStream(CStream*& stream);
  virtual Result OpenStream(CString* name, CStream*& stream, bool buffered);
  // "type", "size", "duration", "manifest", "properties" and "extension".
  virtual CProperties* GetDescriptiveRepresentation() const;
  // The property documentation of the reader's namespace, or null.
  virtual CProperties* GetDocumentation() const { return nullptr; }

  // The longest track, in milliseconds; tracks with time scale 0 are skipped.
  long long GetDurationInMilliseconds() const;

  // Moves the calling thread's variances into the "vrcp" extension.
  void SynchronizeVariances();
  void ClearVariances();

  // Shared byte reading for the formats. ReadData throws ResultNullPointer
  // "null stream parameter" for a null stream.
  static Result ReadData(CStream* stream, long long position, CByteArray* bytes);
  static Result ReadData(CStream* stream, CStorageDataReference* reference, CByteArray*& bytes);
  static Result ReadData(CStream* stream, CStorageDataReference* reference, CMemoryDataReference*& data);
  static Result ReadData(CStream* stream, CStorageDataReference* reference, CDataReference*& data);
  static Result ReadVideoData(CStream* stream, CVideoProperties* properties, CStorageDataReference* reference,
                              CDataReference*& data);
  static Result ResolveData(CStream* stream, CStorageDataReference* reference, CStreamDataReference*& data);
  // Up to `count` bytes at `position` from the stream under any read cache,
  // leaving the cache alone (for short structural reads of a large file);
  // fewer only at the end of the stream.
  static Result ReadUncached(CStream* stream, long long position, unsigned char* bytes, int count, int& read);

  // Creation. All return a new reader or null.
  static CContainerContext* CreateContext(CString* path);
  static CContainerReader* Create(CContainerContext* context);
  static CContainerReader* Create(CString* path);
  static CContainerReader* Create(const char* path);
  static CContainerReader* Create(CString* directory, CString* fileName);
  static CContainerReader* Create(CString* path, OpenStreamCallback callback, void* user);
  static CContainerReader* Create(CString* path, unsigned int type);
  static CContainerReader* Create(CContainerContext* context, unsigned int type);

 private:
  // Forwards a stream option to every stream the context has opened.
  void ForwardToStreams(unsigned int code, int length, unsigned char* data) const;

  int readTimeout_;
  int readMargin_;
};

// Creation of readers through their registry.
class CContainerReaderInventory {
 public:
  // A bare reader of the type (the caller owns it), or null.
  static CContainerReader* Create(unsigned int type);
  // Probing: every registered reader judges the stream in registration
  // order; the strictly greatest score wins, 256 or more ends the search.
  // The winner has no context yet; null when nothing scored above 0.
  static CContainerReader* Create(CStream* stream);
};

}  // namespace Corvane::Mox
