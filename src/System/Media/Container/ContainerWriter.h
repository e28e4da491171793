#pragma once
// CContainerWriter: the base of the writers that store tracks in a media
// file. A writer is a property bag; its type code is its component code.
//
// Calling order: create, set properties, Add...Media per track, BeginIndex
// (opens the output), Write...Sample, EndIndex (completes and closes).

#include "System/Media/Container/Container.h"
#include "System/Text.h"

namespace Corvane::Mox {

class CAudioSample;
class CLockedDataReference;
class CMediaSample;
class CPathTemplate;
class CStream;
class CString;
class CSubtitleSample;
class CVideoSample;

class CContainerWriter : public CContainer {
 public:
  explicit CContainerWriter(unsigned int componentCode);
  ~CContainerWriter() override;

  Result BeginIndex() override { return Result(); }
  Result EndIndex() override { return Result(); }

  // The format's usual extension, without dot ("y4m").
  virtual const char* GetDefaultExtension() const = 0;
  virtual CString* GetName() const;  // acquired, or null
  virtual void SetName(CString* name);
  // The explicit extension when one was set, otherwise the default (a new
  // string either way).
  virtual CString* GetFileExtension() const;
  virtual void SetFileExtension(CString* extension);

  // Adds a track (the writer keeps a copy of the description); its number
  // within its kind is the kind's track count before the call. The base
  // supports no media: ResultNotSupported "video media is not supported".
  virtual Result AddVideoMedia(CVideoProperties* properties);
  virtual Result AddAudioMedia(CAudioProperties* properties);
  virtual Result AddSubtitleMedia(CSubtitleProperties* properties);
  // Writes a sample to a track; a null sample is ignored.
  virtual Result WriteVideoSample(int track, CVideoSample* sample);
  virtual Result WriteAudioSample(int track, CAudioSample* sample);
  virtual Result WriteSubtitleSample(int track, CSubtitleSample* sample);

  // "type", "name", "manifest", "properties" and the tracks by kind.
  virtual CProperties* GetDescriptiveRepresentation() const;
  // Evaluates the path template, then opens the default output stream.
  virtual Result OpenStream(CStream*& stream);
  // Opens a named side file.
  virtual Result OpenStream(CString* name, CStream*& stream);

  // When the context's default file name holds "$" an even number of times
  // (two or more) it is a template: it is expanded with the writer's
  // extension and tracks and becomes the default file name.
  void EvaluatePathTemplate();
  // Fills a template from the Template property and verifies it.
  Result FromProperty(CPathTemplate* pathTemplate) const;

  // A writer of the type for the path, or null when no available writer of
  // that type exists. The name and extension come from the path.
  static CContainerWriter* Create(CString* path, unsigned int type);
  static CContainerWriter* Create(CContainerContext* context, unsigned int type);

 protected:
  // The file name, without directory, of the output `name` (the default
  // output when null): the context's file name, or else the writer's name
  // and extension as the output would be opened. What one-file writers
  // identify their file by.
  CString* GetOutputFileName(CString* name) const;
  // The sample's bytes in memory, locked for reading (acquired); fails when
  // the sample carries none (for example a reader's sample whose bytes were
  // never read).
  static Result LockSampleData(CMediaSample* sample, CLockedDataReference*& data);

 private:
  RObject<CString> name_;
  RObject<CString> extension_;
};

// Creation of writers through their registry.
class CContainerWriterInventory {
 public:
  static CContainerWriter* Create(unsigned int type);
};

// The writer type for a path: the first registered writer one of whose
// format's extensions matches the path's (case-insensitive); 0 when none.
unsigned int GetContainerWriterType(CString* path);

}  // namespace Corvane::Mox
