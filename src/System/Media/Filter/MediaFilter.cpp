#include "System/Media/Filter/MediaFilter.h"

#include <mutex>
#include <thread>
#include <unordered_map>

#include "System/ByteArray.h"
#include "System/ByteArrayPool.h"
#include "System/Collections/Value.h"
#include "System/Media/Filter/MediaFilterTrack.h"
#include "System/Media/GraphicsContextProperties.h"
#include "System/Media/MediaProperties.h"
#include "System/Media/MediaSample.h"
#include "System/Media/MemoryContext.h"
#include "System/Threading/Monitor.h"
#include "gen/CodeBookProperty.h"

namespace Corvane::Mox {

namespace {

constexpr const char* kNotReady = "the filter is not ready. Begin has not been called";
constexpr int MaximumIdleIntermediateBuffers = 128;  // free scratch buffers a pool keeps per capacity

// How often a waiter looks at the queues, yielding in between, before it sleeps.
constexpr int SpinLooks = 64;

// Holds the Monitor for a scope; a failure to enter is thrown.
class MonitorScope {
 public:
  explicit MonitorScope(const CMonitor* monitor) : monitor_(monitor) { monitor_->Enter().ThrowIfFailed(); }
  ~MonitorScope() { monitor_->Exit(); }
  MonitorScope(const MonitorScope&) = delete;
  MonitorScope& operator=(const MonitorScope&) = delete;

