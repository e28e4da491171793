#pragma once
// How mox shows a running workflow: a bar on a terminal that redraws in
// place (percent, media time of duration, speed as a multiple of real time,
// time left), one JSON line per second for hosts, or nothing. It also warns
// once when a reader or filter has delivered nothing for a long time.

#include <cstdio>
#include <string>

namespace Corvane::Mox::WFL {
class CWorkflow;
}

namespace MoxTool {

enum class ProgressMode { None, Bar, Json };

struct ProgressSnapshot {
  double progress = 0;   // 0..1
  double time = 0;       // media seconds done
  double duration = 0;   // media seconds in all
  double elapsed = 0;    // wall seconds since the start
  double heartbeat = 0;  // seconds since the stalest reader or filter delivered
};

// "HH:MM:SS.s" (hours grow beyond two digits when needed).
std::string FormatClock(double seconds);
// One bar line, without carriage return or line feed, at most `width` columns.
std::string FormatProgressBar(const ProgressSnapshot& snapshot, int width);
// One JSON object, without line feed.
std::string FormatProgressJson(const ProgressSnapshot& snapshot);

class ProgressReporter {
 public:
  // Reports to `out` (standard error in mox); `stallSeconds` is the
  // heartbeat beyond which a stalled node is named once.
  ProgressReporter(ProgressMode mode, std::FILE* out, double stallSeconds = 10.0);

  // Called about ten times a second while the workflow runs.
  void Update(const Corvane::Mox::WFL::CWorkflow& workflow);
  // The last report: the bar's final state and its line feed.
  void Finish(const Corvane::Mox::WFL::CWorkflow& workflow);

 private:
  ProgressSnapshot Measure(const Corvane::Mox::WFL::CWorkflow& workflow) const;
  void WarnIfStalled(const Corvane::Mox::WFL::CWorkflow& workflow);

  ProgressMode mode_;
  std::FILE* out_;
  double stallSeconds_;
  double start_;
  double lastJson_ = -1;
  bool warned_ = false;
  bool drawn_ = false;
};

}  // namespace MoxTool
