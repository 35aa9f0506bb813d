#pragma once

#include <functional>
#include <memory>

namespace platform {

/// Calls `requested` on the main queue when the process is asked to end (SIGTERM, SIGINT, SIGHUP), in place
/// of ending it. Made and destroyed on the main thread.
class TerminationRequest {
  public:
    explicit TerminationRequest(std::function<void()> requested);
    ~TerminationRequest();
    TerminationRequest(const TerminationRequest&) = delete;
    TerminationRequest& operator=(const TerminationRequest&) = delete;

  private:
    struct Sources;
    std::unique_ptr<Sources> sources_;
};

}  // namespace platform
