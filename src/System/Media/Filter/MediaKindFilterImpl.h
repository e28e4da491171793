#pragma once
// The members of CMediaKindFilterT; included only where a kind instantiates it.

#include "System/Collections/ArrayList.h"
#include "System/Collections/Value.h"
#include "System/Media/Filter/MediaFilterTrack.h"
#include "System/Media/Filter/MediaKindFilterT.h"
#include "System/Media/Video/VideoConfiguration.h"
#include "gen/CodeBookProperty.h"

namespace Corvane::Mox {

namespace KindFilterDetail {
inline unsigned int FormatOf(const VideoConfiguration& c) { return static_cast<unsigned int>(c.GetFormat()); }
template <class C>
unsigned int FormatOf(const C& c) {
  return static_cast<unsigned int>(c.format);
}
}  // namespace KindFilterDetail

template <class S, class P, class C, class CO>
unsigned int CMediaKindFilterT<S, P, C, CO>::GetRequestedOutputFormat() const {
  unsigned int format = 0;
  if (this->GetFourProperty(CodeBookProperty::MediaFilter::OutputFormat, format).Failed()) return 0;
  return format;
}

template <class S, class P, class C, class CO>
bool CMediaKindFilterT<S, P, C, CO>::RowSelected(const Row& row, unsigned int outputFormat) const {
  return outputFormat == 0 || KindFilterDetail::FormatOf(row.output) == outputFormat;
}

template <class S, class P, class C, class CO>
CFormatList* CMediaKindFilterT<S, P, C, CO>::GetInputFormats() const {
  auto* formats = new CFormatList();
  const Row* rows = GetConfigurationTable();
  if (!rows) return formats;
  const unsigned int outputFormat = GetRequestedOutputFormat();
  for (const Row* row = rows; KindFilterDetail::FormatOf(row->input) != 0; ++row) {
    const unsigned int format = KindFilterDetail::FormatOf(row->input);
    if (RowSelected(*row, outputFormat) && !formats->ContainsValue(format)) formats->AddValue(format);
  }
  return formats;
}

template <class S, class P, class C, class CO>
CFormatList* CMediaKindFilterT<S, P, C, CO>::GetOutputFormats() const {
  auto* formats = new CFormatList();
  const Row* rows = GetConfigurationTable();
  const P* input = GetCurrentInput();
  if (!rows || !input) return formats;
  const C actual = C::Create(input);
  const unsigned int outputFormat = GetRequestedOutputFormat();
  for (const Row* row = rows; KindFilterDetail::FormatOf(row->input) != 0; ++row) {
    const unsigned int format = KindFilterDetail::FormatOf(row->output);
    if (row->input.Matches(actual) && RowSelected(*row, outputFormat) && !formats->ContainsValue(format))
      formats->AddValue(format);
  }
  return formats;
}

template <class S, class P, class C, class CO>
CFormatList* CMediaKindFilterT<S, P, C, CO>::GetTableOutputFormats() const {
  auto* formats = new CFormatList();
  const Row* rows = GetConfigurationTable();
  for (const Row* row = rows; row && KindFilterDetail::FormatOf(row->input) != 0; ++row) {
    const unsigned int format = KindFilterDetail::FormatOf(row->output);
    if (!formats->ContainsValue(format)) formats->AddValue(format);
  }
  return formats;
}

template <class S, class P, class C, class CO>
int CMediaKindFilterT<S, P, C, CO>::Evaluate(const P* properties) const {
  if (!properties || properties->GetFormat() == 0) return 0;
  const Row* rows = GetConfigurationTable();
  if (!rows) return CMediaFilterT<S, P>::Evaluate(properties);
  const C actual = C::Create(properties);
  for (const Row* row = rows; KindFilterDetail::FormatOf(row->input) != 0; ++row)
    if (row->input.Matches(actual)) return CMediaFilter::Acceptable;
  return 0;
}

template <class S, class P, class C, class CO>
CArrayList<CO>* CMediaKindFilterT<S, P, C, CO>::GetConfigurations(C Row::*side) const {
  const Row* rows = GetConfigurationTable();
  if (!rows) return nullptr;
  auto* list = new CArrayList<CO>();
  const unsigned int outputFormat = GetRequestedOutputFormat();
  for (const Row* row = rows; KindFilterDetail::FormatOf(row->input) != 0; ++row) {
    if (!RowSelected(*row, outputFormat)) continue;
    RObject<CO> item(new CO(row->*side));
    list->Add(item);
  }
  return list;
}

template <class S, class P, class C, class CO>
CArrayList<CO>* CMediaKindFilterT<S, P, C, CO>::GetInputConfigurations() const {
  return GetConfigurations(&Row::input);
}

template <class S, class P, class C, class CO>
CArrayList<CO>* CMediaKindFilterT<S, P, C, CO>::GetOutputConfigurations() const {
  return GetConfigurations(&Row::output);
}

template <class S, class P, class C, class CO>
CArrayList<CO>* CMediaKindFilterT<S, P, C, CO>::GetOutputConfigurations(const CO* input) const {
  const Row* rows = GetConfigurationTable();
  if (!rows) return nullptr;
  auto* list = new CArrayList<CO>();
  if (!input) return list;
  for (const Row* row = rows; KindFilterDetail::FormatOf(row->input) != 0; ++row) {
    if (!(row->input == input->GetConfiguration())) continue;
    RObject<CO> item(new CO(row->output));
    list->Add(item);
  }
  return list;
}

template <class S, class P, class C, class CO>
const P* CMediaKindFilterT<S, P, C, CO>::GetCurrentInput() const {
  CMediaFilterTrack* track = this->GetInputTrack(0);
  return track ? static_cast<const P*>(track->GetProperties()) : nullptr;
}

}  // namespace Corvane::Mox
