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

/// Collects what a watcher reports; waits with a deadline.
class Reports {
  public:
    FileWatcher::Callback callback() {
        return [this](const std::vector<fs::path>& changed) {
            std::lock_guard lock(mutex_);
            ++calls_;
            changed_.insert(changed.begin(), changed.end());
            condition_.notify_all();
        };
    }
    /// True when `path` was reported; forgets it then.
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

TEST(FileWatcher, ReportsEveryWayInWhichAFileChanges) {
    test::TemporaryDirectory folder;
    auto file = folder.write("a/b/file", "1");
    Reports reports;
    FileWatcher watcher({file}, reports.callback(), quiet);
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
        EXPECT_TRUE(reports.waitFor(file)) << name;
    }
}

TEST(FileWatcher, ReportsTheEntriesOfAFolderAndAFileBehindALink) {
    test::TemporaryDirectory folder;
    folder.write("calendar/one.ics", "1");
    folder.write("elsewhere/real.ics", "1");
    fs::create_symlink(folder / "elsewhere/real.ics", folder / "link.ics");
    Reports reports;
    FileWatcher watcher({folder / "calendar", folder / "link.ics"}, reports.callback(), quiet);

    folder.write("calendar/two.ics", "2");
    EXPECT_TRUE(reports.waitFor(folder / "calendar"));
    writeInPlace(folder / "calendar/one.ics", "3");
    EXPECT_TRUE(reports.waitFor(folder / "calendar"));
    fs::remove_all(folder / "calendar");
    EXPECT_TRUE(reports.waitFor(folder / "calendar"));
    fs::create_directory(folder / "calendar");
    EXPECT_TRUE(reports.waitFor(folder / "calendar"));

    writeInPlace(folder / "elsewhere/real.ics", "4");
    EXPECT_TRUE(reports.waitFor(folder / "link.ics"));
    folder.write("elsewhere/new.ics", "5");
    fs::create_symlink(folder / "elsewhere/new.ics", folder / "next");
    fs::rename(folder / "next", folder / "link.ics");
    EXPECT_TRUE(reports.waitFor(folder / "link.ics"));
    writeInPlace(folder / "elsewhere/new.ics", "6");
    EXPECT_TRUE(reports.waitFor(folder / "link.ics"));
}

TEST(FileWatcher, ABurstIsReportedOnceAndNeighboursAreNot) {
    test::TemporaryDirectory folder;
    auto file = folder.write("file", "1");
    Reports reports;
    FileWatcher watcher({file}, reports.callback(), 0.2);
    for (int i = 0; i < 50; ++i)
        folder.write("neighbour", "1");
    for (int i = 0; i < 50; ++i)
        writeInPlace(file, "2");
    EXPECT_TRUE(reports.waitFor(file));
    EXPECT_FALSE(reports.waitFor(file, std::chrono::milliseconds(300)));
    EXPECT_EQ(reports.calls(), 1);
}

TEST(FileWatcher, MayBeDestroyedByItsOwnCallback) {
    test::TemporaryDirectory folder;
    auto file = folder.write("file", "1");
    Reports reports;
    std::mutex mutex;
    std::unique_ptr<FileWatcher> watcher;
    std::unique_lock lock(mutex);
    watcher = std::make_unique<FileWatcher>(
        std::vector{file},
        [&](const auto& changed) {
            std::lock_guard inner(mutex);
            watcher.reset();
            reports.callback()(changed);
        },
        quiet);
    lock.unlock();
    writeInPlace(file, "2");
    EXPECT_TRUE(reports.waitFor(file));
    std::lock_guard after(mutex);
    EXPECT_FALSE(watcher);
}
