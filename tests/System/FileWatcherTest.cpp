#include <System/FileWatcher.h>

#include <gtest/gtest.h>
#include <support/TemporaryDirectory.h>

#include <chrono>
#include <condition_variable>
#include <fstream>
#include <mutex>

using namespace platform;
namespace fs = std::filesystem;

namespace {

/// Collects what a watcher tells; waits with a deadline.
class Told {
  public:
    FileWatcher::Callback callback() {
        return [this](const std::vector<fs::path>& changed) {
            std::lock_guard lock(mutex_);
            ++calls_;
            changed_.insert(changed.begin(), changed.end());
            condition_.notify_all();
        };
    }
    /// True when `path` is told of; forgets it then.
    bool waitFor(const fs::path& path, std::chrono::milliseconds patience = std::chrono::seconds(10)) {
        std::unique_lock lock(mutex_);
        return condition_.wait_for(lock, patience, [&] { return changed_.contains(path); }) &&
               changed_.erase(path) > 0;
    }
    int calls() const {
        std::lock_guard lock(mutex_);
        return calls_;
    }

  private:
    mutable std::mutex mutex_;
    std::condition_variable condition_;
    std::set<fs::path> changed_;
    int calls_ = 0;
};

void writeInPlace(const fs::path& file, std::string_view text) {
    std::ofstream(file, std::ios::in | std::ios::out | std::ios::ate) << text;
}

constexpr double quiet = 0.02;

}  // namespace

TEST(FileWatcher, TellsOfEveryWayInWhichAFileChanges) {
    test::TemporaryDirectory folder;
    auto file = folder.write("a/b/file", "1");
    Told told;
    FileWatcher watcher({file}, told.callback(), quiet);
    const std::pair<const char*, std::function<void()>> steps[] = {
        {"written in place", [&] { writeInPlace(file, "2"); }},
        {"renamed over", [&] { fs::rename(folder.write("a/b/other", "3"), file); }},
        {"removed", [&] { fs::remove(file); }},
        {"made again", [&] { folder.write("a/b/file", "4"); }},
        {"folder removed", [&] { fs::remove_all(folder / "a/b"); }},
        {"folder and file made again", [&] { folder.write("a/b/file", "5"); }},
        {"written in the new folder", [&] { writeInPlace(file, "6"); }},
        {"a folder above moved away", [&] { fs::rename(folder / "a", folder / "away"); }},
        {"moved back", [&] { fs::rename(folder / "away", folder / "a"); }},
        {"written after the return", [&] { writeInPlace(file, "7"); }},
        {"folder exchanged for another",
         [&] {
             folder.write("next/b/file", "8");
             fs::rename(folder / "a", folder / "old");
             fs::rename(folder / "next", folder / "a");
         }},
        {"written in the exchanged folder", [&] { writeInPlace(file, "9"); }},
    };
    for (const auto& [name, step] : steps) {
        step();
        EXPECT_TRUE(told.waitFor(file)) << name;
    }
}

TEST(FileWatcher, TellsOfTheEntriesOfAFolderAndOfAFileBehindALink) {
    test::TemporaryDirectory folder;
    folder.write("calendar/one.ics", "1");
    folder.write("elsewhere/real.ics", "1");
    fs::create_symlink(folder / "elsewhere/real.ics", folder / "link.ics");
    Told told;
    FileWatcher watcher({folder / "calendar", folder / "link.ics"}, told.callback(), quiet);

    folder.write("calendar/two.ics", "2");
    EXPECT_TRUE(told.waitFor(folder / "calendar"));
    writeInPlace(folder / "calendar/one.ics", "3");
    EXPECT_TRUE(told.waitFor(folder / "calendar"));
    fs::remove_all(folder / "calendar");
    EXPECT_TRUE(told.waitFor(folder / "calendar"));
    fs::create_directory(folder / "calendar");
    EXPECT_TRUE(told.waitFor(folder / "calendar"));

    writeInPlace(folder / "elsewhere/real.ics", "4");
    EXPECT_TRUE(told.waitFor(folder / "link.ics"));
    folder.write("elsewhere/new.ics", "5");
    fs::create_symlink(folder / "elsewhere/new.ics", folder / "next");
    fs::rename(folder / "next", folder / "link.ics");
    EXPECT_TRUE(told.waitFor(folder / "link.ics"));
    writeInPlace(folder / "elsewhere/new.ics", "6");
    EXPECT_TRUE(told.waitFor(folder / "link.ics"));
}

TEST(FileWatcher, ABurstIsToldOnceAndNeighboursAreNotTold) {
    test::TemporaryDirectory folder;
    auto file = folder.write("file", "1");
    Told told;
    FileWatcher watcher({file}, told.callback(), 0.2);
    for (int i = 0; i < 50; ++i)
        folder.write("neighbour", "1");
    for (int i = 0; i < 50; ++i)
        writeInPlace(file, "2");
    EXPECT_TRUE(told.waitFor(file));
    EXPECT_FALSE(told.waitFor(file, std::chrono::milliseconds(300)));
    EXPECT_EQ(told.calls(), 1);
}

TEST(FileWatcher, MayBeDestroyedByItsOwnCallback) {
    test::TemporaryDirectory folder;
    auto file = folder.write("file", "1");
    Told told;
    std::mutex mutex;
    std::unique_ptr<FileWatcher> watcher;
    std::unique_lock lock(mutex);
    watcher = std::make_unique<FileWatcher>(
        std::vector{file},
        [&](const auto& changed) {
            std::lock_guard inner(mutex);
            watcher.reset();
            told.callback()(changed);
        },
        quiet);
    lock.unlock();
    writeInPlace(file, "2");
    EXPECT_TRUE(told.waitFor(file));
    std::lock_guard after(mutex);
    EXPECT_FALSE(watcher);
}
