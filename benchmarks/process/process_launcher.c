// Runs one program from exec to exit and prints what it took. A process of its own, because the
// kernel counts the memory of the spawning process into the peak of the spawned one.
//
// process_launcher TIMEOUT_SECONDS STDIN STDOUT STDERR DEVICE_ID [NAME=VALUE...] -- PROGRAM ARGV0
// [ARGUMENT...]
//
// With a device ID that is not empty the program has a side channel, at whose other end a process
// answers every request at once. Prints "ok PID WAIT_STATUS WALL_NS CPU_US PEAK_KIB
// LAUNCHER_PEAK_KIB REQUESTS" or "error WHAT ERRNO".

#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

extern char** environ;

enum { kDeviceID = 5, kFirstSetting = 6, kResultDescriptor = 3, kSideChannel = 4 };

static volatile pid_t child;

static void killChild(int number) {
  (void)number;
  if (child > 0) kill(child, SIGKILL);
}

static int fail(const char* what, int error) {
  dprintf(kResultDescriptor, "error %s %d\n", what, error);
  return 1;
}

static int redirect(const char* path, int flags, int descriptor) {
  const int opened = open(path, flags, 0600);
  if (opened < 0) return -1;
  if (opened == descriptor) return 0;
  const int result = dup2(opened, descriptor);
  close(opened);
  return result;
}

static long long microseconds(struct timeval value) {
  return (long long)value.tv_sec * 1000000 + value.tv_usec;
}

// Not ru_maxrss: that holds the memory of whoever started this process as well.
static long peakKib(void) {
  char buffer[2048];
  const int file = open("/proc/self/status", O_RDONLY | O_CLOEXEC);
  const ssize_t length = file < 0 ? -1 : read(file, buffer, sizeof buffer - 1);
  if (file >= 0) close(file);
  if (length <= 0) return 0;
  buffer[length] = 0;
  const char* found = strstr(buffer, "VmHWM:");
  return found == NULL ? 0 : strtol(found + strlen("VmHWM:"), NULL, 10);
}

// Serves the side channel, as a backend does, until the program is gone; the number of requests.
static int serve(int channel, const char* device) {
  enum { kHeader = 4, kOK = 1, kMost = 250 };
  char message[kHeader + 65535];
  int requests = 0;
  const size_t length = strlen(device) < 65535 ? strlen(device) : 65535;
  while (recv(channel, message, sizeof message, 0) > 0) {
    if (requests < kMost) ++requests;
    // The command stays as it was asked.
    message[1] = kOK;
    message[2] = (char)(length >> 8);
    message[3] = (char)(length & 0xFF);
    memcpy(message + kHeader, device, length);
    if (send(channel, message, kHeader + length, MSG_NOSIGNAL) < 0) break;
  }
  return requests;
}

// Puts the program's end of a side channel into its place and returns the process that serves the
// other one; -1 without success.
static pid_t startBackend(const char* device) {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0) return -1;
  // The first of the two descriptors is the lowest that is free.
  if (ends[0] != kSideChannel) return -1;
  const pid_t backend = fork();
  if (backend == 0) {
    close(kSideChannel);
    close(kResultDescriptor);
    _exit(serve(ends[1], device));
  }
  close(ends[1]);
  return backend;
}

int main(int argc, char** argv) {
  int program = kFirstSetting;
  while (program < argc && strcmp(argv[program], "--") != 0) ++program;
  if (++program + 1 >= argc) return 2;
  if (dup3(STDOUT_FILENO, kResultDescriptor, O_CLOEXEC) < 0) return 2;
  // An open descriptor 4 would be taken for the side channel of a backend.
  close_range(kResultDescriptor + 1, ~0U, 0);
  if (redirect(argv[2], O_RDONLY, STDIN_FILENO) < 0) return fail("stdin", errno);
  if (redirect(argv[3], O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO) < 0) {
    return fail("stdout", errno);
  }
  if (redirect(argv[4], O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO) < 0) {
    return fail("stderr", errno);
  }
  for (int i = kFirstSetting; i < program - 1; ++i) putenv(argv[i]);
  signal(SIGALRM, killChild);
  signal(SIGPIPE, SIG_DFL);
  alarm((unsigned)atoi(argv[1]));

  pid_t backend = 0;
  if (argv[kDeviceID][0] != '\0') {
    backend = startBackend(argv[kDeviceID]);
    if (backend < 0) return fail("side channel", errno);
  }
  const long ownPeak = peakKib();
  struct timespec start;
  struct timespec end;
  pid_t spawned = 0;
  clock_gettime(CLOCK_MONOTONIC, &start);
  const int error = posix_spawn(&spawned, argv[program], NULL, NULL, argv + program + 1, environ);
  if (error != 0) return fail("exec", error);
  child = spawned;
  int status = 0;
  struct rusage usage;
  pid_t ended;
  do {
    ended = wait4(spawned, &status, 0, &usage);
  } while (ended < 0 && errno == EINTR);
  clock_gettime(CLOCK_MONOTONIC, &end);
  if (ended < 0) return fail("wait", errno);
  int requests = 0;
  if (backend > 0) {
    close(kSideChannel);
    int backendStatus = 0;
    while (waitpid(backend, &backendStatus, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(backendStatus)) requests = WEXITSTATUS(backendStatus);
  }

  const long long wall =
      (long long)(end.tv_sec - start.tv_sec) * 1000000000 + (end.tv_nsec - start.tv_nsec);
  dprintf(kResultDescriptor, "ok %d %d %lld %lld %ld %ld %d\n", (int)spawned, status, wall,
          microseconds(usage.ru_utime) + microseconds(usage.ru_stime), usage.ru_maxrss, ownPeak,
          requests);
  return 0;
}
