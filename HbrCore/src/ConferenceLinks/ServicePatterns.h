#pragma once

#include <TimeAndText/RegularExpression.h>
#include <TimeAndText/Url.h>

#include <atomic>
#include <string>
#include <string_view>

namespace hbr {

/// The compiled pattern of a service. Every search is bounded; a pattern from the services file that exceeds
/// the bound several times is switched off for as long as the process runs. Any thread.
class ServicePattern {
  public:
    /// Throws platform::RegularExpression::Error.
    explicit ServicePattern(const std::string& regex);

    enum class Outcome {
        match,
        noMatch,
        /// Stops matching for good; reported once.
        switchedOff
    };
    /// `text` as textForServicePatterns makes it.
    Outcome search(std::string_view text) const;

  private:
    platform::RegularExpression expression_;
    bool mayBeSwitchedOff_;
    mutable std::atomic<int> givenUp_ = 0;
};

/// Made once per process; nullptr when it does not compile, which is logged once. The pointer stays valid.
/// Any thread.
const ServicePattern* compiledServicePattern(const std::string& regex);

/// The text that patterns of services are searched in: lower case, of the safe-link target if there is one.
std::string textForServicePatterns(const platform::Url& url);

}  // namespace hbr
