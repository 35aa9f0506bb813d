#pragma once

#include "FileDescriptor.h"

#include <System/Diagnostics.h>
#include <System/FileLock.h>
#include <Values/PropertyValue.h>

#include <sys/stat.h>

#include <filesystem>
#include <memory>
#include <mutex>
#include <string_view>
#include <system_error>

namespace platform {

/// The property-list file behind a domain: read again only when it changed, replaced as a whole, guarded
/// between threads and processes by `flock` on a ".lock" file that is never replaced.
class DefaultsFile {
  public:
    DefaultsFile(std::filesystem::path file, std::shared_ptr<DiagnosticsSink> diagnostics);

    static std::shared_ptr<const PropertyDictionary> noValues();

    const std::filesystem::path& path() const { return file_; }
    bool exists() const;

    /// The newest complete values, empty when there are none. A damaged file is set aside.
    std::shared_ptr<const PropertyDictionary> read();
    /// As read(); nothing when there is a file that cannot be read.
    std::shared_ptr<const PropertyDictionary> readIfPossible();

    using Lock = FileLock;
    /// Reports that the lock could not be had.
    void reportLock(std::string_view field, const std::error_code& error);
    /// Under the lock: what a change starts from. Nothing when the stored file cannot be opened or set
    /// aside, so that it must not be replaced; reported.
    std::shared_ptr<const PropertyDictionary> readForChange(const Lock& lock);
    /// Under the lock. Reported when it fails.
    bool write(const Lock& lock, const PropertyDictionary& values, std::string_view field);

  private:
    enum class Outcome { read, absent, damaged, refused };
    struct Identity {
        dev_t device = 0;
        ino_t inode = 0;
        off_t size = 0;
        timespec modified{};

        explicit Identity(const struct stat& status);
        Identity() = default;
        bool operator==(const Identity& other) const;
    };

    Outcome refresh();
    bool setDamagedAside(const Lock& lock);
    void report(std::string_view field, std::string text);

    const std::filesystem::path file_;
    const std::shared_ptr<DiagnosticsSink> diagnostics_;

    std::mutex mutex_;
    /// The file read last stays open, so that its inode number cannot come back for another file.
    FileDescriptor lastRead_;
    Identity identity_;
    Outcome outcome_ = Outcome::absent;
    std::shared_ptr<const PropertyDictionary> values_ = noValues();
};

}  // namespace platform
