// Topology building: a script of 20 connections, each from a source of
// H.264 pictures to a filter that takes only v210, so every connection needs
// a decoder and a format converter found by the converter search. The
// transform inventory holds the two that fit, rivals that lose more, a
// format converter with several outputs, and decoders of other formats that
// the search must pass over. Counters report what the search visited per
// build: searches, descriptions expanded, candidate filters tried and
// search-graph edges.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "System/Collections/Value.h"
#include "System/FourString.h"
#include "System/Media/Filter/FilterFamilies.h"
#include "System/Media/Inventory/ComponentInventory.h"
#include "System/Text.h"
#include "wfl/MediaFilterTransformInventory.h"
#include "wfl/Parser.h"
#include "wfl/Topology.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

namespace {

struct Picture {
  unsigned int format;
  int depth;
  int subsampling;
};

CVideoProperties* MakePicture(const Picture& picture) {
  auto* video = new CVideoProperties();
  video->SetFormat(picture.format);
  video->SetWidth(1920);
  video->SetHeight(1080);
  video->SetBitDepth(picture.depth);
  video->SetSubsampling(picture.subsampling);
  video->SetFrameRate(Rational<int>(30000, 1001));
  return video;
}

// A transform that takes the listed formats and makes the listed pictures.
class CBenchTransform : public CVideoConverter {
 public:
  CBenchTransform(unsigned int code, std::vector<unsigned int> inputs, std::vector<Picture> outputs)
      : CVideoConverter(code), inputs_(std::move(inputs)), outputs_(std::move(outputs)) {}
  CFormatList* GetInputFormats() const override {
    auto* formats = new CFormatList();
    for (unsigned int format : inputs_) formats->AddValue(format);
    return formats;
  }
  CFormatList* GetOutputFormats() const override {
    auto* formats = new CFormatList();
    for (const Picture& output : outputs_) formats->AddValue(output.format);
    return formats;
  }
  using CVideoConverter::CreateOutputProperties;
  Result CreateOutputProperties(unsigned int format, CVideoProperties*& properties) const override {
    Result made = CVideoConverter::CreateOutputProperties(format, properties);
    for (const Picture& output : outputs_) {
      if (properties && output.format == format) {
        properties->SetBitDepth(output.depth);
        properties->SetSubsampling(output.subsampling);
      }
    }
    return made;
  }

 private:
  std::vector<unsigned int> inputs_;
  std::vector<Picture> outputs_;
};

class CBenchFactory : public CComponentFactory<CMediaFilter> {
 public:
  CBenchFactory(unsigned int code, std::vector<unsigned int> inputs, std::vector<Picture> outputs)
      : CComponentFactory(code), inputs_(std::move(inputs)), outputs_(std::move(outputs)) {}
  CMediaFilter* CreateInstance() const override { return new CBenchTransform(GetCode(), inputs_, outputs_); }

 private:
  std::vector<unsigned int> inputs_;
  std::vector<Picture> outputs_;
};

// The script's source: makes 10-bit 4:2:2 H.264 pictures by itself.
class CSourceFilter : public CVideoConverter {
 public:
  static constexpr unsigned int ComponentCode = FourCC("bsrc");
  CSourceFilter() : CVideoConverter(ComponentCode) {}
  CFormatList* GetOutputFormats() const override {
    auto* formats = new CFormatList();
    formats->AddValue(FourCC("avc1"));
    return formats;
  }
  Result Begin() override { return CMediaFilter::Begin(); }
  int GetOutputMediaCount() const override { return 1; }
  CMediaProperties* GetOutputMedia(int index) const override {
    return index == 0 ? MakePicture({FourCC("avc1"), 10, 0x21}) : nullptr;
  }
};

// The script's target: takes v210 only.
class CTargetFilter : public CVideoConverter {
 public:
  static constexpr unsigned int ComponentCode = FourCC("btgt");
  CTargetFilter() : CVideoConverter(ComponentCode) {}
  CFormatList* GetInputFormats() const override {
    auto* formats = new CFormatList();
    formats->AddValue(FourCC("v210"));
    return formats;
  }
  CFormatList* GetOutputFormats() const override { return GetInputFormats(); }
};

void AddTransform(const char* code, std::vector<unsigned int> inputs, std::vector<Picture> outputs) {
  RObject<CBenchFactory> factory(new CBenchFactory(FourString::ToFour(code), std::move(inputs), std::move(outputs)));
  CMediaFilterTransformInventory::AddFactory(factory);
}

void Register() {
  static const bool registered = [] {
    CFamilyInventory<CVideoConverter>::AddComponent<CSourceFilter>();
    CFamilyInventory<CVideoConverter>::AddComponent<CTargetFilter>();
    const Picture planar10{FourCC("I2AL"), 10, 0x21}, uyvy8{FourCC("2vuy"), 8, 0x21}, i420{FourCC("I420"), 8, 0x22};
    const Picture v210{FourCC("v210"), 10, 0x21}, nv12{FourCC("NV12"), 8, 0x22}, rgb{FourCC("BGRA"), 8, 0x11};
    AddTransform("DAV1", {FourCC("avc1")}, {planar10});
    AddTransform("MC64", {FourCC("avc1")}, {uyvy8, i420});
    // A format converter in the manner of the real one: many in, many out.
    AddTransform("vfc ", {FourCC("I2AL"), FourCC("2vuy"), FourCC("I420"), FourCC("NV12")}, {v210, uyvy8, i420, nv12, rgb});
    // Decoders of other formats, refused at once by the ranking.
    for (const char* other : {"APPR", "ADNH", "CFHD", "FFV1", "JPEG", "PNG ", "VPX ", "MCM2", "WMV ", "DPX "})
      AddTransform(other, {FourString::ToFour(other)}, {i420});
    return true;
  }();
  (void)registered;
}

std::string Script(int connections) {
  std::string script;
  for (int i = 0; i < connections; ++i) {
    const std::string n = std::to_string(i);
    script += "var s" + n + " = new VideoConverter('bsrc'); var t" + n + " = new VideoConverter('btgt'); s" + n +
              " -> t" + n + ";\n";
  }
  return script;
}

void Discard(CString*) {}

void BM_BuildTopologyOf20ConvertingConnections(benchmark::State& state) {
  Register();
  CParser::SetLogCallback(Discard);
  RObject<CString> text(CString::WithString(Script(20).c_str()));
  SearchStatistics last;
  for (auto _ : state) {
    RObject<CParser> parser(new CParser());
    RObject<CTopology> topology(parser->ParseString(text, nullptr));
    last = topology->GetSearchStatistics();
    if (topology->GetNodes()->GetCount() != 80) state.SkipWithError("the converters were not inserted");
    benchmark::DoNotOptimize(topology.Get());
  }
  state.counters["searches"] = static_cast<double>(last.searches);
  state.counters["expanded"] = static_cast<double>(last.descriptionsExpanded);
  state.counters["candidates"] = static_cast<double>(last.candidatesTried);
  state.counters["edges"] = static_cast<double>(last.edges);
}
BENCHMARK(BM_BuildTopologyOf20ConvertingConnections)->Unit(benchmark::kMillisecond);

}  // namespace
