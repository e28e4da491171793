#pragma once
// CTopologyEdgeInfo: what travels along one topology edge: the media
// description on it, the source output and target input indices, a label,
// and the properties the script asked for on the connection
// ("var c = a -> b; c.width = 1280;").

#include "System/Properties.h"

namespace Corvane::Mox {
class CMediaProperties;
}

namespace Corvane::Mox::WFL {

class CTopologyEdgeInfo : public CProperties {
 public:
  static constexpr unsigned int TypeCode = FourCC("tpei");

  CTopologyEdgeInfo(int sourceTrack, int targetTrack);
  ~CTopologyEdgeInfo() override;

  // A new edge payload over a copy of the media.
  static CTopologyEdgeInfo* Create(const CMediaProperties* media, int sourceTrack, int targetTrack);

  CMediaProperties* GetMedia() const { return media_; }  // borrowed, may be null
  int GetSourceTrack() const { return sourceTrack_; }
  int GetTargetTrack() const { return targetTrack_; }
  CString* GetLabel() const { return label_; }  // borrowed, may be null
  void SetLabel(CString* label);
  // The connection's requested properties (borrowed), or null.
  CProperties* GetProperties() const { return properties_; }
  void SetProperties(CProperties* properties);

 private:
  CMediaProperties* media_;
  int sourceTrack_;
  int targetTrack_;
  CString* label_;
  CProperties* properties_;
};

}  // namespace Corvane::Mox::WFL
