#include "ProgressReporter.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>

#include <Mox.h>

#include "System/Text.h"
#include "wfl/ConnectionPoint.h"
#include "wfl/TopologyNode.h"
#include "wfl/Workflow.h"
#include "wfl/WorkflowNode.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

namespace MoxTool {

namespace {

double WallSeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

bool Known(double value) { return std::isfinite(value) && value < CConnectionPoint::Unknown; }

int TerminalWidth(std::FILE* out) {
  winsize size{};
  if (ioctl(fileno(out), TIOCGWINSZ, &size) == 0 && size.ws_col > 20) return size.ws_col;
  return 80;
}

}  // namespace

std::string FormatClock(double seconds) {
  if (!Known(seconds) || seconds < 0) return "--:--:--.-";
  const long long tenths = std::llround(seconds * 10);
  char text[32];
  std::snprintf(text, sizeof text, "%02lld:%02lld:%02lld.%lld", tenths / 36000, tenths / 600 % 60, tenths / 10 % 60,
                tenths % 10);
  return text;
}

std::string FormatProgressBar(const ProgressSnapshot& s, int width) {
  const double progress = std::clamp(Known(s.progress) ? s.progress : 0.0, 0.0, 1.0);
  const double speed = s.elapsed > 0 ? s.time / s.elapsed : 0;
  const double left = speed > 0 && Known(s.duration) ? (s.duration - s.time) / speed : -1;
  char tail[128];
  std::snprintf(tail, sizeof tail, " %5.1f%%  %s / %s  %.2fx  left %s", progress * 100, FormatClock(s.time).c_str(),
                FormatClock(s.duration).c_str(), speed, FormatClock(left).c_str());
  const int barWidth = std::max(10, width - static_cast<int>(std::string(tail).size()) - 2);
  const int filled = static_cast<int>(progress * barWidth);
  std::string line = "[" + std::string(filled, '#') + std::string(barWidth - filled, '.') + "]" + tail;
  if (static_cast<int>(line.size()) > width) line.resize(width);
  return line;
}

std::string FormatProgressJson(const ProgressSnapshot& s) {
  char text[192];
  std::snprintf(text, sizeof text, "{\"progress\": %.4f, \"time\": %.3f, \"duration\": %.3f, \"heartbeat\": %.3f}",
                Known(s.progress) ? s.progress : 0.0, Known(s.time) ? s.time : 0.0,
                Known(s.duration) ? s.duration : 0.0, Known(s.heartbeat) ? s.heartbeat : 0.0);
  return text;
}

ProgressReporter::ProgressReporter(ProgressMode mode, std::FILE* out, double stallSeconds)
    : mode_(mode), out_(out), stallSeconds_(stallSeconds), start_(WallSeconds()) {}

ProgressSnapshot ProgressReporter::Measure(const CWorkflow& workflow) const {
  ProgressSnapshot s;
  s.progress = workflow.GetProgress();
  s.time = workflow.GetTime();
  s.duration = workflow.GetDuration();
  s.elapsed = WallSeconds() - start_;
  // The workflow's own heartbeat is the smallest over its nodes, which the
  // writers pin at 0; a stall shows in the largest of readers and filters.
  for (int i = 0; i < workflow.GetNodeCount(); ++i) {
    const CWorkflowNode* node = workflow.GetNode(i);
    if (node->GetTopologyNode()->GetNodeType() == CTopologyNode::WriterNode) continue;
    if (!node->IsEndOfStream()) s.heartbeat = std::max(s.heartbeat, static_cast<double>(node->GetHeartbeat()));
  }
  return s;
}

void ProgressReporter::WarnIfStalled(const CWorkflow& workflow) {
  if (warned_ || stallSeconds_ <= 0) return;
  for (int i = 0; i < workflow.GetNodeCount(); ++i) {
    const CWorkflowNode* node = workflow.GetNode(i);
    const unsigned int type = node->GetTopologyNode()->GetNodeType();
    if (type != CTopologyNode::ReaderNode && type != CTopologyNode::FilterNode) continue;
    const double heartbeat = node->GetHeartbeat();
    if (node->IsEndOfStream() || heartbeat <= stallSeconds_) continue;
    if (drawn_) std::fputc('\n', out_);
    CString* label = node->GetLabel();
    std::fprintf(out_, "mox: warning: '%s' has delivered nothing for %.1f s\n", label ? label->GetChars() : "?",
                 heartbeat);
    std::fflush(out_);
    warned_ = true;
    drawn_ = false;
    return;
  }
}

void ProgressReporter::Update(const CWorkflow& workflow) {
  WarnIfStalled(workflow);
  const ProgressSnapshot s = Measure(workflow);
  if (mode_ == ProgressMode::Bar) {
    std::fprintf(out_, "\r%s", FormatProgressBar(s, TerminalWidth(out_) - 1).c_str());
    std::fflush(out_);
    drawn_ = true;
  } else if (mode_ == ProgressMode::Json && (lastJson_ < 0 || s.elapsed - lastJson_ >= 1.0)) {
    std::fprintf(out_, "%s\n", FormatProgressJson(s).c_str());
    std::fflush(out_);
    lastJson_ = s.elapsed;
  }
}

void ProgressReporter::Finish(const CWorkflow& workflow) {
  const ProgressSnapshot s = Measure(workflow);
  if (mode_ == ProgressMode::Bar) {
    std::fprintf(out_, "\r%s\n", FormatProgressBar(s, TerminalWidth(out_) - 1).c_str());
  } else if (mode_ == ProgressMode::Json) {
    std::fprintf(out_, "%s\n", FormatProgressJson(s).c_str());
  }
  std::fflush(out_);
}

}  // namespace MoxTool
