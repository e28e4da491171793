#pragma once
// CStage: one elementary step of a conversion chain. A stage has a type tag,
// a pixel-format map (rows {input descriptor, output descriptor}) and the
// target values it gives its outputs (bit depth and range for convert,
// matrix and range for twist, subsampling for resample). The planner asks
// every candidate stage what it can make of a description
// (GetOutputProperties); a planned stage is begun with the two descriptions
// of its edge and transforms pictures band by band, so the converter can run
// the bands of one picture on several threads.

#include <vector>

#include "System/Collections/List.h"
#include "System/Media/Filter/VideoConverters/PixelFormatDescriptor.h"
#include "System/Media/PixelDataReference.h"
#include "System/Media/Video/VideoProperties.h"

namespace Corvane::Mox {

class CDataReference;
struct ComponentLines;
struct LineCodec;

class CStage : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("stag");

  struct Row {
    PixelFormatDescriptor input;
    PixelFormatDescriptor output;
  };
  struct Target {
    int bitDepth = 0;
    int videoRange = 0;
    int matrix = 2;
    int subsampling = 0;
    int chromaSiting = 0;
    int roundingMode = 1;
  };
  // Plane pointers of a picture buffer laid out for a description.
  class Buffer {
   public:
    // The planes of reference read as the description's format; a plain
    // buffer is taken to hold the planes one after the other at their
    // natural strides. ResultBufferTooSmall when it is shorter than that.
    static Result GetSamplePlanes(CDataReference* reference, const CVideoProperties* properties, bool bottomUp,
                                  SamplePlanes& planes);
  };

  // Bands start on multiples of this many lines, so no chroma line of any
  // layout is shared by two bands.
  static constexpr int BandAlignment = 4;

  CStage(unsigned int stageType, const std::vector<Row>& map);
  ~CStage() override;

  bool IsType(unsigned int type) const override { return type == TypeCode || CObject::IsType(type); }
  unsigned int GetStageType() const { return stageType_; }
  const std::vector<Row>& GetMap() const { return map_; }
  const Target& GetTarget() const { return target_; }
  void SetTarget(const Target& target) { target_ = target; }

  // The descriptions reachable from input through the map (a new list).
  CList<CVideoProperties>* GetOutputProperties(const CVideoProperties* input) const;

  // Prepares a run from input to output: "Unexpected input/output: '%s'/'%s'"
  // when the map has no such row.
  Result Begin(const CVideoProperties* input, const CVideoProperties* output);
  Result End();
  const CVideoProperties* GetInput() const { return input_; }
  const CVideoProperties* GetOutput() const { return output_; }

  // Converts lines [firstLine, lastLine) of one picture; safe to call from
  // several threads at once on disjoint bands.
  Result Transform(const SamplePlanes& input, SamplePlanes& output, int firstLine, int lastLine) const;
  // Converts a whole picture on the calling thread.
  Result Transform(CPixelDataReference* input, CPixelDataReference* output) const;

  // Whether output lines need input lines other than their own (vertical
  // resampling); after Begin. Stages that do not can run band by band right
  // behind the stage before them.
  virtual bool NeedsNeighbourLines() const;

  // Line by line through a chain without intermediate pictures: the first
  // stage produces the component values of output line y from its input
  // picture, each later stage processes them in place (or into spare, then
  // swaps the two), and the last stage encodes them. The values are those
  // the stages' own Transform would write, so a chain run this way gives
  // the same picture. The lines need GetSlotCapacity(width) values per slot.
  virtual void ProduceLine(const SamplePlanes& input, int y, ComponentLines& lines, ComponentLines& spare) const;
  virtual void ProcessLine(ComponentLines& lines, ComponentLines& spare, int y) const;
  void EncodeLine(const ComponentLines& lines, int y, SamplePlanes& output) const;
  // ProcessLine and EncodeLine of the chain's last stage, which a stage may
  // do in one pass.
  virtual void FinishLine(ComponentLines& lines, ComponentLines& spare, int y, SamplePlanes& output) const;
  // Lines [firstLine, lastLine) of a begun chain whose stages after the
  // first need only their own lines, from the first stage's input picture
  // to the last stage's output picture.
  static void TransformChain(const std::vector<const CStage*>& chain, const SamplePlanes& input, SamplePlanes& output,
                             int firstLine, int lastLine);

  // A stage of a type tag with its map; null for an unknown tag.
  static CStage* Create(unsigned int stageType);

 protected:
  // Whether a row leads anywhere for this stage's target from the input.
  virtual bool Offers(const Row& row, const CVideoProperties* input) const;
  // Gives an output description the stage's target values.
  virtual void ApplyTarget(CVideoProperties* output) const;
  // Per-run preparation once the codecs are known.
  virtual Result Prepare() { return Result(); }
  // The default is a pure layout change: decode and encode every line.
  virtual void TransformLines(const SamplePlanes& input, SamplePlanes& output, int firstLine, int lastLine) const;

  // Scratch component lines of the calling thread, at least capacity values
  // per slot; kept between pictures. Indices 0 and 1 belong to whoever
  // drives the lines (Transform or the chain), 2 and 3 to the stages.
  static ComponentLines& GetScratch(int index, int capacity);
  // Planes copied whole between matching input and output planes (bitmask
  // of output planes) and the slots the codecs still handle.
  unsigned GetCopiedSlots() const { return copiedSlots_; }
  void CopyPlaneLines(const SamplePlanes& input, SamplePlanes& output, int y) const;
  void FillAlpha(ComponentLines& lines, int width) const;

  const LineCodec* inputCodec_ = nullptr;
  const LineCodec* outputCodec_ = nullptr;
  RObject<CVideoProperties> input_;
  RObject<CVideoProperties> output_;

 private:
  void FindCopyablePlanes();

  unsigned int stageType_;
  const std::vector<Row>& map_;
  Target target_;
  int copyFrom_[4] = {-1, -1, -1, -1};
  unsigned copiedSlots_ = 0;
};

}  // namespace Corvane::Mox
