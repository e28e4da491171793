#include "ToolRunner.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace {

// Reads both pipes until they close, so a child that fills one cannot block.
void Drain(int outFd, int errFd, ToolRun& run) {
  pollfd fds[2] = {{outFd, POLLIN, 0}, {errFd, POLLIN, 0}};
  std::string* sinks[2] = {&run.out, &run.err};
  int open = 2;
  while (open > 0) {
    if (poll(fds, 2, -1) < 0) {
      if (errno == EINTR) continue;
      break;
    }
    for (int i = 0; i < 2; ++i) {
      if (fds[i].fd < 0 || !(fds[i].revents & (POLLIN | POLLHUP))) continue;
      char buffer[4096];
      const ssize_t n = read(fds[i].fd, buffer, sizeof buffer);
      if (n > 0) {
        sinks[i]->append(buffer, static_cast<size_t>(n));
      } else {
        close(fds[i].fd);
        fds[i].fd = -1;
        --open;
      }
    }
  }
}

}  // namespace

ToolRun RunMox(const std::vector<std::string>& arguments) {
  ToolRun run;
  int out[2], err[2];
  if (pipe(out) != 0 || pipe(err) != 0) return run;
  const pid_t pid = fork();
  if (pid == 0) {
    const int devnull = open("/dev/null", O_RDONLY);
    dup2(devnull, 0);
    dup2(out[1], 1);
    dup2(err[1], 2);
    close(out[0]);
    close(err[0]);
    std::vector<char*> argv;
    static char tool[] = MOX_TOOL_PATH;
    argv.push_back(tool);
    for (const std::string& a : arguments) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    execv(tool, argv.data());
    _exit(127);
  }
  close(out[1]);
  close(err[1]);
  Drain(out[0], err[0], run);
  int status = 0;
  waitpid(pid, &status, 0);
  run.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return run;
}
