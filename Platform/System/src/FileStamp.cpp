#include <System/FileStamp.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <string_view>
#include <type_traits>

#include <fcntl.h>
#include <sys/stat.h>

namespace platform {
namespace {

/// File systems stamp changes by a clock that ticks every few milliseconds, some in whole seconds.
constexpr std::int64_t clockTick = 2'000'000'000;

std::int64_t nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

std::int64_t systemNanoseconds() {
    using namespace std::chrono;
    return duration_cast<std::chrono::nanoseconds>(system_clock::now().time_since_epoch()).count();
}

}  // namespace

FileStamp FileStamp::of(const std::filesystem::path& file) {
    return of(file.c_str(), AT_FDCWD);
}

FileStamp FileStamp::of(const char* file, int folder) {
    struct stat status{};
    if (fstatat(folder, file, &status, 0) != 0) return {};
    return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim),
            nanoseconds(status.st_ctim)};
}

bool FileStamp::isFresh() const {
    return systemNanoseconds() - std::max(modifiedNanoseconds, changedNanoseconds) < clockTick;
}

std::optional<std::uint64_t> FileStamp::number() const {
    static_assert(std::has_unique_object_representations_v<FileStamp>);
    if (isFresh()) return std::nullopt;
    return std::hash<std::string_view>{}({reinterpret_cast<const char*>(this), sizeof *this});
}

}  // namespace platform
