// mox run with jobs that read and write real media: a Y4M copy checked
// frame by frame by ffmpeg, and the progress shown on a pipe (JSON lines)
// and on a terminal (a bar redrawn in place).
#include <gtest/gtest.h>

#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "ToolRunner.h"

namespace {

class JobDirectory {
 public:
  JobDirectory() {
    char pattern[] = "/tmp/mox-job-XXXXXX";
    path_ = mkdtemp(pattern) ? pattern : "/tmp";
  }
  ~JobDirectory() { std::system(("rm -rf '" + path_ + "'").c_str()); }
  std::string File(const char* name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// What a shell command prints on standard output.
std::string Capture(const std::string& command) {
  std::string text;
  if (FILE* pipe = popen(command.c_str(), "r")) {
    char buffer[4096];
    for (size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) text.append(buffer, n);
    pclose(pipe);
  }
  return text;
}

// The frame checksums of a file as ffmpeg decodes it, without the header lines.
std::string FrameChecksums(const std::string& path) {
  std::stringstream all(Capture("ffmpeg -v error -i '" + path + "' -f framemd5 - 2>/dev/null"));
  std::string line, frames;
  while (std::getline(all, line))
    if (!line.empty() && line[0] != '#') frames += line + "\n";
  return frames;
}

// A 1080p Y4M whose pictures are holes in a sparse file: big input at no
// cost in disk or generation time.
bool WriteSparseY4m(const std::string& path, int frames) {
  const std::string header = "YUV4MPEG2 W1920 H1080 F25:1 Ip A1:1 C420jpeg\n";
  const long long frame = 1920LL * 1080 * 3 / 2;
  FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) return false;
  std::fwrite(header.data(), 1, header.size(), file);
  for (int f = 0; f < frames; ++f) {
    std::fwrite("FRAME\n", 1, 6, file);
    std::fseek(file, f + 1 < frames ? frame : frame - 1, SEEK_CUR);
  }
  std::fputc(0, file);  // the last picture's last byte makes the file whole
  return std::fclose(file) == 0;
}

class MoxRunJob : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::system("command -v ffmpeg >/dev/null 2>&1") != 0) GTEST_SKIP() << "ffmpeg is not installed";
    input_ = dir_.File("in.y4m");
    const std::string make = "ffmpeg -v error -f lavfi -i testsrc=size=96x64:rate=25 -frames:v 30 -pix_fmt yuv422p -y '" +
                             input_ + "'";
    ASSERT_EQ(std::system(make.c_str()), 0);
    script_ = dir_.File("copy.wfl");
    std::ofstream(script_) << "var r = new ContainerReader(input);\n"
                              "var w = new ContainerWriter(output);\n"
                              "r.tracks.video['0'] -> w;\n";
  }
  std::vector<std::string> CopyArguments(const std::string& output) const {
    return {"run", script_, "-D", "input='" + input_ + "'", "-D", "output='" + output + "'"};
  }

  JobDirectory dir_;
  std::string input_;
  std::string script_;
};

TEST_F(MoxRunJob, Y4mCopyHasTheSourcesFramesAndReportsJsonProgressOnAPipe) {
  const std::string output = dir_.File("out.y4m");
  std::vector<std::string> arguments = CopyArguments(output);
  arguments.push_back("--progress=json");
  const ToolRun run = RunMox(arguments);
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_EQ(run.out, "");
  const std::string source = FrameChecksums(input_);
  ASSERT_FALSE(source.empty());
  EXPECT_EQ(FrameChecksums(output), source);
  // One object a line; the last one is the finished job: 30 frames at 25 fps.
  ASSERT_FALSE(run.err.empty());
  EXPECT_EQ(run.err.back(), '\n');
  const std::string last = run.err.substr(run.err.rfind('\n', run.err.size() - 2) + 1);
  EXPECT_EQ(last, "{\"progress\": 1.0000, \"time\": 1.200, \"duration\": 1.200, \"heartbeat\": 0.000}\n") << run.err;
  EXPECT_EQ(run.err.find('\r'), std::string::npos);
}

TEST_F(MoxRunJob, NoProgressOnAPipeUnlessAskedAndQuietWins) {
  const ToolRun plain = RunMox(CopyArguments(dir_.File("plain.y4m")));
  ASSERT_EQ(plain.exitStatus, 0) << plain.err;
  EXPECT_EQ(plain.err, "");
  std::vector<std::string> quiet = CopyArguments(dir_.File("quiet.y4m"));
  quiet.push_back("--progress=bar");
  quiet.push_back("-q");
  const ToolRun run = RunMox(quiet);
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_EQ(run.err, "");
  const ToolRun bad = RunMox({"run", script_, "--progress=loud"});
  EXPECT_EQ(bad.exitStatus, 2);
  EXPECT_NE(bad.err.find("unknown progress mode 'loud'"), std::string::npos) << bad.err;
}

