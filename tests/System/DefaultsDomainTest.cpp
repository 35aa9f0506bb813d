#include <System/DefaultsDomain.h>
#include <System/DeferredWrites.h>
#include <System/MainQueue.h>
#include <Values/PropertyList.h>

#include <System/FileLock.h>
#include <gtest/gtest.h>
#include <support/TestEnvironment.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <thread>

using namespace platform;
namespace fs = std::filesystem;

namespace {

/// A folder of its own with one domain, and other openings of the same file.
struct DefaultsDomainTest : testing::Test {
    test::TemporaryDirectory folder;
    std::shared_ptr<CollectedDiagnostics> diagnostics = std::make_shared<CollectedDiagnostics>();
    fs::path file = folder / "config/shared.plist";
    DefaultsDomain domain{file, diagnostics};

    std::string said() const { return test::reports(*diagnostics); }
    ino_t inode() const {
        struct stat status{};
        return stat(file.c_str(), &status) == 0 ? status.st_ino : 0;
    }
    static bool increment(DefaultsDomain& target, std::string_view key) {
        return target.update(key, [](const std::optional<PropertyValue>& stored) {
            return PropertyValue((stored ? stored->asInteger().value_or(0) : 0) + 1);
        });
    }
    /// Runs `work` in a process of its own; its status is 0 when `work` gives true.
    template <class Work>
    static pid_t inProcess(Work work) {
        pid_t child = fork();
        if (child == 0) _exit(work() ? 0 : 1);
        return child;
    }
    static int statusOf(pid_t child) {
        int status = -1;
        waitpid(child, &status, 0);
        return status;
    }
};

}  // namespace

TEST_F(DefaultsDomainTest, AWriteIsSeenByEveryOpeningAtItsNextRead) {
    DefaultsDomain other(file, diagnostics);
    EXPECT_FALSE(domain.exists());
    EXPECT_FALSE(domain.value("a"));
    EXPECT_TRUE(domain.setValue("a", 1));
    EXPECT_TRUE(domain.exists());
    EXPECT_EQ(other.value("a"), PropertyValue(1));
    EXPECT_TRUE(other.setValue("b", PropertyArray{"x"}));
    EXPECT_TRUE(other.removeValue("a"));
    EXPECT_FALSE(domain.value("a"));
    EXPECT_EQ(domain.value("b"), PropertyValue(PropertyArray{"x"}));
    EXPECT_EQ(domain.integer("b"), 0);
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0600));
    EXPECT_EQ(fs::status(file.parent_path()).permissions(), fs::perms(0700));
    EXPECT_EQ(said(), "");
}

TEST_F(DefaultsDomainTest, AnEditInPlaceByAnotherProgramIsSeen) {
    domain.setValue("a", "before");
    EXPECT_EQ(domain.value("a"), PropertyValue("before"));
    PropertyDictionary edited;
    edited.set("a", "after the edit");
    std::ofstream(file) << writeXmlPropertyList(edited);
    EXPECT_EQ(domain.value("a"), PropertyValue("after the edit"));
}

TEST_F(DefaultsDomainTest, AnEqualValueWritesNothing) {
    EXPECT_TRUE(domain.removeValue("a"));
    EXPECT_FALSE(domain.exists());
    domain.setValue("a", PropertyArray{1, "x"});
    auto before = inode();
    EXPECT_TRUE(domain.setValue("a", PropertyArray{1, "x"}));
    EXPECT_TRUE(domain.update("a", [](const auto& stored) { return stored; }));
    EXPECT_TRUE(domain.removeValue("b"));
    EXPECT_EQ(inode(), before);
}

