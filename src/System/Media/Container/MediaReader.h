#pragma once
// CMediaReader: the places a reader can learn a track property from, and
// ReaderPropertySlots, the per-place record the reader property classes
// keep for each property.

#include "System/Result.h"

namespace Corvane::Mox {

class CMediaReader {
 public:
  enum PropertyContext : int {
    Unspecified = 0,  // "unspecified"
    Container = 1,    // "container": the file's own description of the track
    Essence = 2,      // "essence": what the coded media says
  };
  static constexpr int ContextCount = 3;
  // The context's text, or null for other values.
  static const char* GetPropertyContextName(int context);
  // Throws ResultArgumentOutOfRange for a context of 3 or more (or below 0).
  static void CheckContext(int context) {
    if (context < 0 || context >= ContextCount) ThrowBadContext(context);
  }
  // Throws ResultArgumentOutOfRange for a time scale outside 1..2,000,000,000.
  static void CheckTimeScale(long long timeScale);

 private:
  [[noreturn]] static void ThrowBadContext(int context);
};

// One property's value per context and the context whose value is in force:
// a value from a later context (essence) outranks an earlier one (container,
// unspecified), so a file's claim never hides what its media says.
template <class T>
struct ReaderPropertySlots {
  T values[CMediaReader::ContextCount]{};
  bool set[CMediaReader::ContextCount]{};
  int inForce = -1;

  // Records the value; `apply` gives it to the description when it is in
  // force. Returns what apply returned, or success when outranked.
  template <class Apply>
  Result Assign(int context, T value, Apply apply) {
    CMediaReader::CheckContext(context);
    values[context] = value;
    set[context] = true;
    if (context < inForce) return Result();
    inForce = context;
    return apply(value);
  }
  T Get(int context) const {
    CMediaReader::CheckContext(context);
    return values[context];
  }
  bool IsSet(int context) const {
    CMediaReader::CheckContext(context);
    return set[context];
  }
};

}  // namespace Corvane::Mox

// Declares Set<Name>(value), Set<Name>(context, value), Get<Name>(context) and
// Is<Name>Set(context) over Base's own Set<Name>, inside a reader property class.
// The time scale, range-checked, over Base::SetTimeScale.
#define MOX_READER_TIME_SCALE(Base)                                                                          \
 public:                                                                                                     \
  Result SetTimeScale(long long value) { return SetTimeScale(CMediaReader::Unspecified, value); }           \
  Result SetTimeScale(int context, long long value) {                                                        \
    CMediaReader::CheckTimeScale(value);                                                                     \
    return TimeScaleSlots_.Assign(context, value, [this](long long v) { return Base::SetTimeScale(v); });    \
  }                                                                                                          \
  long long GetTimeScale(int context) const { return TimeScaleSlots_.Get(context); }                         \
  using Base::GetTimeScale;                                                                                  \
                                                                                                             \
 private:                                                                                                    \
  ReaderPropertySlots<long long> TimeScaleSlots_;

// Copies one property's record (for the copy constructors).
#define MOX_READER_PROPERTY_COPY(Name, Type) Name##Slots_ = source->Name##Slots_;

#define MOX_READER_PROPERTY(Base, Name, Type)                                                                \
 public:                                                                                                     \
  Result Set##Name(Type value) { return Set##Name(CMediaReader::Unspecified, value); }                       \
  Result Set##Name(int context, Type value) {                                                                \
    return Name##Slots_.Assign(context, value, [this](Type v) { return Base::Set##Name(v); });               \
  }                                                                                                          \
  Type Get##Name(int context) const { return Name##Slots_.Get(context); }                                    \
  using Base::Get##Name;                                                                                     \
  bool Is##Name##Set(int context) const { return Name##Slots_.IsSet(context); }                              \
                                                                                                             \
 private:                                                                                                    \
  ReaderPropertySlots<Type> Name##Slots_;
