// mox probe: opens a media file with the reader that recognises it (or the
// one named by --type), indexes it, and prints what the reader found: the
// container, its tracks, its extensions (variances among them) and, on
// request, every sample.
#include <cstdio>
#include <cstring>
#include <string>

#include <Mox.h>

#include "Commands.h"
#include "FourCharacterCode.h"
#include "JsonText.h"

using namespace Corvane::Mox;

namespace MoxTool {

namespace {

std::string Text(CString* text) { return text ? std::string(text->GetChars()) : std::string(); }

std::string JsonOf(const CProperties* bag) {
  RObject<CString> json(bag ? bag->ToJson() : nullptr);
  return json ? Text(json) : "null";
}

// Everything printed about one track.
struct TrackReport {
  const char* kind;
  int index;
  CMediaIndexer* indexer;
};

std::vector<TrackReport> TracksOf(CIndexer* indexer) {
  std::vector<TrackReport> tracks;
  for (int i = 0; i < indexer->GetVideoMediaIndexerCount(); ++i) tracks.push_back({"video", i, indexer->GetVideoMediaIndexer(i)});
  for (int i = 0; i < indexer->GetAudioMediaIndexerCount(); ++i) tracks.push_back({"audio", i, indexer->GetAudioMediaIndexer(i)});
  for (int i = 0; i < indexer->GetSubtitleMediaIndexerCount(); ++i)
    tracks.push_back({"subtitle", i, indexer->GetSubtitleMediaIndexer(i)});
  return tracks;
}

// One sample's time, duration, flags, position and length.
struct SampleFields {
  long long time = 0;
  long long duration = 0;
  int pictureType = -1;
  int hint = 0;
  long long position = -1;
  int length = 0;
};

SampleFields FieldsOf(CMediaSample* sample) {
  SampleFields fields;
  fields.time = sample->GetTime();
  fields.duration = sample->GetDuration();
  fields.hint = sample->GetHint();
  if (sample->IsType(CVideoSample::TypeCode)) fields.pictureType = static_cast<CVideoSample*>(sample)->GetPictureType();
  RObject<CDataReference> reference(sample->GetDataReference(CContainerDataReference::TypeCode));
  if (!reference) reference = sample->GetDataReference(CStorageDataReference::TypeCode);
  if (auto* stored = static_cast<CStorageDataReference*>(reference.Get())) {
    fields.position = stored->GetPosition();
    fields.length = stored->GetLength();
  }
  return fields;
}

std::string SamplesJson(CMediaIndexer* indexer) {
  std::string out = "[";
  for (int i = 0; i < indexer->GetSampleCount(); ++i) {
    RObject<CMediaSample> sample(indexer->GetSample(i));
    const SampleFields f = FieldsOf(sample);
    char line[256];
    std::snprintf(line, sizeof(line),
                  "%s{\"time\": %lld, \"duration\": %lld, \"pictureType\": %d, \"hint\": %d, \"position\": %lld, "
                  "\"length\": %d}",
                  i ? ", " : "", f.time, f.duration, f.pictureType, f.hint, f.position, f.length);
    out += line;
  }
  return out + "]";
}

std::string ExtensionsJson(CContainer* container) {
  RObject<CList<CContainerPropertiesExtension>> extensions(container->GetExtensions());
  std::string out = "[";
  bool first = true;
  for (CContainerPropertiesExtension* extension : *extensions) {
    RObject<CProperties> description(extension->GetDescriptiveRepresentation());
    out += (first ? "" : ", ") + JsonOf(description);
    first = false;
  }
  return out + "]";
}

void PrintJson(const ProbeOptions& options, CContainerReader* reader, CIndexer* indexer) {
  RObject<CProperties> description(reader->GetDescriptiveRepresentation());
  long long size = 0;
  description->GetProperty("size", size);
  const long long milliseconds = reader->GetDurationInMilliseconds();
  RObject<CString> duration(CMediaProperties::MillisecondsToTime(milliseconds));
  std::printf("{\"file\": %s, \"type\": %s, \"name\": %s, \"size\": %lld, \"duration\": %s, \"durationMilliseconds\": %lld",
              JsonQuote(options.path.c_str()).c_str(), JsonQuote(CodeText(reader->GetType()).c_str()).c_str(),
              JsonQuote(reader->GetFormatName()).c_str(), size, JsonQuote(Text(duration).c_str()).c_str(), milliseconds);
  std::printf(", \"tracks\": [");
  bool first = true;
  for (const TrackReport& track : TracksOf(indexer)) {
    RObject<CMediaProperties> properties(track.indexer->GetProperties());
    RObject<CProperties> bag(properties ? properties->GetDescriptiveRepresentation() : nullptr);
    std::printf("%s{\"kind\": \"%s\", \"index\": %d, \"description\": %s, \"sampleCount\": %d", first ? "" : ", ",
                track.kind, track.index, JsonOf(bag).c_str(), track.indexer->GetSampleCount());
    if (options.samples) std::printf(", \"samples\": %s", SamplesJson(track.indexer).c_str());
    std::printf("}");
    first = false;
  }
  std::printf("], \"extensions\": %s}\n", ExtensionsJson(reader).c_str());
}

void PrintIndented(const std::string& text, const char* indent) {
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    std::printf("%s%.*s\n", indent, static_cast<int>(end - start), text.c_str() + start);
    start = end + 1;
  }
}

void PrintText(const ProbeOptions& options, CContainerReader* reader, CIndexer* indexer) {
  RObject<CProperties> description(reader->GetDescriptiveRepresentation());
  long long size = 0;
  description->GetProperty("size", size);
  RObject<CString> sizeText;
  description->GetPropertyDescription("size", sizeText.Out());
  const long long milliseconds = reader->GetDurationInMilliseconds();
  RObject<CString> duration(CMediaProperties::MillisecondsToTime(milliseconds));
  std::printf("file:     %s\n", options.path.c_str());
  std::printf("type:     %s (%s)\n", CodeText(reader->GetType()).c_str(),
              reader->GetFormatName() ? reader->GetFormatName() : "unnamed");
  std::printf("size:     %lld bytes (%s)\n", size, Text(sizeText).c_str());
  std::printf("duration: %s\n", Text(duration).c_str());
  for (const TrackReport& track : TracksOf(indexer)) {
    RObject<CMediaProperties> properties(track.indexer->GetProperties());
    RObject<CProperties> bag(properties ? properties->GetDescriptiveRepresentation() : nullptr);
    RObject<CString> yaml(bag ? bag->ToYaml() : nullptr);
    std::printf("%s track %d: %d samples\n", track.kind, track.index, track.indexer->GetSampleCount());
    PrintIndented(Text(yaml), "  ");
    if (!options.samples) continue;
    std::printf("  samples (time duration picture-type hint position length):\n");
    for (int i = 0; i < track.indexer->GetSampleCount(); ++i) {
      RObject<CMediaSample> sample(track.indexer->GetSample(i));
      const SampleFields f = FieldsOf(sample);
      std::printf("    %lld %lld %d %d %lld %d\n", f.time, f.duration, f.pictureType, f.hint, f.position, f.length);
    }
  }
  RObject<CList<CContainerPropertiesExtension>> extensions(reader->GetExtensions());
  for (CContainerPropertiesExtension* extension : *extensions) {
    RObject<CProperties> bag(extension->GetDescriptiveRepresentation());
    RObject<CString> yaml(bag->ToYaml());
    std::printf("extension %s:\n", CodeText(extension->GetTag()).c_str());
    PrintIndented(Text(yaml), "  ");
  }
}

}  // namespace

int RunProbe(const ProbeOptions& options) {
  RObject<CString> path(CString::WithString(options.path.c_str()));
  if (!CFile::Exists(path)) {
    PrintError("cannot open '%s'", options.path.c_str());
    return ExitFailure;
  }
  RObject<CContainerReader> reader(options.type ? CContainerReader::Create(path, options.type)
                                                : CContainerReader::Create(path));
  if (!reader) {
    if (options.type)
      PrintError("no available reader of type '%s' for '%s'", CodeText(options.type).c_str(), options.path.c_str());
    else
      PrintError("no reader recognises '%s'", options.path.c_str());
    return ExitFailure;
  }
  RObject<CIndexer> indexer(new CIndexer(reader));
  Result result = indexer->Begin(false);
  if (result.Failed()) {
    PrintError("cannot index '%s': %s", options.path.c_str(), result.GetDetails() ? result.GetDetails() : result.GetErrorMessage());
    return ExitFailure;
  }
  // Readers that report while beginning do so on this thread.
  reader->SynchronizeVariances();
  if (options.json) {
    PrintJson(options, reader, indexer);
  } else {
    PrintText(options, reader, indexer);
  }
  indexer->End();
  return ExitSuccess;
}

}  // namespace MoxTool