TEST_F(DefaultsDomainTest, ADamagedFileIsSetAsideAndNeverOverwritten) {
    for (const char* content : {"", "<plist><array/></plist>", "half a fi"}) {
        folder.write("config/shared.plist", content);
        EXPECT_TRUE(domain.values().empty());
        EXPECT_FALSE(fs::exists(file));
        EXPECT_TRUE(domain.exists());
        EXPECT_TRUE(domain.setValue("a", content));
    }
    EXPECT_EQ(test::readFile(file.string() + ".unreadable-3"), "half a fi");
    EXPECT_NE(said().find("is not a property list; set aside as shared.plist.unreadable-3"),
              std::string::npos);
}

TEST_F(DefaultsDomainTest, WithoutPermissionNothingIsLostAndTheReasonIsReported) {
    domain.setValue("a", 1);
    chmod(folder.path().c_str(), 0755);
    chmod(file.parent_path().c_str(), 0755);
    auto asNobody = [&](auto work) {
        return statusOf(inProcess([&] { return setgid(65534) == 0 && setuid(65534) == 0 && work(); }));
    };
    // The file is closed to the reader.
    EXPECT_EQ(asNobody([&] {
                  DefaultsDomain mine(file, diagnostics);
                  return !mine.value("a") && !mine.setValue("a", 2) && !mine.removeValue("a") &&
                         said().find("cannot be read: Permission denied") != std::string::npos;
              }),
              0);
    // The file can be read, the folder not written.
    chmod(file.c_str(), 0644);
    EXPECT_EQ(asNobody([&] {
                  DefaultsDomain mine(file, diagnostics);
                  return mine.value("a") == PropertyValue(1) && mine.setValue("a", 1) && said().empty() &&
                         !mine.setValue("a", 2) &&
                         said().find("cannot be locked for a change: Permission denied") != std::string::npos;
              }),
              0);
    EXPECT_EQ(domain.value("a"), PropertyValue(1));
}