TEST_F(MoxRunJob, OnATerminalTheBarRedrawsInPlaceAndEndsTheLine) {
  const std::vector<std::string> arguments = CopyArguments(dir_.File("tty.y4m"));
  std::vector<char*> argv;
  std::string tool = MOX_TOOL_PATH;
  argv.push_back(tool.data());
  std::vector<std::string> copies(arguments);
  for (std::string& argument : copies) argv.push_back(argument.data());
  argv.push_back(nullptr);
  int terminal = -1;
  winsize size{};
  size.ws_col = 100;
  size.ws_row = 24;
  const pid_t pid = forkpty(&terminal, nullptr, nullptr, &size);
  if (pid < 0) GTEST_SKIP() << "no pseudo-terminal here: " << std::strerror(errno);
  if (pid == 0) {
    execv(tool.c_str(), argv.data());
    _exit(127);
  }
  // Read what the terminal shows until the tool closes it (EIO), with a
  // deadline so that a hung job fails the test instead of stalling the suite.
  std::string screen;
  char buffer[1024];
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(120);
  bool closed = false;
  while (!closed && std::chrono::steady_clock::now() < deadline) {
    pollfd watch{terminal, POLLIN, 0};
    if (poll(&watch, 1, 100) <= 0) continue;
    const ssize_t n = read(terminal, buffer, sizeof buffer);
    if (n > 0)
      screen.append(buffer, static_cast<size_t>(n));
    else if (n == 0 || errno != EINTR)
      closed = true;
  }
  if (!closed) kill(pid, SIGKILL);
  close(terminal);
  EXPECT_TRUE(closed) << "the job did not end: " << screen;
  int status = 0;
  waitpid(pid, &status, 0);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0) << screen;
  // The final state: a full bar, 100 percent, 1.2 s of 1.2 s, then a line feed.
  EXPECT_NE(screen.find("\r[#"), std::string::npos) << screen;
  EXPECT_NE(screen.find("100.0%  00:00:01.2 / 00:00:01.2"), std::string::npos) << screen;
  // Every drawing of the bar, an early empty one included, starts at the line's beginning.
  for (size_t at = screen.find('['); at != std::string::npos; at = screen.find('[', at + 1))
    EXPECT_TRUE(at > 0 && screen[at - 1] == '\r') << "a bar not drawn over the line at " << at << ": " << screen;
  const size_t lastBar = screen.rfind('\r', screen.size() - 3);
  ASSERT_NE(lastBar, std::string::npos);
  EXPECT_LE(screen.size() - lastBar, 101u + 2u) << "the bar fits the terminal's 100 columns";
  EXPECT_EQ(screen.substr(screen.size() - 2), "\r\n") << "the terminal ends the line after the bar";
}

TEST_F(MoxRunJob, ConvertWritesTheScriptItRunsAndTheWriterComesFromTheExtension) {
  const std::string y4m = dir_.File("copy.y4m");
  const ToolRun copy = RunMox({"convert", input_, y4m, "--print-script"});
  ASSERT_EQ(copy.exitStatus, 0) << copy.err;
  EXPECT_EQ(copy.out.rfind("// mox convert " + input_ + " " + y4m + "\n", 0), 0u) << copy.out;
  EXPECT_NE(copy.out.find("reader.tracks.video[t] -> writer;"), std::string::npos) << copy.out;
  EXPECT_EQ(FrameChecksums(y4m), FrameChecksums(input_));

  // ".raw" is the elementary video writer: the pictures back to back, as ffmpeg's rawvideo.
  const std::string raw = dir_.File("copy.raw");
  const ToolRun elementary = RunMox({"convert", input_, raw});
  ASSERT_EQ(elementary.exitStatus, 0) << elementary.err;
  EXPECT_EQ(elementary.out, "") << "the script is printed only when asked";
  const std::string expected = Capture("ffmpeg -v error -i '" + input_ + "' -f rawvideo - | md5sum");
  EXPECT_EQ(Capture("md5sum < '" + raw + "'"), expected);
}