 private:
  const CMonitor* monitor_;
};

}  // namespace

// Scratch pools by buffer capacity, created on first use.
struct CMediaFilter::Pools {
  std::mutex lock;
  std::unordered_map<int, RObject<CByteArrayPool>> byCapacity{7};
};

CMediaFilter::CMediaFilter(unsigned int componentCode)
    : CProperties(componentCode, nullptr),
      ready_(false),
      memoryContext_(nullptr),
      intermediateBuffers_(new Pools()),
      monitor_(new CMonitor()) {
  inputTracks_.reserve(8);
  outputTracks_.reserve(8);
}

CMediaFilter::~CMediaFilter() {
  ClearTracks(inputTracks_);
  ClearTracks(outputTracks_);
  if (memoryContext_) memoryContext_->Release();
  monitor_->Release();
}

void CMediaFilter::ClearTracks(Tracks& tracks) {
  for (CMediaFilterTrack* track : tracks) track->Release();
  tracks.clear();
}

// ---- negotiation ----

int CMediaFilter::Evaluate(const CMediaProperties* properties) const {
  if (!properties) return 0;
  RObject<CFormatList> formats(GetInputFormats());
  return formats && formats->ContainsValue(properties->GetFormat()) ? Acceptable : 0;
}

Result CMediaFilter::AddInputMedia(const CMediaProperties* properties) {
  if (!properties) return ResultArgumentNull();
  AddInputTrack(properties);
  return Result();
}

void CMediaFilter::AddInputTrack(const CMediaProperties* properties) {
  MonitorScope scope(monitor_);
  inputTracks_.push_back(new CMediaFilterTrack(properties));
}

void CMediaFilter::AddOutputTrack(const CMediaProperties* properties) {
  MonitorScope scope(monitor_);
  outputTracks_.push_back(new CMediaFilterTrack(properties));
}

void CMediaFilter::RemoveInputTracks() {
  MonitorScope scope(monitor_);
  ClearTracks(inputTracks_);
}

void CMediaFilter::RemoveOutputTracks() {
  MonitorScope scope(monitor_);
  ClearTracks(outputTracks_);
}

int CMediaFilter::GetInputMediaCount() const { return static_cast<int>(inputTracks_.size()); }
int CMediaFilter::GetOutputMediaCount() const { return static_cast<int>(outputTracks_.size()); }

CMediaFilterTrack* CMediaFilter::At(const Tracks& tracks, int index) {
  return index >= 0 && index < static_cast<int>(tracks.size()) ? tracks[index] : nullptr;
}

CMediaFilterTrack* CMediaFilter::GetInputTrack(int index) const { return At(inputTracks_, index); }
CMediaFilterTrack* CMediaFilter::GetOutputTrack(int index) const { return At(outputTracks_, index); }

CMediaProperties* CMediaFilter::GetInputMedia(int index) const {
  CMediaFilterTrack* track = GetInputTrack(index);
  CMediaProperties* properties = track ? track->GetProperties() : nullptr;
  if (properties) properties->Acquire();
  return properties;
}

CMediaProperties* CMediaFilter::GetOutputMedia(int index) const {
  CMediaFilterTrack* track = GetOutputTrack(index);
  CMediaProperties* properties = track ? track->GetProperties() : nullptr;
  if (properties) properties->Acquire();
  return properties;
}

unsigned int CMediaFilter::GetInputFormat(int index) const {
  CMediaFilterTrack* track = GetInputTrack(index);
  return track && track->GetProperties() ? track->GetProperties()->GetFormat() : 0;
}

unsigned int CMediaFilter::GetOutputFormat(int index) const {
  CMediaFilterTrack* track = GetOutputTrack(index);
  return track && track->GetProperties() ? track->GetProperties()->GetFormat() : 0;
}

CFormatList* CMediaFilter::GetInputFormats() const { return new CFormatList(); }
CFormatList* CMediaFilter::GetOutputFormats() const { return new CFormatList(); }

// ---- running ----

Result CMediaFilter::Begin() {
  if (ready_) return ResultFalse();
  Result initialized = Initialize();
  if (initialized.Failed()) return initialized;
  if (!memoryContext_) memoryContext_ = new CHostMemoryContext();
  ready_ = true;
  return Result();
}

Result CMediaFilter::BeginWithOutput(CMediaProperties* output) {
  Result begun = CMediaFilter::Begin();
  if (begun.Failed()) return begun;
  // Pictures made in a graphics context say so, so that the next filter on
  // the same device can use them in place.
  CMemoryContext* context = GetMemoryContext();
  if (output && context && context->IsType(FourCC("gctx")) &&
      !output->ContainsExtension(CGraphicsContextProperties::TypeCode)) {
    RObject<CGraphicsContextProperties> extension(new CGraphicsContextProperties(context));
    output->AddExtension(extension);
  }
  RemoveOutputTracks();
  if (output) AddOutputTrack(output);
  return Result();
}

Result CMediaFilter::End() {
  if (!ready_) return ResultFalse();
  Result finalized = Finalize();
  ready_ = false;
  {
    std::lock_guard<std::mutex> guard(intermediateBuffers_->lock);
    intermediateBuffers_->byCapacity.clear();
  }
  RemoveOutputTracks();
  MonitorScope scope(monitor_);
  for (CMediaFilterTrack* track : inputTracks_) track->Flush();
  return finalized.Failed() ? finalized : Result();
}

Result CMediaFilter::WriteSample(int track, CMediaSample* sample) {
  if (!ready_) throw ResultNotAccepting(kNotReady);
  CAutoLock lock(this);
  CMediaFilterTrack* input = At(inputTracks_, track);
  if (!input) throw ResultArgumentOutOfRange("track index %d out of range", track);
  if (!sample) {
    if (input->IsDraining()) return Result();
    input->SetDraining();
    Drain(track).ThrowIfFailed();
    if (IsDraining()) {
      Drain(true).ThrowIfFailed();
      EndOutputs();
    }
    return Result();
  }
  if (input->IsDraining()) throw ResultNotAccepting("track %d not accepting, currently draining", track);
  ProcessSample(track, sample).ThrowIfFailed();
  return Result();
}

// Every output gets its end marker, then the waiters are told.
void CMediaFilter::EndOutputs() {
  MonitorScope scope(monitor_);
  for (CMediaFilterTrack* output : outputTracks_) output->Enqueue(nullptr);
  monitor_->NotifyAll().ThrowIfFailed();
}

Result CMediaFilter::ReadSample(int track, CMediaSample*& sample) {
  if (!ready_) throw ResultNotAccepting(kNotReady);
  sample = DequeueOuputSample(track);
  return Result();
}

bool CMediaFilter::IsInputMediaReady(int index) const {
  CMediaFilterTrack* input = At(inputTracks_, index);
  if (!input) return false;
  for (CMediaFilterTrack* output : outputTracks_)
    if (output->IsMediaFull()) return false;
  return !input->IsMediaFull();
}

bool CMediaFilter::IsOutputMediaReady(int index) const {
  CMediaFilterTrack* output = At(outputTracks_, index);
  return output && !output->IsMediaEmpty();
}

bool CMediaFilter::WaitFor(bool input, int timeout) {
  auto anyReady = [&] {
    const int count = input ? GetInputMediaCount() : GetOutputMediaCount();
    for (int i = 0; i < count; ++i)
      if (input ? IsInputMediaReady(i) : IsOutputMediaReady(i)) return true;
    return false;
  };
  // The next hand-over is usually microseconds away. Looking a few times
  // while yielding keeps the thread (and, in a virtual machine, its
  // processor) awake instead of paying a sleep and a wake-up per sample.
  // The queues guard themselves, so looking needs no monitor.
  for (int look = 0; timeout != 0 && look < SpinLooks; ++look) {
    if (anyReady()) return true;
    std::this_thread::yield();
  }
  MonitorScope scope(monitor_);
  if (anyReady()) return true;
  if (timeout < 0) {
    monitor_->Wait();
  } else {
    monitor_->Wait(timeout);
  }
  return anyReady();
}

bool CMediaFilter::WaitForInputMedia() { return WaitFor(true, -1); }
bool CMediaFilter::WaitForInputMedia(int timeout) { return WaitFor(true, timeout); }
bool CMediaFilter::WaitForOutputMedia() { return WaitFor(false, -1); }
bool CMediaFilter::WaitForOutputMedia(int timeout) { return WaitFor(false, timeout); }

void CMediaFilter::Flush() {
  MonitorScope scope(monitor_);
  for (CMediaFilterTrack* track : inputTracks_) track->Flush();
  for (CMediaFilterTrack* track : outputTracks_) track->Flush();
}

Result CMediaFilter::Drain() {
  Drain(false);
  return Result();
}

bool CMediaFilter::IsEndOfStream() const {
  for (CMediaFilterTrack* output : outputTracks_)
    if (!output->IsEndOfStream()) return false;
  return true;
}

bool CMediaFilter::IsDraining() const {
  for (CMediaFilterTrack* input : inputTracks_)
    if (!input->IsDraining()) return false;
  return true;
}

int CMediaFilter::GetPendingInputSampleCount(int index) const {
  CMediaFilterTrack* track = At(inputTracks_, index);
  return track ? track->GetPendingSampleCount() : 0;
}

int CMediaFilter::GetPendingOutputSampleCount(int index) const {
  CMediaFilterTrack* track = At(outputTracks_, index);
  return track ? track->GetPendingSampleCount() : 0;
}

void CMediaFilter::SetMemoryContext(CMemoryContext* context) {
  if (context) context->Acquire();
  if (memoryContext_) memoryContext_->Release();
  memoryContext_ = context;
}

// ---- scratch buffers ----

int CMediaFilter::GetIntermediateCapacity(int n) {
  int capacity = 256;
  while (capacity <= n) capacity <<= 1;
  return capacity;
}

CByteArray* CMediaFilter::CreateIntermediateBuffer(int n) {
  if (n < 1) throw ResultInvalidArgument("intermediate buffer of %d bytes", n);
  const int capacity = GetIntermediateCapacity(n);
  std::lock_guard<std::mutex> guard(intermediateBuffers_->lock);
  RObject<CByteArrayPool>& pool = intermediateBuffers_->byCapacity[capacity];
  if (!pool) {
    pool = new CByteArrayPool(capacity, 64);
    pool->SetMaximumIdleCount(MaximumIdleIntermediateBuffers);
  }
  return pool->Get();
}

Result CMediaFilter::CreateIntermediateBuffer(int n, CByteArray*& buffer) {
  buffer = nullptr;
  try {
    buffer = CreateIntermediateBuffer(n);
  } catch (const Result& failure) {
    return failure;
  }
  return Result();
}

CProperties* CMediaFilter::GetDocumentation() const {
  return IPropertiesDocumentation::GetDocumentationT<CodeBookProperty::MediaFilter>();
}

// ---- hooks ----

Result CMediaFilter::Drain(int) { return Result(); }
Result CMediaFilter::Drain(bool) { return Result(); }
Result CMediaFilter::Initialize() { return Result(); }
Result CMediaFilter::Finalize() { return Result(); }
Result CMediaFilter::ProcessSample(int, CMediaSample*) { return Result(); }

// ---- queues ----

CMediaFilterTrack* CMediaFilter::Checked(const Tracks& tracks, int index, const char* message) {
  CMediaFilterTrack* track = At(tracks, index);
  if (!track) throw ResultArgumentOutOfRange(message, index);
  return track;
}

// Producers wait for room (no full queue) and consumers for samples (a
// non-empty queue) on the one monitor, so only the changes that can end such
// a wait notify: a queue that was empty gains a sample, a queue that was full
// has drained (see CMediaFilterTrack::Dequeue). Waking both sides on every
// sample made each hand-over cost several futile wake-ups; producers still
// poll, so a missed announcement costs time, never progress.
void CMediaFilter::Enqueue(Tracks& tracks, int index, CMediaSample* sample) {
  MonitorScope scope(monitor_);
  CMediaFilterTrack* track = Checked(tracks, index, "track index %d out of range");
  const bool wasEmpty = track->IsMediaEmpty();
  track->Enqueue(sample);
  if (wasEmpty) monitor_->NotifyAll().ThrowIfFailed();
}

CMediaSample* CMediaFilter::Dequeue(Tracks& tracks, int index) {
  MonitorScope scope(monitor_);
  CMediaFilterTrack* track = Checked(tracks, index, "Track index %d out of range.");
  bool roomMade = false;
  CMediaSample* sample = track->Dequeue(&roomMade);
  if (roomMade) monitor_->NotifyAll().ThrowIfFailed();
  return sample;
}

void CMediaFilter::EnqueueInputSample(int index, CMediaSample* sample) { Enqueue(inputTracks_, index, sample); }
CMediaSample* CMediaFilter::DequeueInputSample(int index) { return Dequeue(inputTracks_, index); }
void CMediaFilter::EnqueueOutputSample(int index, CMediaSample* sample) { Enqueue(outputTracks_, index, sample); }
CMediaSample* CMediaFilter::DequeueOuputSample(int index) { return Dequeue(outputTracks_, index); }

}  // namespace Corvane::Mox
