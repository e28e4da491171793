#pragma once
// Files on disk for container tests: a private temporary directory per test
// program, Y4M bytes built from header text and frame sizes, and ffmpeg /
// ffprobe runs for the interoperability checks.

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace ContainerTest {

inline std::string TempDirectory() {
  static const std::string directory = [] {
    std::filesystem::path path = std::filesystem::temp_directory_path() / ("mox-container-" + std::to_string(getpid()));
    std::filesystem::create_directories(path);
    return path.string();
  }();
  return directory;
}

inline std::string TempPath(const std::string& name) { return TempDirectory() + "/" + name; }

inline void WriteFile(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// A Y4M stream: the header line, then `frames` frames of `frameSize` bytes
// whose bytes count up from the frame number.
inline std::string Y4m(const std::string& header, int frames, int frameSize) {
  std::string bytes = header + "\n";
  for (int f = 0; f < frames; ++f) {
    bytes += "FRAME\n";
    for (int i = 0; i < frameSize; ++i) bytes.push_back(static_cast<char>((f + i) & 0xFF));
  }
  return bytes;
}

// Runs a shell command; returns its standard output, or "" with ok false.
inline std::string Shell(const std::string& command, bool& ok) {
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  ok = pipe != nullptr;
  if (!pipe) return output;
  char buffer[4096];
  size_t read = 0;
  while ((read = fread(buffer, 1, sizeof(buffer), pipe)) > 0) output.append(buffer, read);
  const int status = pclose(pipe);
  ok = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  return output;
}

inline bool HaveTool(const char* tool) {
  bool ok = false;
  Shell(std::string("command -v ") + tool + " >/dev/null 2>&1", ok);
  return ok;
}

}  // namespace ContainerTest
