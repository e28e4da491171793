#pragma once
// CSubtitleConfigurationTable ("sctb"): the constant table of conversions a
// filter class supports, as rows {input, output}. The rows live in static
// storage owned by the filter class; the table only walks them. The last row
// has an input Format of 0 and is not counted.

#include "System/Media/Subtitle/SubtitleConfiguration.h"

namespace Corvane::Mox {

template <class T>
class CArrayList;

struct SubtitleConfigurationRow {
  SubtitleConfiguration input;
  SubtitleConfiguration output;
};

class CSubtitleConfigurationTable : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("sctb");

  // rows may be null (an empty table); it must outlive the table.
  explicit CSubtitleConfigurationTable(const SubtitleConfigurationRow* rows);

  int GetCount() const { return count_; }
  // Null for an index outside 0..count-1.
  const SubtitleConfigurationRow* GetRow(int index) const;

  // The input formats of the rows whose output Format is outputFormat (of
  // every row when it is 0), in table order without repeats. Returns the
  // number found; at most capacity are stored.
  int GetInputFormats(unsigned int outputFormat, unsigned int* formats, int capacity) const;
  // The output formats of the rows whose input accepts the description.
  int GetOutputFormats(const CSubtitleProperties* input, unsigned int* formats, int capacity) const;
  // Every row's input configuration, in table order (acquired; never null).
  CArrayList<CSubtitleConfiguration>* GetInputConfigurations() const;
  // The output configurations of the rows whose input equals input.
  CArrayList<CSubtitleConfiguration>* GetOutputConfigurations(const CSubtitleConfiguration* input) const;
  // The first row whose input accepts the description and whose output
  // Format is outputFormat (any output when 0); null when none.
  const SubtitleConfigurationRow* Find(const CSubtitleProperties* input, unsigned int outputFormat) const;

 private:
  const SubtitleConfigurationRow* rows_;
  int count_;
};

}  // namespace Corvane::Mox
