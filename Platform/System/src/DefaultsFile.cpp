#include "DefaultsFile.h"

#include "AtomicWrite.h"

#include <System/DeferredWrites.h>
#include <System/Files.h>
#include <Values/PropertyList.h>

#include <fcntl.h>

#include <cerrno>

namespace platform {
namespace fs = std::filesystem;
namespace {

constexpr unsigned fileMode = 0600;
constexpr off_t largestFile = 64 * 1024 * 1024;

std::string reason(int number) {
    return std::generic_category().message(number);
}

std::optional<Data> readWhole(int descriptor, off_t size) {
    Data bytes(static_cast<std::size_t>(size));
    std::size_t length = 0;
    while (length < bytes.size()) {
        ssize_t count =
            pread(descriptor, bytes.data() + length, bytes.size() - length, static_cast<off_t>(length));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;
        length += static_cast<std::size_t>(count);
    }
    bytes.resize(length);
    return bytes;
}

fs::path withSuffix(fs::path file, std::string_view suffix) {
    file += suffix;
    return file;
}

}  // namespace

std::shared_ptr<const PropertyDictionary> DefaultsFile::noValues() {
    static const auto values = std::make_shared<const PropertyDictionary>();
    return values;
}

DefaultsFile::Identity::Identity(const struct stat& status)
    : device(status.st_dev), inode(status.st_ino), size(status.st_size), modified(status.st_mtim) {}

bool DefaultsFile::Identity::operator==(const Identity& other) const {
    // Size and time show in-place edits by other programs; our own writes always make a new inode.
    return device == other.device && inode == other.inode && size == other.size &&
           modified.tv_sec == other.modified.tv_sec && modified.tv_nsec == other.modified.tv_nsec;
}

DefaultsFile::DefaultsFile(fs::path file, std::shared_ptr<DiagnosticsSink> diagnostics)
    : file_(std::move(file)), diagnostics_(std::move(diagnostics)) {}

bool DefaultsFile::exists() const {
    std::error_code ignored;
    if (fs::exists(fs::symlink_status(file_, ignored))) return true;
    std::string prefix = file_.filename().string() + ".unreadable-";
    for (const auto& entry : fs::directory_iterator(file_.parent_path(), ignored)) {
        if (entry.path().filename().string().starts_with(prefix)) return true;
    }
    return false;
}

DefaultsFile::Outcome DefaultsFile::refresh() {
    struct stat status{};
    auto forget = [this](Outcome outcome) {
        lastRead_.reset();
        values_ = noValues();
        return outcome_ = outcome;
    };
    auto refuse = [&](const std::string& why) {
        if (outcome_ != Outcome::refused) report("", "cannot be read: " + why);
        return forget(Outcome::refused);
    };
    if (stat(file_.c_str(), &status) != 0)
        return errno == ENOENT ? forget(Outcome::absent) : refuse(reason(errno));
    if (lastRead_ && Identity(status) == identity_) return outcome_;
    if (!S_ISREG(status.st_mode)) return refuse("it is not a regular file");

    FileDescriptor descriptor(open(file_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!descriptor) return errno == ENOENT ? forget(Outcome::absent) : refuse(reason(errno));
    if (fstat(descriptor.number(), &status) != 0) return refuse(reason(errno));
    if (!S_ISREG(status.st_mode)) return refuse("it is not a regular file");
    if (status.st_size > largestFile) return refuse("it is too large");
    auto bytes = readWhole(descriptor.number(), status.st_size);
    if (!bytes) return refuse(reason(errno));

    lastRead_ = std::move(descriptor);
    identity_ = Identity(status);
    auto root = readPropertyList(*bytes);
    const PropertyDictionary* values = root ? root->asDictionary() : nullptr;
    values_ = values ? std::make_shared<const PropertyDictionary>(*values) : noValues();
    return outcome_ = values ? Outcome::read : Outcome::damaged;
}

std::shared_ptr<const PropertyDictionary> DefaultsFile::read() {
    auto values = readIfPossible();
    return values ? values : noValues();
}

std::shared_ptr<const PropertyDictionary> DefaultsFile::readIfPossible() {
    {
        std::lock_guard guard(mutex_);
        bool wasDamaged = outcome_ == Outcome::damaged;
        Outcome outcome = refresh();
        if (outcome == Outcome::refused || (outcome == Outcome::damaged && wasDamaged)) return nullptr;
        if (outcome != Outcome::damaged) return values_;
    }
    std::error_code error;
    const auto wait = DeferredWrites::areOn() ? FileLock::Wait::never : FileLock::Wait::patiently;
    if (const auto held = FileLock::of(file_, error, wait)) return readForChange(*held);
    if (error != FileLock::heldError()) reportLock("", error);
    report("", "is not a property list");
    return nullptr;
}

void DefaultsFile::reportLock(std::string_view field, const std::error_code& error) {
    report(field, "cannot be locked for a change: " + error.message());
}

std::shared_ptr<const PropertyDictionary> DefaultsFile::readForChange(const Lock& lock) {
    std::lock_guard guard(mutex_);
    switch (refresh()) {
        case Outcome::read:
        case Outcome::absent:
            return values_;
        case Outcome::damaged:
            return setDamagedAside(lock) ? values_ : nullptr;
        case Outcome::refused:
            return nullptr;
    }
    return nullptr;
}

bool DefaultsFile::setDamagedAside(const Lock&) {
    std::error_code error;
    auto aside = setAside(file_, error);
    if (!aside) {
        report("", "is not a property list and cannot be set aside: " + error.message());
        return false;
    }
    report("", "is not a property list; set aside as " + aside->filename().string());
    lastRead_.reset();
    outcome_ = Outcome::absent;
    return true;
}

bool DefaultsFile::write(const Lock&, const PropertyDictionary& values, std::string_view field) {
    // Only the holder of the lock writes the file beside, so what a killed writer left is replaced.
    fs::path target = linkTarget(file_);
    std::error_code error;
    if (writeThrough(withSuffix(target, ".new"), target, writeXmlPropertyList(values), fileMode, error))
        return true;
    report(field, "cannot be written: " + error.message());
    return false;
}

void DefaultsFile::report(std::string_view field, std::string text) {
    if (diagnostics_)
        diagnostics_->report({Diagnostic::Severity::error, file_, {}, std::string(field), std::move(text)});
}

}  // namespace platform
