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
  // Languages are packed three-letter codes; regions too, so a two-letter
  // (ISO 3166 alpha-2) region is packed as its alpha-3 code. An unknown
  // two-letter region fails with ResultInvalidArgument.
  static unsigned short PackLanguage(char a, char b, char c);
  static void UnpackLanguage(unsigned short language, char& a, char& b, char& c);
  static Result PackRegion(char a, char b, unsigned short& region);
  // The two (upper-case) letters of a packed region; two zero bytes when it
  // has none.
  static void UnpackRegion(unsigned short region, char& a, char& b);

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

// Declares the letter forms of the language (three letters) and the region
// (two letters) over the packed Language and Region properties, per context.
#define MOX_READER_LETTER_FORMS()                                                                            \
 public:                                                                                                     \
  Result SetLanguage(char a, char b, char c) { return SetLanguage(CMediaReader::Unspecified, a, b, c); }     \
  Result SetLanguage(int context, char a, char b, char c) {                                                  \
    return SetLanguage(context, CMediaReader::PackLanguage(a, b, c));                                        \
  }                                                                                                          \
  void GetLanguage(int context, char& a, char& b, char& c) const {                                           \
    CMediaReader::UnpackLanguage(GetLanguage(context), a, b, c);                                             \
  }                                                                                                          \
  Result SetRegion(char a, char b) { return SetRegion(CMediaReader::Unspecified, a, b); }                    \
  Result SetRegion(int context, char a, char b) {                                                            \
    CMediaReader::CheckContext(context);                                                                     \
    unsigned short region = 0;                                                                               \
    Result packed = CMediaReader::PackRegion(a, b, region);                                                  \
    return packed.Failed() ? packed : SetRegion(context, region);                                            \
  }                                                                                                          \
  void GetRegion(int context, char& a, char& b) const { CMediaReader::UnpackRegion(GetRegion(context), a, b); }

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
