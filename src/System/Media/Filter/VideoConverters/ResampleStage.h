#pragma once
// CResampleStage ("smpl"): converts the chroma planes of YUV pictures between
// subsamplings (4:4:4, 4:4:0, 4:2:2, 4:2:0, 4:1:1, 4:1:0) within one bit
// depth, copying luma and alpha. Chroma is filtered separably with a tent:
// linear interpolation up, a triangle average of the covered samples down.
// Chroma samples sit horizontally on the first luma sample they cover when
// the siting says cosited (or vertical midpoint), else midway between the
// luma samples they cover, as common scalers assume when nothing is known;
// vertically they always sit midway between the lines they cover.

#include <cstdint>
#include <vector>

#include "System/Media/Filter/VideoConverters/Stage.h"

namespace Corvane::Mox {

class CResampleStage : public CStage {
 public:
  static constexpr unsigned int StageType = FourCC("smpl");
  CResampleStage();
  static const std::vector<Row>& GetStageMap();
  bool NeedsNeighbourLines() const override;
  void ProduceLine(const SamplePlanes& input, int y, ComponentLines& lines, ComponentLines& spare) const override;
  void ProcessLine(ComponentLines& lines, ComponentLines& spare, int y) const override;

  // The taps of one direction: for each output sample, width input indices
  // (clamped to the picture, so edges repeat) and their weights; only taps
  // of non-zero weight are kept, so a 2:1 step costs two or four.
  struct Taps {
    int width = 0;  // taps per output sample
    std::vector<int> index;
    std::vector<float> weights;
    // The regular interior: away from the edges, blocks of period outputs
    // step inputs apart share their weights (phase) and relative indices
    // (offset), which lets the 2:1 cases run as vector loops.
    int period = 0;
    int step = 0;
    int begin = 0;  // blocks [begin, end) are regular
    int end = 0;
    std::vector<int> offset;
    std::vector<float> phase;

    static Taps Build(int outputCount, int inputCount, int outputFactor, int inputFactor, bool centred);
    // Applies the taps to one line of sums.
    void Apply(const float* sums, uint16_t* out, int outputCount, float maximum) const;

   private:
    void FindRegularInterior(int outputCount, int outputFactor, int inputFactor);
    bool IsRegular(int block, int outputCount) const;
  };

 protected:
  bool Offers(const Row& row, const CVideoProperties* input) const override;
  void ApplyTarget(CVideoProperties* output) const override;
  Result Prepare() override;
  void TransformLines(const SamplePlanes& input, SamplePlanes& output, int firstLine, int lastLine) const override;

 private:
  // The chroma values of output line y (slots 1 and 2 of result).
  void ResampleChroma(const SamplePlanes& input, int y, ComponentLines& result) const;
  void ApplyHorizontal(const std::vector<float> (&sums)[2], ComponentLines& result, int outW) const;

  Taps horizontal_;
  Taps vertical_;
};

}  // namespace Corvane::Mox
