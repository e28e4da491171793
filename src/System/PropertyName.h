#pragma once
// PropertyName: the key type of property bags and of the generated property
// tables. It wraps a constant 8-bit name (a string literal, typically) without
// copying it; Create interns names built at run time so that they live as long
// as the process. Two names are equal when their texts are.

#include <cstring>

namespace Corvane::Mox {

class PropertyName {
 public:
  constexpr PropertyName() : name_("") {}
  // The text must outlive the name; a null text counts as empty.
  constexpr PropertyName(const char* name) : name_(name ? name : "") {}  // NOLINT: literals convert implicitly

  constexpr operator const char*() const { return name_; }  // NOLINT: names print and compare as C strings
  constexpr const char* GetName() const { return name_; }

  // A name over a process-wide copy of text (one copy per distinct text).
  static PropertyName Create(const char* text);
  // Member index of an indexed family of names ("ChannelLabel0" ..): base
  // followed by the index in decimal; the empty name outside 0..count-1.
  static PropertyName CreateIndexed(const char* base, int count, int index);

  friend bool operator==(const PropertyName& a, const PropertyName& b) { return std::strcmp(a.name_, b.name_) == 0; }
  friend bool operator==(const PropertyName& a, const char* b) { return b && std::strcmp(a.name_, b) == 0; }

 private:
  const char* name_;
};

}  // namespace Corvane::Mox
