#pragma once

#include "ServicePatterns.h"

#include <HbrCore/ConferenceLinks/VideoConferenceService.h>

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// Which of many services takes a link: the first whose pattern matches. One look over the text for what the
/// patterns cannot do without spares searching most of them. Immutable after construction, any thread.
class ServiceChoice {
  public:
    /// Called with the index of a service whose pattern was just switched off for taking too long.
    using SwitchedOff = std::function<void(std::size_t)>;

    explicit ServiceChoice(const std::vector<VideoConferenceService>& services, SwitchedOff switchedOff);

    /// Index of the service; `text` as textForServicePatterns makes it.
    std::optional<std::size_t> firstMatch(std::string_view text) const;

  private:
    static constexpr std::size_t hintSize = 4;

    /// Four bytes of a necessary text, by which its services are found.
    struct Hint {
        std::uint32_t bytes = 0;
        std::size_t service = 0;
    };

    /// In ascending order.
    std::vector<std::size_t> candidates(std::string_view text) const;

    /// nullptr where the pattern does not compile.
    std::vector<const ServicePattern*> patterns_;
    /// Services that have to be tried on every text.
    std::vector<std::size_t> always_;
    /// Sorted by bytes.
    std::vector<Hint> hints_;
    std::bitset<1U << 12U> mayBeHint_;
    SwitchedOff switchedOff_;
};

}  // namespace hbr
