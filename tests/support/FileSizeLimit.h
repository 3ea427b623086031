#pragma once
// Limits the size of the files this process writes for one scope, so that a save fails halfway
// as it does on a full disk. The signal such a write raises is ignored meanwhile: the write then
// fails with EFBIG instead of ending the process.

#include <sys/resource.h>

#include <csignal>

namespace norva::testing {

class TFileSizeLimit {
 public:
  explicit TFileSizeLimit(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &mPrevious);
    mPreviousHandler = std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit limited = mPrevious;
    limited.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limited);
  }
  ~TFileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &mPrevious);
    std::signal(SIGXFSZ, mPreviousHandler);
  }
  TFileSizeLimit(const TFileSizeLimit&) = delete;
  TFileSizeLimit& operator=(const TFileSizeLimit&) = delete;

 private:
  struct rlimit mPrevious {};
  void (*mPreviousHandler)(int) = nullptr;
};

}  // namespace norva::testing
