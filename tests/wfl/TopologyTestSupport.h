#pragma once
// Components for topology tests: a reader and a writer with made-up tracks,
// video transforms described by the formats they take and make, and a
// fixture that owns the transform inventory for its tests.

#include <functional>
#include <string>
#include <vector>

#include "System/LeakCheckedTest.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Filter/FilterFamilies.h"
#include "wfl/Topology.h"

namespace TopologyTestSupport {

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

struct Picture {
  const char* format;
  int depth;
  int subsampling;
  int width = 1920;
};

CVideoProperties* MakePicture(const Picture& picture);
CAudioProperties* MakeSound(const char* format, int channels);

// A reader whose tracks are given descriptions.
class CFakeReader : public CContainerReader {
 public:
  CFakeReader() : CContainerReader(FourCC("fkrd")) {}
  std::vector<RObject<CVideoProperties>> video;
  std::vector<RObject<CAudioProperties>> audio;
  int GetVideoMediaCount() const override { return static_cast<int>(video.size()); }
  CVideoProperties* GetVideoProperties(int i) const override;
  int GetAudioMediaCount() const override { return static_cast<int>(audio.size()); }
  CAudioProperties* GetAudioProperties(int i) const override;
};

// A writer that keeps what it is given.
class CFakeWriter : public CContainerWriter {
 public:
  CFakeWriter() : CContainerWriter(FourCC("fkwr")) {}
  const char* GetDefaultExtension() const override { return "fake"; }
  std::vector<RObject<CVideoProperties>> video;
  std::vector<RObject<CAudioProperties>> audio;
  std::vector<std::string> written;
  int GetVideoMediaCount() const override { return static_cast<int>(video.size()); }
  int GetAudioMediaCount() const override { return static_cast<int>(audio.size()); }
  Result AddVideoMedia(CVideoProperties* properties) override;
  Result AddAudioMedia(CAudioProperties* properties) override;
  Result WriteVideoSample(int track, CVideoSample*) override;
  Result WriteAudioSample(int track, CAudioSample*) override;
};

// A video transform that takes the listed formats and makes the listed
// pictures (format, depth, subsampling; width kept unless given).
class CStepFilter : public CVideoConverter {
 public:
  CStepFilter(unsigned int code, std::vector<unsigned int> inputs, std::vector<Picture> outputs)
      : CVideoConverter(code), inputs_(std::move(inputs)), outputs_(std::move(outputs)) {}
  CFormatList* GetInputFormats() const override;
  CFormatList* GetOutputFormats() const override;
  using CVideoConverter::CreateOutputProperties;
  Result CreateOutputProperties(unsigned int format, CVideoProperties*& properties) const override;

 private:
  std::vector<unsigned int> inputs_;
  std::vector<Picture> outputs_;
};

// A filter that takes only pictures of one configuration (format and,
// optionally, width) and passes them on.
class CTargetFilter : public CVideoConverter {
 public:
  CTargetFilter(unsigned int format, int width);
  const Row* GetConfigurationTable() const override { return rows_; }

 private:
  Row rows_[2];
};

class TopologyTest : public LeakCheckedTest {
 public:
  static void SetUpTestSuite();

 protected:
  void SetUp() override;
  void TearDown() override;

  // Registers a transform in the inventory (priority 0: ranked by score).
  void AddTransform(unsigned int code, std::vector<unsigned int> inputs, std::vector<Picture> outputs,
                    int priority = 0);
  // Registers a factory of any filter.
  void AddFactory(unsigned int code, std::function<CMediaFilter*()> make);
  CTopologyNode* AddReader(std::vector<Picture> video, int audioTracks = 0);
  CTopologyNode* AddTarget(const char* label, unsigned int format, int width = 0);
  CTopologyNode* AddWriter(const char* label);
  // The labels of the nodes in graph order.
  std::vector<std::string> Labels() const;

  RObject<CTopology> topology_;
  std::vector<RObject<CObject>> held_;
};

}  // namespace TopologyTestSupport
