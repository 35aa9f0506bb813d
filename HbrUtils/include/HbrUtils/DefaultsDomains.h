#pragma once

#include <System/DefaultsDomain.h>
#include <System/Environment.h>

#include <string_view>

namespace hbr {

/// The two settings domains that all programs of one installation share.
struct DefaultsDomains {
    static constexpr std::string_view standardName = "com.quietlark.hbr";
    static constexpr std::string_view sharedName = "group.com.quietlark.hbr";

    platform::DefaultsDomainRef standard;
    platform::DefaultsDomainRef shared;

    /// NAME.plist each, in the environment's configuration directory.
    static DefaultsDomains of(const platform::Environment& environment);
    const platform::DefaultsDomainRef& domain(bool isShared) const { return isShared ? shared : standard; }
};

}  // namespace hbr
