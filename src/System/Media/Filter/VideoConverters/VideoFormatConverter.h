#pragma once
// CVideoFormatConverter ("vfc "): converts uncompressed pictures between
// pixel formats, bit depths, video ranges, chroma subsamplings and between
// RGB and YUV with linear operations only. For a pair of descriptions it
// plans the cheapest chain of elementary stages (unpack, pack, shuffle, copy,
// convert, twist, resample) over a graph of intermediate descriptions, then
// runs the chain on every picture, cutting each into bands of lines that run
// on worker threads.

#include <functional>
#include <memory>
#include <vector>

#include "System/Media/Filter/Converters.h"

namespace Corvane::Mox {

class CBandWorkers;
class CStage;
struct SamplePlanes;
template <class T>
class CList;

class CVideoFormatConverter : public CVideoConverter {
 public:
  static constexpr unsigned int ComponentCode = FourCC("vfc ");
  enum ConversionStrategy : int { CS_SPEED = 1, CS_QUALITY = 2 };

  CVideoFormatConverter();
  ~CVideoFormatConverter() override;

  // The converter's own properties and those of every filter.
  CProperties* GetDocumentation() const override;

  // Every conversion some chain of stages can make, by format.
  const Row* GetConfigurationTable() const override;
  // The table's outputs for the input, narrowed by "BitDepth" and "Subsampling".
  CFormatList* GetOutputFormats() const override;
  using CVideoConverter::CreateOutputProperties;
  Result CreateOutputProperties(unsigned int format, CVideoProperties*& properties) const override;

  using CVideoConverter::Convert;
  Result Convert(CVideoSample* sample, CVideoSample*& converted) override;

  // The cheapest chain from input to output (a new list of stages, each
  // begun with the descriptions of its edge); null when none joins them.
  static CList<CStage>* FindConversionPath(int strategy, const CVideoProperties* input,
                                           const CVideoProperties* output, int roundingMode = 1);
  // The planned chain (borrowed; null before Initialize).
  CList<CStage>* GetStages() const { return stages_; }

 protected:
  Result Initialize() override;
  Result Finalize() override;

 private:
  int GetSetting(const PropertyName& name, int fallback) const;
  // Runs stages [first, last) over bands of lines lines each: planes[i] is
  // the input of stage i.
  Result RunBands(int first, int last, std::vector<SamplePlanes>& planes, int lines);
  // Runs the whole chain line by line over bands, from input to output.
  Result RunChained(const SamplePlanes& input, SamplePlanes& output);
  void RunBandWork(int bands, const std::function<void(int)>& work);

  RObject<CList<CStage>> stages_;
  std::vector<const CStage*> chain_;  // the stages of stages_, borrowed
  bool lineLocal_ = false;
  std::unique_ptr<CBandWorkers> workers_;
  bool bottomUp_ = false;
};

}  // namespace Corvane::Mox
