#pragma once
// CSubtitleConfigurationMap ("scmp"): the conversions a filter instance works
// out at run time (a converter's output frame rates, say), as input
// configurations each with the output configurations it can become. Inputs
// keep the order in which they were first added; a pair is kept once.

#include "System/Media/Subtitle/SubtitleConfiguration.h"

namespace Corvane::Mox {

template <class T>
class CArrayList;
class CSubtitleConfigurationTable;

class CSubtitleConfigurationMap : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("scmp");

  CSubtitleConfigurationMap();
  ~CSubtitleConfigurationMap() override;

  // Adds output under input; ResultFalse when the pair is already there.
  Result Add(const SubtitleConfiguration& input, const SubtitleConfiguration& output);
  // Adds every row of a table.
  Result AddTable(const CSubtitleConfigurationTable* table);
  bool Contains(const SubtitleConfiguration& input, const SubtitleConfiguration& output) const;
  // The number of distinct inputs.
  int GetCount() const;
  // The distinct inputs in first-added order (acquired; never null).
  CArrayList<CSubtitleConfiguration>* GetInputConfigurations() const;
  // The outputs of one input (acquired; empty when the input is unknown).
  CArrayList<CSubtitleConfiguration>* GetOutputConfigurations(const SubtitleConfiguration& input) const;
  // The outputs of every input that accepts the description, without repeats.
  CArrayList<CSubtitleConfiguration>* GetOutputConfigurations(const CSubtitleProperties* input) const;
  void Clear();

 private:
  struct Entry;
  Entry* Find(const SubtitleConfiguration& input) const;

  Entry* first_;
  Entry* last_;
  int count_;
};

}  // namespace Corvane::Mox