// mox convert checks what it is asked for before it runs anything: a format
// must exist and be one the converter makes (an alias stands for its format),
// OUTPUT must name a container, INPUT must be there.
TEST_F(MoxRunJob, ConvertChecksFormatsAndFilesBeforeRunning) {
  const std::string raw = dir_.File("alias.raw");
  const ToolRun alias = RunMox({"convert", input_, raw, "--video-format", "2vuy", "--print-script"});
  ASSERT_EQ(alias.exitStatus, 0) << alias.err;
  EXPECT_NE(alias.out.find("converter.OutputFormat = 'UYVY';"), std::string::npos) << alias.out;
  const std::string expected = Capture("ffmpeg -v error -i '" + input_ + "' -pix_fmt uyvy422 -f rawvideo - | md5sum");
  EXPECT_EQ(Capture("md5sum < '" + raw + "'"), expected);

  struct Refusal {
    std::vector<std::string> arguments;
    int exitStatus;
    std::string message;
  };
  const std::string output = dir_.File("never.y4m");
  const std::vector<Refusal> refusals = {
      {{"convert", input_, output, "--video-format", "ZZZZ"}, 2,
       "mox: convert: 'ZZZZ' is not a video format (see 'mox formats video')\n"},
      {{"convert", input_, output, "--audio-format", "UYVY"}, 2,
       "mox: convert: 'UYVY' is not an audio format (see 'mox formats audio')\n"},
      {{"convert", input_, output, "--video-format", "avc1"}, 2,
       "mox: convert: the video format converter cannot produce 'avc1' (see 'mox inspect vfc')\n"},
      {{"convert", input_, dir_.File("out.xyz")}, 2,
       "mox: convert: no container writer makes '.xyz' files (see 'mox catalog')\n"},
      {{"convert", input_, dir_.File("out")}, 2,
       "mox: convert: OUTPUT needs an extension that names its container, such as .y4m, .wav or .raw\n"},
      {{"convert", dir_.File("missing.y4m"), output}, 1,
       "mox: convert: cannot read '" + dir_.File("missing.y4m") + "': No such file or directory\n"},
  };
  for (const Refusal& refusal : refusals) {
    const ToolRun run = RunMox(refusal.arguments);
    EXPECT_EQ(run.exitStatus, refusal.exitStatus) << refusal.message;
    EXPECT_EQ(run.err, refusal.message);
    EXPECT_EQ(run.out, "");
  }
  EXPECT_FALSE(std::ifstream(output).good()) << "a refused job writes nothing";
}

TEST_F(MoxRunJob, ConvertFailuresAreOneLineWithTheirStatus) {
  // A job that starts and fails says why in one line and exits 1.
  const ToolRun wrongKind = RunMox({"convert", input_, dir_.File("picture.wav")});
  EXPECT_EQ(wrongKind.exitStatus, 1);
  EXPECT_EQ(wrongKind.err, "Not supported: video media is not supported\n");
  const ToolRun oneFile = RunMox({"convert", input_});
  EXPECT_EQ(oneFile.exitStatus, 2);
  EXPECT_EQ(oneFile.err, "mox: convert: give INPUT and OUTPUT (see 'mox convert --help')\n");
  const ToolRun badSet = RunMox({"convert", input_, dir_.File("x.y4m"), "--set", "=1"});
  EXPECT_EQ(badSet.exitStatus, 2);
  const ToolRun help = RunMox({"convert", "--help"});
  EXPECT_EQ(help.exitStatus, 0);
  EXPECT_EQ(help.out.rfind("usage: mox convert INPUT OUTPUT", 0), 0u);
}

}  // namespace

// The warning itself is driven by a held filter in StallWarningTest; here the
// command line: 0 switches it off and a negative limit is a usage error.
TEST_F(MoxRunJob, StallWarningZeroSilencesItAndANegativeLimitIsAUsageError) {
  std::vector<std::string> silent = CopyArguments(dir_.File("silent.y4m"));
  silent.insert(silent.end(), {"--stall-warning", "0"});
  const ToolRun quiet = RunMox(silent);
  ASSERT_EQ(quiet.exitStatus, 0) << quiet.err;
  EXPECT_EQ(quiet.err, "");

  const ToolRun negative = RunMox({"run", script_, "--stall-warning", "-1"});
  EXPECT_EQ(negative.exitStatus, 2);
  EXPECT_NE(negative.err.find("--stall-warning"), std::string::npos) << negative.err;
}

// Ctrl-C stops a long copy: mox ends the output cleanly (whole frames, a
// readable file) and exits with 130.
TEST_F(MoxRunJob, InterruptStopsTheJobWithStatus130AndAReadableOutput) {
  // 1080p pictures written as holes: 2 GB of input that costs no disk.
  const std::string big = dir_.File("big.y4m");
  ASSERT_TRUE(WriteSparseY4m(big, 650));
  const std::string output = dir_.File("partial.y4m");
  std::vector<std::string> arguments = {"run", script_, "-D", "input='" + big + "'", "-D", "output='" + output + "'"};
  std::vector<char*> argv;
  std::string tool = MOX_TOOL_PATH;
  argv.push_back(tool.data());
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  const pid_t pid = fork();
  ASSERT_GE(pid, 0);
  if (pid == 0) {
    execv(tool.c_str(), argv.data());
    _exit(127);
  }
  // Interrupt once some pictures are out, long before the copy could end.
  for (int i = 0; i < 2000 && (!std::ifstream(output) || std::ifstream(output, std::ios::ate).tellg() < (1 << 24)); ++i)
    usleep(10000);
  kill(pid, SIGINT);
  int status = 0;
  waitpid(pid, &status, 0);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 130);
  const std::string frames = Capture("ffprobe -v error -count_frames -select_streams v:0 -show_entries "
                                     "stream=nb_read_frames -of csv=p=0 '" + output + "'");
  const int written = std::atoi(frames.c_str());
  EXPECT_GT(written, 0) << frames;
  EXPECT_LT(written, 650) << "stopped early";
  std::remove(output.c_str());
  std::remove(big.c_str());
}
