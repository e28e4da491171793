#pragma once
// CMediaFilter: the base of every processing component (converters,
// decompressors, compressors, analyzers, metadata stages). It owns one queue
// per input and per output and drives the sample protocol:
//   negotiate  Evaluate, AddInputMedia, GetOutputMedia
//   run        Begin, WriteSample / ReadSample, WriteSample(track, null) per input, End
// Subclasses do the work in ProcessSample and the Drain hooks. A filter is a
// property bag whose type code is its four-character component code.
//
// Locking: queue operations take the filter's Monitor, then the track's own
// queue lock, in that order, and notify the Monitor after any change;
// WriteSample also holds the filter's object lock so that two samples are
// never processed at once.

#include <memory>
#include <vector>

#include "System/Properties.h"
#include "System/PropertiesDocumentation.h"

namespace Corvane::Mox {

class CByteArray;
class CMediaProperties;
class CMediaSample;
class CMediaFilterTrack;
class CMemoryContext;
class CMonitor;
template <class T>
class CValueList;

using CFormatList = CValueList<unsigned int>;

class CMediaFilter : public CProperties, public IPropertiesDocumentation {
 public:
  // Evaluate's score for acceptable input.
  static constexpr int Acceptable = 128;

  explicit CMediaFilter(unsigned int componentCode);
  ~CMediaFilter() override;

  unsigned int GetComponentCode() const { return GetType(); }

  // Negotiation.
  virtual int Evaluate(const CMediaProperties* properties) const;
  virtual Result AddInputMedia(const CMediaProperties* properties);
  virtual int GetInputMediaCount() const;
  virtual CMediaProperties* GetInputMedia(int index) const;   // acquired, or null
  virtual int GetOutputMediaCount() const;
  virtual CMediaProperties* GetOutputMedia(int index) const;  // acquired, or null
  unsigned int GetInputFormat(int index) const;
  unsigned int GetOutputFormat(int index) const;
  CMediaFilterTrack* GetInputTrack(int index) const;   // borrowed, or null
  CMediaFilterTrack* GetOutputTrack(int index) const;  // borrowed, or null

  // Running.
  virtual Result Begin();
  virtual Result End();
  // New lists of format codes (the caller owns them).
  virtual CFormatList* GetInputFormats() const;
  virtual CFormatList* GetOutputFormats() const;
  virtual Result WriteSample(int track, CMediaSample* sample);
  virtual Result ReadSample(int track, CMediaSample*& sample);
  virtual bool IsInputMediaReady(int index) const;
  virtual bool IsOutputMediaReady(int index) const;
  virtual void Flush();
  virtual Result Drain();

  bool WaitForInputMedia();
  bool WaitForInputMedia(int timeout);
  bool WaitForOutputMedia();
  bool WaitForOutputMedia(int timeout);
  bool IsEndOfStream() const;
  bool IsDraining() const;
  bool IsReady() const { return ready_; }
  int GetPendingInputSampleCount(int index) const;
  int GetPendingOutputSampleCount(int index) const;
  void SetMemoryContext(CMemoryContext* context);
  CMemoryContext* GetMemoryContext() const { return memoryContext_; }  // borrowed

  // A scratch buffer of at least n bytes from a per-capacity pool (acquired).
  CByteArray* CreateIntermediateBuffer(int n);
  Result CreateIntermediateBuffer(int n, CByteArray*& buffer);
  // The pool capacity serving a request of n bytes: the smallest power of
  // two above n, at least 256.
  static int GetIntermediateCapacity(int n);

  // The documentation of the filter's properties (acquired).
  CProperties* GetDocumentation() const override;

 protected:
  // Hooks; all do nothing here.
  virtual Result Drain(int track);
  virtual Result Drain(bool all);
  virtual Result Initialize();
  virtual Result Finalize();
  virtual Result ProcessSample(int track, CMediaSample* sample);

  // Queue primitives for subclasses.
  virtual void EnqueueInputSample(int index, CMediaSample* sample);
  virtual CMediaSample* DequeueInputSample(int index);   // acquired, or null
  virtual void EnqueueOutputSample(int index, CMediaSample* sample);
  virtual CMediaSample* DequeueOuputSample(int index);   // acquired, or null

  // Track list edits for the shapes that fix their tracks at Begin.
  void RemoveInputTracks();
  void RemoveOutputTracks();
  void AddInputTrack(const CMediaProperties* properties);
  void AddOutputTrack(const CMediaProperties* properties);
  void SetReady(bool ready) { ready_ = ready; }
  // The tail of the shapes' Begin: the base Begin (initialisation, memory
  // context), then the outputs replaced by one track for output.
  Result BeginWithOutput(CMediaProperties* output);

 private:
  struct Pools;
  using Tracks = std::vector<CMediaFilterTrack*>;

  static CMediaFilterTrack* At(const Tracks& tracks, int index);
  static CMediaFilterTrack* Checked(const Tracks& tracks, int index, const char* message);
  void Enqueue(Tracks& tracks, int index, CMediaSample* sample);
  CMediaSample* Dequeue(Tracks& tracks, int index);
  void EndOutputs();
  static void ClearTracks(Tracks& tracks);
  bool WaitFor(bool input, int timeout);

  bool ready_;
  CMemoryContext* memoryContext_;
  Tracks inputTracks_;
  Tracks outputTracks_;
  std::unique_ptr<Pools> intermediateBuffers_;
  CMonitor* monitor_;
};

}  // namespace Corvane::Mox