TEST_F(DefaultsDomainTest, ALockThatAnotherProgramHoldsIsWaitedForForALimitedTime) {
    ASSERT_TRUE(domain.setValue("a", 1));
    const int other = open((file.string() + ".lock").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    fs::path waitedFor;
    FileLock::setPatience({.seconds = 1.1, .onLongWait = [&](const fs::path& held) { waitedFor = held; }});
    EXPECT_FALSE(domain.setValue("a", 2));
    EXPECT_EQ(waitedFor, file.string() + ".lock");
    EXPECT_NE(said().find("cannot be locked for a change: another program holds its lock"),
              std::string::npos);
    FileLock::setPatience({.onLongWait = [&](const fs::path&) { flock(other, LOCK_UN); }});
    EXPECT_TRUE(domain.setValue("a", 3));
    FileLock::setPatience({});
    close(other);
}

TEST_F(DefaultsDomainTest, DeferredChangesAreReadAtOnceAndStoredWhenTheLockIsFreeOrGivenUpByName) {
    ASSERT_TRUE(domain.setValue("a", 1));
    const int other = open((file.string() + ".lock").c_str(), O_RDWR | O_CLOEXEC);
    DefaultsDomain outside(file, nullptr);
    int calls = 0;
    const auto observation = domain.observe({"a"}, [&] { ++calls; });
    DeferredWrites::setOn(true);
    for (const bool isGivenUp : {false, true}) {
        ASSERT_EQ(flock(other, LOCK_EX), 0);
        EXPECT_TRUE(domain.setValue("a", 2));
        EXPECT_TRUE(increment(domain, "a"));
        EXPECT_TRUE(domain.setValue("b", "new"));
        EXPECT_EQ(domain.value("a"), PropertyValue(3));
        EXPECT_EQ(domain.snapshot(), domain.snapshot());
        EXPECT_TRUE(MainQueue::shared().runUntil([&] { return calls == 1; }, 10));
        EXPECT_EQ(outside.value("a"), PropertyValue(1));
        // What another program wrote meanwhile is kept.
        PropertyDictionary written;
        written.set("a", 10);
        written.set("c", true);
        std::ofstream(file) << writeXmlPropertyList(written);
        EXPECT_EQ(domain.value("a"), PropertyValue(3));
        EXPECT_EQ(domain.value("b"), PropertyValue("new"));
        EXPECT_EQ(domain.value("c"), PropertyValue(true));
        if (isGivenUp) DeferredWrites::finish(0.01);
        flock(other, LOCK_UN);
        DeferredWrites::finish(10);
        EXPECT_EQ(outside.value("a"), PropertyValue(isGivenUp ? 10 : 3));
        EXPECT_EQ(outside.value("b").has_value(), !isGivenUp);
        EXPECT_TRUE(outside.value("c"));
        EXPECT_EQ(domain.values(), outside.values());
        EXPECT_EQ(said(), isGivenUp ? file.string() +
                                          ": a, b: cannot be locked for a change: "
                                          "another program holds its lock\n"
                                    : "");
        ASSERT_TRUE(outside.setValue("a", 1));
        ASSERT_TRUE(outside.removeValue("b"));
        EXPECT_TRUE(domain.setValue("d", isGivenUp));
        EXPECT_EQ(outside.value("d"), PropertyValue(isGivenUp));
        calls = 0;
    }
    DeferredWrites::setOn(false);
    close(other);
}

TEST_F(DefaultsDomainTest, WhatIsNotAFileIsNeverReplaced) {
    fs::create_directories(file);
    EXPECT_FALSE(domain.value("a"));
    EXPECT_FALSE(domain.setValue("a", 1));
    EXPECT_TRUE(fs::is_directory(file));
    EXPECT_NE(said().find("not a regular file"), std::string::npos);
}

TEST_F(DefaultsDomainTest, ALinkedFileStaysLinked) {
    folder.write("dotfiles/shared.plist", writeXmlPropertyList(PropertyDictionary{}));
    fs::create_directories(file.parent_path());
    fs::create_symlink(folder / "dotfiles/shared.plist", file);
    EXPECT_TRUE(domain.setValue("a", 1));
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(DefaultsDomain(folder / "dotfiles/shared.plist", diagnostics).value("a"), PropertyValue(1));
}

TEST_F(DefaultsDomainTest, ProcessesAndThreadsThatWriteAtTheSameTimeLoseNoWrite) {
    constexpr int rounds = 25;
    auto writer = [&](const std::string& name) {
        DefaultsDomain mine(file, diagnostics);
        for (int i = 0; i < rounds; ++i) {
            if (!increment(mine, "common") || !mine.setValue(name, i)) return false;
        }
        return true;
    };
    std::vector<pid_t> children;
    for (int i = 0; i < 3; ++i)
        children.push_back(inProcess([&] { return writer("process" + std::to_string(i)); }));
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i) {
        threads.emplace_back([&] {
            for (int k = 0; k < rounds; ++k)
                EXPECT_TRUE(increment(domain, "common"));
        });
    }
    threads.emplace_back([&] { EXPECT_TRUE(writer("thread")); });
    for (auto& each : threads)
        each.join();
    for (pid_t child : children)
        EXPECT_EQ(statusOf(child), 0);
    EXPECT_EQ(domain.integer("common"), 7 * rounds);
    for (const char* name : {"process0", "process1", "process2", "thread"})
        EXPECT_EQ(domain.integer(name), rounds - 1) << name;
    EXPECT_EQ(said(), "");
}

