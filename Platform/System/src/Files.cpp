#include "AtomicWrite.h"
#include "FileDescriptor.h"

#include <System/Files.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace platform {
namespace fs = std::filesystem;
namespace {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

/// SEEK_HOLE also reports the end of a file, which is not a hole here.
bool hasHole(int descriptor, off_t size) {
    const off_t hole = lseek(descriptor, 0, SEEK_HOLE);
    return lseek(descriptor, 0, SEEK_SET) == 0 && hole >= 0 && hole < size;
}

/// What lies between the holes of a file.
std::optional<std::string> writtenParts(int descriptor, off_t size, std::error_code& error) {
    std::string content;
    for (off_t end = 0; end < size;) {
        const off_t begin = lseek(descriptor, end, SEEK_DATA);
        // No more data.
        if (begin < 0 && errno == ENXIO) break;
        end = begin < 0 ? -1 : std::min(lseek(descriptor, begin, SEEK_HOLE), size);
        if (end <= begin) {
            error = lastError();
            return std::nullopt;
        }
        auto at = content.size();
        content.resize(at + static_cast<std::size_t>(end - begin));
        for (off_t from = begin; from < end;) {
            const ssize_t count =
                pread(descriptor, content.data() + at, static_cast<std::size_t>(end - from), from);
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) {
                error = lastError();
                return std::nullopt;
            }
            // Cut off by another process meanwhile.
            if (count == 0) {
                content.resize(at);
                return content;
            }
            at += static_cast<std::size_t>(count);
            from += count;
        }
    }
    return content;
}

bool writeAll(int descriptor, std::string_view content) {
    while (!content.empty()) {
        ssize_t written = ::write(descriptor, content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// A rename is lasting only when its folder is synced.
bool syncDirectory(const fs::path& directory) {
    FileDescriptor folder(
        open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some file systems cannot sync folders; they keep the order of renames by themselves.
    return folder && (fsync(folder.number()) == 0 || errno == EINVAL);
}

bool fill(FileDescriptor& descriptor, const fs::path& temporary, const fs::path& file,
          std::string_view content, unsigned mode, std::error_code& error) {
    bool isWritten = fchmod(descriptor.number(), mode) == 0 && writeAll(descriptor.number(), content) &&
                     fsync(descriptor.number()) == 0 && rename(temporary.c_str(), file.c_str()) == 0;
    if (!isWritten) {
        error = lastError();
        unlink(temporary.c_str());
        return false;
    }
    if (!syncDirectory(file.parent_path())) {
        error = lastError();
        return false;
    }
    return true;
}

}  // namespace

std::optional<std::string> readRegularFile(const fs::path& file, std::error_code& error, std::uintmax_t limit,
                                           Holes holes) {
    error.clear();
    auto refuse = [&error](std::error_code reason) {
        error = reason;
        return std::nullopt;
    };
    // Asked before opening, as opening alone may act on a device; asked again after it, as the name may
    // mean another file by then.
    struct stat status{};
    auto isRegular = [&status] { return S_ISREG(status.st_mode); };
    auto notRegular = [&status] {
        return std::make_error_code(S_ISDIR(status.st_mode) ? std::errc::is_a_directory
                                                            : std::errc::operation_not_supported);
    };
    if (stat(file.c_str(), &status) != 0) return refuse(lastError());
    if (!isRegular()) return refuse(notRegular());
    FileDescriptor descriptor(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (!descriptor || fstat(descriptor.number(), &status) != 0) return refuse(lastError());
    if (!isRegular()) return refuse(notRegular());

    auto tooLarge = std::make_error_code(std::errc::file_too_large);
    auto expected = static_cast<std::uintmax_t>(status.st_size);
    if (expected > limit) return refuse(tooLarge);
    if (holes == Holes::skipped && hasHole(descriptor.number(), status.st_size))
        return writtenParts(descriptor.number(), status.st_size, error);
    std::string content;
    // One byte more shows the end of the file without a second buffer.
    content.resize(expected + 1);
    std::size_t size = 0;
    while (true) {
        ssize_t count = ::read(descriptor.number(), content.data() + size, content.size() - size);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return refuse(lastError());
        if (count == 0) break;
        size += static_cast<std::size_t>(count);
        if (size > limit) return refuse(tooLarge);
        if (size == content.size()) content.resize(size * 2);
    }
    content.resize(size);
    return content;
}

fs::path linkTarget(const fs::path& file) {
    std::error_code error;
    if (!fs::is_symlink(file, error)) return file;
    fs::path target = fs::weakly_canonical(file, error);
    return error ? file : target;
}

bool writeThrough(const fs::path& temporary, const fs::path& file, std::string_view content, unsigned mode,
                  std::error_code& error) {
    error.clear();
    FileDescriptor descriptor(
        open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, mode));
    if (!descriptor) {
        error = lastError();
        return false;
    }
    return fill(descriptor, temporary, file, content, mode, error);
}

bool writeFileAtomically(const fs::path& file, std::string_view content, unsigned mode,
                         std::error_code& error) {
    error.clear();
    fs::path target = linkTarget(file);
    std::string temporary = (target.parent_path() / ("." + target.filename().string() + ".XXXXXX")).string();
    FileDescriptor descriptor(mkostemp(temporary.data(), O_CLOEXEC));
    if (!descriptor) {
        error = lastError();
        return false;
    }
    return fill(descriptor, temporary, target, content, mode, error);
}

bool createDirectories(const fs::path& directory, unsigned mode, std::error_code& error) {
    error.clear();
    if (directory.empty() || fs::is_directory(directory, error)) return true;
    error.clear();
    fs::path parent = directory.parent_path();
    if (parent != directory && !createDirectories(parent, mode, error)) return false;
    if (mkdir(directory.c_str(), mode) == 0) return true;
    error = lastError();
    std::error_code ignored;
    if (errno == EEXIST && fs::is_directory(directory, ignored)) error.clear();
    return !error;
}

std::optional<fs::path> setAside(const fs::path& file, std::error_code& error) {
    for (int number = 1;; ++number) {
        fs::path aside = file;
        aside += ".unreadable-" + std::to_string(number);
        error.clear();
        if (renameat2(AT_FDCWD, file.c_str(), AT_FDCWD, aside.c_str(), RENAME_NOREPLACE) == 0) return aside;
        // File systems without that flag: a link never replaces either.
        if (errno == EINVAL && link(file.c_str(), aside.c_str()) == 0) {
            if (unlink(file.c_str()) == 0) return aside;
        }
        if (errno == EEXIST) continue;
        error = lastError();
        return std::nullopt;
    }
}

}  // namespace platform