TEST_F(DefaultsDomainTest, AWriterKilledAtAnyInstantLeavesAWholeFileWithAllItHadAcknowledged) {
    domain.setValue("filler", std::string(200'000, 'x'));
    std::int64_t acknowledged = 0;
    for (int round = 0; round < 40; ++round) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        pid_t child = inProcess([&] {
            DefaultsDomain mine(file, diagnostics);
            while (increment(mine, "count")) {
                auto count = mine.integer("count");
                if (write(ends[1], &count, sizeof count) != sizeof count) break;
            }
            return false;
        });
        close(ends[1]);
        // Killed a varying time after its first acknowledgement.
        std::int64_t count = 0;
        ASSERT_EQ(read(ends[0], &count, sizeof count), static_cast<ssize_t>(sizeof count));
        std::this_thread::sleep_for(std::chrono::microseconds(137 * round));
        kill(child, SIGKILL);
        statusOf(child);
        do
            acknowledged = count;
        while (read(ends[0], &count, sizeof count) == static_cast<ssize_t>(sizeof count));
        close(ends[0]);
        // The write under way at its death may be there, too.
        auto stored = domain.integer("count");
        ASSERT_GE(stored, acknowledged);
        ASSERT_LE(stored, acknowledged + 1);
        ASSERT_EQ(domain.value("filler")->asString()->size(), 200'000u);
    }
    EXPECT_TRUE(domain.setValue("after", true));
    EXPECT_EQ(said(), "");
    EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), {}), 2) << "the file and its lock";
}

TEST_F(DefaultsDomainTest, TwoDomainsChangeTogetherWithTheSecondWrittenFirst) {
    DefaultsDomain standard(folder / "config/standard.plist", diagnostics);
    standard.setValue("a", 1);
    auto copyOnce = [](PropertyDictionary& from, PropertyDictionary& to) {
        if (from.find("didCopy")) return;
        to.set("a", *from.find("a"));
        to.set("copies", to.find("copies") ? 2 : 1);
        from.set("didCopy", true);
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            EXPECT_TRUE(DefaultsDomain::updateTogether(standard, domain, copyOnce));
            auto untouched = [](PropertyDictionary&, PropertyDictionary&) {};
            EXPECT_TRUE(DefaultsDomain::updateTogether(domain, standard, untouched));
        });
    }
    for (auto& each : threads)
        each.join();
    EXPECT_EQ(domain.integer("copies"), 1);
    EXPECT_EQ(standard.value("didCopy"), PropertyValue(true));

    // Where the second cannot be written, the first stays as it was.
    DefaultsDomain blocked(folder.write("file", "") / "below.plist", diagnostics);
    auto setBoth = [](PropertyDictionary& a, PropertyDictionary& b) {
        a.set("both", 1);
        b.set("both", 1);
    };
    EXPECT_FALSE(DefaultsDomain::updateTogether(standard, blocked, setBoth));
    EXPECT_FALSE(standard.value("both"));
    EXPECT_FALSE(DefaultsDomain::updateTogether(standard, standard, setBoth));
}

TEST_F(DefaultsDomainTest, AnObserverIsCalledOnTheMainQueueForItsKeysOnlyAlsoFromAnotherProcess) {
    int calls = 0;
    auto observation = domain.observe({"a"}, [&] {
        EXPECT_TRUE(MainQueue::shared().isCurrent());
        ++calls;
    });
    int others = 0;
    auto other = domain.observe({"b", "c"}, [&] { ++others; });
    auto waitFor = [](const int& count, int expected) {
        return MainQueue::shared().runUntil([&] { return count == expected; }, 10);
    };
    EXPECT_EQ(statusOf(inProcess([&] { return DefaultsDomain(file, nullptr).setValue("a", 1); })), 0);
    EXPECT_TRUE(waitFor(calls, 1));
    domain.setValue("a", 1);
    domain.setValue("b", 1);
    EXPECT_TRUE(waitFor(others, 1));
    domain.setValue("c", 1);
    EXPECT_TRUE(waitFor(others, 2));
    EXPECT_EQ(calls, 1);
    fs::remove(file);
    EXPECT_TRUE(waitFor(calls, 2));
    EXPECT_TRUE(waitFor(others, 3)) << "once for both keys";
    observation.reset();
    domain.setValue("a", 3);
    domain.setValue("b", 3);
    EXPECT_TRUE(waitFor(others, 4));
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(others, 4);
}
